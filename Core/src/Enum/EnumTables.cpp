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
#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>
#include <Moxelcore/Core/Enum/TransformationType.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <string>

namespace mox {

template <>
EnumInfo const& getEnumInfo<OptimLevelType>()
{
    static EnumInfo const info("SCALAR = 0 , VEC_SSE , VEC_AVX , GPU", "OptimLevelType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<VoxelTypes>()
{
    static EnumInfo const info("MOX_UINT8 = 0, MOX_UINT16, MOX_UINT32, MOX_UINT64, MOX_INT8, MOX_INT16, MOX_INT32, "
                               "MOX_INT64, MOX_FLOAT32, MOX_FLOAT64, MOX_COMPLEX_FLOAT32, MOX_COMPLEX_FLOAT64",
                               "VoxelTypes");
    return info;
}

template <>
EnumInfo const& getEnumInfo<math::MeasuresIndex>()
{
    static EnumInfo const info("MSR_MEAN = 0, MSR_STDDEV, MSR_VARIANCE, MSR_SKEWNESS, MSR_KURTOSIS, MSR_PEAK",
                               "MeasuresIndex");
    return info;
}

template <>
EnumInfo const& getEnumInfo<miscellaneous::BorderConditionType>()
{
    static EnumInfo const info("FIXED = 0, MIRROR, CONTINUE, DIRECTIONAL_MIRROR", "BorderConditionType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<miscellaneous::DecimationOp>()
{
    static EnumInfo const info("MEAN = 0, MIN, MAX, FIRST", "DecimationOp");
    return info;
}

template <>
EnumInfo const& getEnumInfo<morphology::Neighborhood2DType>()
{
    static EnumInfo const info("MOX_NEIGHBORHOOD2D_4 = 0, MOX_NEIGHBORHOOD2D_8", "Neighborhood2DType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<morphology::Neighborhood3DType>()
{
    static EnumInfo const info("MOX_NEIGHBORHOOD3D_6 = 0, MOX_NEIGHBORHOOD3D_18, MOX_NEIGHBORHOOD3D_26",
                               "Neighborhood3DType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<morphology::AlgoPrecisionType>()
{
    static EnumInfo const info("MOX_ALGO_FAST = 0, MOX_ALGO_PRECISE", "AlgoPrecisionType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<morphology::MatchingActionTypes>()
{
    static EnumInfo const info("SET_ZERO = 0, SET_ONE , SET_CHANGE , SET_UNCHANGE", "MatchingActionTypes");
    return info;
}

template <>
EnumInfo const& getEnumInfo<point_operations::ArithmeticOperatorType>()
{
    static EnumInfo const info("ARITHMETIC_ADD = 0, ARITHMETIC_SUBTRACT, ARITHMETIC_MULTIPLY, ARITHMETIC_DIVIDE, "
                               "ARITHMETIC_MINIMUM, ARITHMETIC_MAXIMUM",
                               "ArithmeticOperatorType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<point_operations::GradientMagnitudeOutputType>()
{
    static EnumInfo const info("GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN = 0, "
                               "GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS",
                               "GradientMagnitudeOutputType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<point_operations::BinaryLogicalOperatorType>()
{
    static EnumInfo const info("LOGICAL_AND = 0, LOGICAL_OR , LOGICAL_XOR , LOGICAL_NAND , LOGICAL_NOR , "
                               "LOGICAL_NXOR , LOGICAL_SUB",
                               "BinaryLogicalOperatorType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<registration::TransformationType>()
{
    static EnumInfo const info("TRANSLATION = 0, RIGID, AFFINE, PROJECTIVE, POLYNOMIAL_2, POLYNOMIAL_3",
                               "TransformationType");
    return info;
}

template <>
EnumInfo const& getEnumInfo<registration::SIMILARITY_MEASURE>()
{
    static EnumInfo const info("NORMALIZED = 0, NORMALIZED_ABS", "SIMILARITY_MEASURE");
    return info;
}

template <>
EnumInfo const& getEnumInfo<segmentation::TextureFeatureTypes>()
{
    static EnumInfo const info = [] {
        std::string definition;
        for (char const* measure :
             {"AngularSecondMoment", "Contrast", "Correlation", "SumOfSquares", "InverseDifferenceMoment", "SumAverage",
              "SumVariance", "SumEntropy", "Entropy", "DifferenceVariance", "DifferenceEntropy",
              "InformationMeasuresCorrelation1", "InformationMeasuresCorrelation2"}) {
            for (char const* statistic : {"", "Mean", "Stddev", "Range"}) {
                definition += std::string("COOC_") + measure + statistic + (definition.empty() ? " = 0, " : ", ");
            }
        }
        definition += "HISTO_Mean, HISTO_Stddev, HISTO_Variance, HISTO_Skewness, HISTO_Kurtosis, HISTO_Peak, "
                      "HISTO_Quantile10, HISTO_Quantile25, HISTO_Quantile50, HISTO_Quantile75, HISTO_Quantile90, "
                      "HISTO_QuantileR1, HISTO_QuantileR2, HISTO_QuantileR3, HISTO_QuantileR4, HISTO_QuantileR5, "
                      "HISTO_QuantileR6";
        return EnumInfo(definition.c_str(), "TextureFeatureTypes");
    }();
    return info;
}

} // namespace mox
