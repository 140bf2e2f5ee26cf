#include "Core/private/declare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Core/private/Rules/RuleAssertDimension.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameSizeAndCalibration.h"
#include "Core/private/Rules/RuleLimitedValue.h"
#include "Core/private/Rules/RuleSetInterpretation.h"
#include "testing/RuleImages.h"

namespace mox::testing {

namespace {

/// An algorithm with every kind of line that an `init` has.
class DeclaringAlgorithm final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(DeclaringAlgorithm)

    Property<ImageModel const*> input;
    Property<double> factor;
    PropertyEnumeration level;
    PropertyEnumeration border;
    Property<Vector<int>> list;
    Property<ImageModel*> output;
    Property<unsigned int> count;
};

MOX_DEFINE_ALGORITHM(DeclaringAlgorithm)

void DeclaringAlgorithm::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()),
                 rule<RuleAssertDimension>(SPECTRAL_SERIES, 1U));
    declareInput(factor, "factor", 2, rule<RuleLimitedValue>(1.0, 0));
    declareInput(level, "level", OptimLevelType::VEC_AVX, isAnEnumOf<OptimLevelType>());
    declareInput(border, "border", 1, hasNamesOf<VoxelTypes>());
    declareInput(list, "list", Vector<int>(2));
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(), rule<RuleEnforceSameSizeAndCalibration>(input),
                  rule<RuleAssertType>(NarrowVoxels()), rule<RuleSetInterpretation>(INTERPRETATION_BINARY));
    declareOutput(count, "count", 7U);
}

AlgoBorderInfluence DeclaringAlgorithm::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

class Declaring : public ::testing::Test {
protected:
    boost::shared_ptr<DeclaringAlgorithm> const algorithm = DeclaringAlgorithm::New();

    static std::string refusalOf(BaseProperty& property)
    {
        try {
            property.applyRules();
        } catch (RuleException const& exception) {
            std::string const text = exception.getInfo().c_str();
            return text.substr(0, text.find(" \n"));
        }
        return "";
    }
};

TEST_F(Declaring, listsThePropertiesInTheOrderOfTheLines)
{
    std::vector<BaseProperty*> inputs;
    for (unsigned int i = 0; i < algorithm->getNumOfInputProperties(); ++i) {
        inputs.push_back(algorithm->getInputProperty(i));
    }
    EXPECT_THAT(inputs, ::testing::ElementsAre(&algorithm->input, &algorithm->factor, &algorithm->level,
                                               &algorithm->border, &algorithm->list));
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), 2U);
    EXPECT_EQ(algorithm->getOutputProperty(0), &algorithm->output);
    EXPECT_EQ(algorithm->getOutputProperty(1), &algorithm->count);
}

TEST_F(Declaring, namesTheProperties)
{
    EXPECT_STREQ(algorithm->input.getName().c_str(), "input");
    EXPECT_STREQ(algorithm->factor.getName().c_str(), "factor");
    EXPECT_STREQ(algorithm->level.getName().c_str(), "level");
    EXPECT_STREQ(algorithm->border.getName().c_str(), "border");
    EXPECT_STREQ(algorithm->list.getName().c_str(), "list");
    EXPECT_STREQ(algorithm->output.getName().c_str(), "output");
    EXPECT_STREQ(algorithm->count.getName().c_str(), "count");
}

TEST_F(Declaring, setsTheDefaults)
{
    EXPECT_EQ(algorithm->input.get(), nullptr);
    EXPECT_EQ(algorithm->factor.get(), 2.0);
    EXPECT_EQ(algorithm->level.get(), OptimLevelType::VEC_AVX);
    EXPECT_EQ(algorithm->border.get(), 1);
    EXPECT_EQ(algorithm->list.get(), Vector<int>(2));
    EXPECT_EQ(algorithm->output.get(), nullptr);
    EXPECT_EQ(algorithm->count.get(), 7U);
}

TEST_F(Declaring, attachesTheRulesInTheOrderOfTheLine)
{
    EXPECT_EQ(refusalOf(algorithm->input), "#1 Error : Parameter value cannot be null");
    auto const image = imageOf(MOX_COMPLEX_FLOAT32, {1, 1, 1, 1, 2});
    algorithm->input = image.get();
    EXPECT_EQ(refusalOf(algorithm->input),
              "#1 Error : Voxel type must be one of the following types : uint8, uint16, uint32, uint64, int8, int16, "
              "int32, int64, float32, float64. Current voxel type is complex float32");
    access::allocate(*image, MOX_FLOAT64, {1, 1, 1, 1, 2});
    EXPECT_EQ(refusalOf(algorithm->input), "#1 Error : component 4 must have a size of 1. Current size is 2");
    access::allocate(*image, MOX_FLOAT64, {1, 1, 1, 1, 1});
    EXPECT_EQ(refusalOf(algorithm->input), "");
}

TEST_F(Declaring, bindsTheArgumentsOfRules)
{
    algorithm->factor = 0.5;
    EXPECT_EQ(refusalOf(algorithm->factor), "#1 Error : Parameter value <0.5> must be greater or equal that <1>.");
    algorithm->factor = 1.0;
    EXPECT_EQ(refusalOf(algorithm->factor), "");
}

TEST_F(Declaring, bindsOtherPropertiesOfTheSameObject)
{
    auto const other = DeclaringAlgorithm::New();
    auto const small = imageOf(MOX_UINT8, {2, 1, 1, 1, 1});
    auto const large = imageOf(MOX_UINT8, {9, 9, 1, 1, 1});
    algorithm->input = small.get();
    other->input = large.get();
    TestImage result;
    algorithm->output = &result;
    EXPECT_EQ(refusalOf(algorithm->output), "");
    EXPECT_EQ(Sizes::of(result), Sizes::of(*small));
    EXPECT_EQ(result.getInterpretation(), INTERPRETATION_BINARY);
}

TEST_F(Declaring, leavesEarlierChangesWhereALaterRuleRefuses)
{
    auto const image = imageOf(MOX_UINT8, {2, 1, 1, 1, 1});
    calibrate(*image);
    algorithm->input = image.get();
    auto const wide = imageOf(MOX_FLOAT32, {9, 9, 1, 1, 1});
    algorithm->output = wide.get();
    EXPECT_EQ(refusalOf(algorithm->output),
              "#1 Error : Voxel type must be one of the following types : uint8, uint16, int8, int16. Current voxel "
              "type is float32");
    EXPECT_EQ(Sizes::of(*wide), Sizes::of(*image));
    expectSameCalibration(*wide, *image);
    EXPECT_EQ(wide->getInterpretation(), INTERPRETATION_VALUE);
}

TEST_F(Declaring, givesAnEnumerationItsNamesAndItsRule)
{
    String echo;
    EXPECT_TRUE(algorithm->level.read("GPU", echo));
    EXPECT_EQ(algorithm->level.get(), OptimLevelType::GPU);
    EXPECT_EQ(refusalOf(algorithm->level), "");
    algorithm->level = 4;
    EXPECT_EQ(refusalOf(algorithm->level), "#1 Error : The enumeration value is not valid");
}

TEST_F(Declaring, givesAnEnumerationItsNamesWithoutARule)
{
    String echo;
    EXPECT_TRUE(algorithm->border.read("MOX_INT8", echo));
    EXPECT_EQ(algorithm->border.get(), MOX_INT8);
    algorithm->border = 99;
    EXPECT_EQ(refusalOf(algorithm->border), "");
}

TEST_F(Declaring, makesIndependentObjects)
{
    auto const other = DeclaringAlgorithm::New();
    algorithm->factor = 5.0;
    algorithm->border = 3;
    EXPECT_EQ(other->factor.get(), 2.0);
    EXPECT_EQ(other->border.get(), 1);
    EXPECT_EQ(other->getInputProperty(0), &other->input);
}

TEST_F(Declaring, makesObjectsOfTheClass)
{
    auto const base = DeclaringAlgorithm::NewBase();
    EXPECT_NE(dynamic_cast<DeclaringAlgorithm*>(base.get()), nullptr);
    EXPECT_EQ(base->getInfo(), DeclaringAlgorithm::getClassInfo());
    EXPECT_STREQ(base->getInfo()->getName(), "DeclaringAlgorithm");
    EXPECT_STREQ(base->getInfo()->getLibName(), "Moxelcore");
    EXPECT_EQ(base->getInfo()->createInstance()->getNumOfProperties(), 7U);
}

} // namespace

} // namespace mox::testing
