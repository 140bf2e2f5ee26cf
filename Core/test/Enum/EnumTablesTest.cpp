#include <Moxelcore/Core/Enum/AlgoPrecisionType.h>
#include <Moxelcore/Core/Enum/ArithmeticOperatorType.h>
#include <Moxelcore/Core/Enum/BinaryLogicalOperatorType.h>
#include <Moxelcore/Core/Enum/BorderConditionType.h>
#include <Moxelcore/Core/Enum/DecimationOp.h>
#include <Moxelcore/Core/Enum/GradientMagnitudeOutputType.h>
#include <Moxelcore/Core/Enum/MatchingActionTypes.h>
#include <Moxelcore/Core/Enum/MeasuresIndex.h>
#include <Moxelcore/Core/Enum/Neighborhood2DType.h>
#include <Moxelcore/Core/Enum/Neighborhood3DType.h>
#include <Moxelcore/Core/Enum/OptimLevelType.h>
#include <Moxelcore/Core/Enum/SIMILARITY_MEASURE.h>
#include <Moxelcore/Core/Enum/TransformationType.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <gtest/gtest.h>

#include "testing/Enumerators.h"

namespace mox {

namespace {

using testing::expectTable;

TEST(OptimLevelType, hasATable)
{
    expectTable(getEnumInfo<OptimLevelType>(), "OptimLevelType",
                {{"SCALAR", OptimLevelType::SCALAR},
                 {"VEC_SSE", OptimLevelType::VEC_SSE},
                 {"VEC_AVX", OptimLevelType::VEC_AVX},
                 {"GPU", OptimLevelType::GPU}});
}

TEST(VoxelTypes, hasATable)
{
    expectTable(getEnumInfo<VoxelTypes>(), "VoxelTypes",
                {{"MOX_UINT8", MOX_UINT8},
                 {"MOX_UINT16", MOX_UINT16},
                 {"MOX_UINT32", MOX_UINT32},
                 {"MOX_UINT64", MOX_UINT64},
                 {"MOX_INT8", MOX_INT8},
                 {"MOX_INT16", MOX_INT16},
                 {"MOX_INT32", MOX_INT32},
                 {"MOX_INT64", MOX_INT64},
                 {"MOX_FLOAT32", MOX_FLOAT32},
                 {"MOX_FLOAT64", MOX_FLOAT64},
                 {"MOX_COMPLEX_FLOAT32", MOX_COMPLEX_FLOAT32},
                 {"MOX_COMPLEX_FLOAT64", MOX_COMPLEX_FLOAT64}});
}

TEST(MeasuresIndex, hasATable)
{
    expectTable(getEnumInfo<math::MeasuresIndex>(), "MeasuresIndex",
                {{"MSR_MEAN", math::MSR_MEAN},
                 {"MSR_STDDEV", math::MSR_STDDEV},
                 {"MSR_VARIANCE", math::MSR_VARIANCE},
                 {"MSR_SKEWNESS", math::MSR_SKEWNESS},
                 {"MSR_KURTOSIS", math::MSR_KURTOSIS},
                 {"MSR_PEAK", math::MSR_PEAK}});
}

TEST(BorderConditionType, hasATable)
{
    expectTable(getEnumInfo<miscellaneous::BorderConditionType>(), "BorderConditionType",
                {{"FIXED", miscellaneous::BorderConditionType::FIXED},
                 {"MIRROR", miscellaneous::BorderConditionType::MIRROR},
                 {"CONTINUE", miscellaneous::BorderConditionType::CONTINUE},
                 {"DIRECTIONAL_MIRROR", miscellaneous::BorderConditionType::DIRECTIONAL_MIRROR}});
}

TEST(DecimationOp, hasATable)
{
    expectTable(getEnumInfo<miscellaneous::DecimationOp>(), "DecimationOp",
                {{"MEAN", miscellaneous::DecimationOp::MEAN},
                 {"MIN", miscellaneous::DecimationOp::MIN},
                 {"MAX", miscellaneous::DecimationOp::MAX},
                 {"FIRST", miscellaneous::DecimationOp::FIRST}});
}

TEST(Neighborhood2DType, hasATable)
{
    expectTable(getEnumInfo<morphology::Neighborhood2DType>(), "Neighborhood2DType",
                {{"MOX_NEIGHBORHOOD2D_4", morphology::MOX_NEIGHBORHOOD2D_4},
                 {"MOX_NEIGHBORHOOD2D_8", morphology::MOX_NEIGHBORHOOD2D_8}});
}

TEST(Neighborhood3DType, hasATable)
{
    expectTable(getEnumInfo<morphology::Neighborhood3DType>(), "Neighborhood3DType",
                {{"MOX_NEIGHBORHOOD3D_6", morphology::MOX_NEIGHBORHOOD3D_6},
                 {"MOX_NEIGHBORHOOD3D_18", morphology::MOX_NEIGHBORHOOD3D_18},
                 {"MOX_NEIGHBORHOOD3D_26", morphology::MOX_NEIGHBORHOOD3D_26}});
}

TEST(AlgoPrecisionType, hasATable)
{
    expectTable(getEnumInfo<morphology::AlgoPrecisionType>(), "AlgoPrecisionType",
                {{"MOX_ALGO_FAST", morphology::MOX_ALGO_FAST}, {"MOX_ALGO_PRECISE", morphology::MOX_ALGO_PRECISE}});
}

TEST(MatchingActionTypes, hasATable)
{
    expectTable(getEnumInfo<morphology::MatchingActionTypes>(), "MatchingActionTypes",
                {{"SET_ZERO", morphology::MatchingActionTypes::SET_ZERO},
                 {"SET_ONE", morphology::MatchingActionTypes::SET_ONE},
                 {"SET_CHANGE", morphology::MatchingActionTypes::SET_CHANGE},
                 {"SET_UNCHANGE", morphology::MatchingActionTypes::SET_UNCHANGE}});
}

TEST(ArithmeticOperatorType, hasATable)
{
    expectTable(getEnumInfo<point_operations::ArithmeticOperatorType>(), "ArithmeticOperatorType",
                {{"ARITHMETIC_ADD", point_operations::ARITHMETIC_ADD},
                 {"ARITHMETIC_SUBTRACT", point_operations::ARITHMETIC_SUBTRACT},
                 {"ARITHMETIC_MULTIPLY", point_operations::ARITHMETIC_MULTIPLY},
                 {"ARITHMETIC_DIVIDE", point_operations::ARITHMETIC_DIVIDE},
                 {"ARITHMETIC_MINIMUM", point_operations::ARITHMETIC_MINIMUM},
                 {"ARITHMETIC_MAXIMUM", point_operations::ARITHMETIC_MAXIMUM}});
}

TEST(GradientMagnitudeOutputType, hasATable)
{
    expectTable(
        getEnumInfo<point_operations::GradientMagnitudeOutputType>(), "GradientMagnitudeOutputType",
        {{"GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN", point_operations::GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN},
         {"GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS",
          point_operations::GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS}});
}

TEST(BinaryLogicalOperatorType, hasATable)
{
    expectTable(getEnumInfo<point_operations::BinaryLogicalOperatorType>(), "BinaryLogicalOperatorType",
                {{"LOGICAL_AND", point_operations::LOGICAL_AND},
                 {"LOGICAL_OR", point_operations::LOGICAL_OR},
                 {"LOGICAL_XOR", point_operations::LOGICAL_XOR},
                 {"LOGICAL_NAND", point_operations::LOGICAL_NAND},
                 {"LOGICAL_NOR", point_operations::LOGICAL_NOR},
                 {"LOGICAL_NXOR", point_operations::LOGICAL_NXOR},
                 {"LOGICAL_SUB", point_operations::LOGICAL_SUB}});
}

TEST(TransformationType, hasATable)
{
    expectTable(getEnumInfo<registration::TransformationType>(), "TransformationType",
                {{"TRANSLATION", registration::TransformationType::TRANSLATION},
                 {"RIGID", registration::TransformationType::RIGID},
                 {"AFFINE", registration::TransformationType::AFFINE},
                 {"PROJECTIVE", registration::TransformationType::PROJECTIVE},
                 {"POLYNOMIAL_2", registration::TransformationType::POLYNOMIAL_2},
                 {"POLYNOMIAL_3", registration::TransformationType::POLYNOMIAL_3}});
}

TEST(SimilarityMeasure, hasATable)
{
    expectTable(getEnumInfo<registration::SIMILARITY_MEASURE>(), "SIMILARITY_MEASURE",
                {{"NORMALIZED", registration::SIMILARITY_MEASURE::NORMALIZED},
                 {"NORMALIZED_ABS", registration::SIMILARITY_MEASURE::NORMALIZED_ABS}});
}

TEST(OptimLevelType, convertsFromAndToItsValues)
{
    OptimLevelType const choice = OptimLevelType::GPU;
    EXPECT_EQ(choice.value, OptimLevelType::GPU);
    EXPECT_TRUE(choice == OptimLevelType::GPU);
    EXPECT_EQ(static_cast<int>(choice), 3);
}

TEST(DecimationOp, convertsFromAndToItsValues)
{
    miscellaneous::DecimationOp const choice = miscellaneous::DecimationOp::FIRST;
    EXPECT_EQ(choice.value, miscellaneous::DecimationOp::FIRST);
    EXPECT_TRUE(choice == miscellaneous::DecimationOp::FIRST);
    EXPECT_EQ(static_cast<int>(choice), 3);
}

TEST(MatchingActionTypes, convertsFromAndToItsValues)
{
    morphology::MatchingActionTypes const choice = morphology::MatchingActionTypes::SET_UNCHANGE;
    EXPECT_EQ(choice.value, morphology::MatchingActionTypes::SET_UNCHANGE);
    EXPECT_TRUE(choice == morphology::MatchingActionTypes::SET_UNCHANGE);
    EXPECT_EQ(static_cast<int>(choice), 3);
}

TEST(TransformationType, convertsFromAndToItsValues)
{
    registration::TransformationType const choice = registration::TransformationType::POLYNOMIAL_3;
    EXPECT_EQ(choice.value, registration::TransformationType::POLYNOMIAL_3);
    EXPECT_TRUE(choice == registration::TransformationType::POLYNOMIAL_3);
    EXPECT_EQ(static_cast<int>(choice), 5);
}

TEST(SimilarityMeasure, convertsFromAndToItsValues)
{
    registration::SIMILARITY_MEASURE const choice = registration::SIMILARITY_MEASURE::NORMALIZED_ABS;
    EXPECT_EQ(choice.value, registration::SIMILARITY_MEASURE::NORMALIZED_ABS);
    EXPECT_TRUE(choice == registration::SIMILARITY_MEASURE::NORMALIZED_ABS);
    EXPECT_EQ(static_cast<int>(choice), 1);
}

} // namespace

} // namespace mox
