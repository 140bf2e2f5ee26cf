#include <Moxelcore/Core/BaseAlgorithm.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Core/private/PropertyValue.h"
#include "testing/TestAlgorithm.h"

namespace mox::testing {

namespace {

using ::testing::ElementsAre;

/// An algorithm whose properties a test adds.
class OpenAlgorithm final : public BaseAlgorithm {
public:
    AlgoInfo* getInfo() const override { return TestAlgorithm::getClassInfo(); }
    AlgoBorderInfluence getAlgoBorderInfluence() const override { return {0, 0, 0, 0, 0}; }

    using BaseAlgorithm::addInput;
    using BaseAlgorithm::addOutput;
    using BaseAlgorithm::applyAllRules;
    using BaseAlgorithm::lockAllProperties;
};

class RuleOfTest final : public Rules<int> {
public:
    explicit RuleOfTest(std::function<void()> action)
        : action_(std::move(action))
    {
    }

    void apply(PropertyValue<int>&) override { action_(); }

private:
    std::function<void()> action_;
};

Property<int> named(char const* name)
{
    Property<int> property;
    PropertyAccess::setName(property, name);
    return property;
}

class AlgorithmProperties : public ::testing::Test {
protected:
    AlgorithmProperties()
    {
        algorithm.addOutput(&mask);
        algorithm.addInput(&image);
        algorithm.addInput(&level);
        algorithm.addOutput(&sum);
    }

    Property<int> image = named("image");
    Property<int> level = named("level");
    Property<int> mask = named("mask");
    Property<int> sum = named("sum");
    OpenAlgorithm algorithm;
};

TEST(BaseAlgorithm, hasNoPropertiesAtFirst)
{
    OpenAlgorithm const algorithm;
    EXPECT_EQ(algorithm.getNumOfProperties(), 0U);
    EXPECT_EQ(algorithm.getInputProperty(0), nullptr);
    EXPECT_EQ(algorithm.getOutputProperty(0), nullptr);
    EXPECT_EQ(algorithm.getPropertyfromName(""), nullptr);
}

TEST(BaseAlgorithm, isIdleAtFirst)
{
    OpenAlgorithm algorithm;
    EXPECT_FALSE(algorithm.running());
    EXPECT_FALSE(algorithm.isExecutionCancelled());
    EXPECT_EQ(algorithm.getProgress(), 0.0);
    EXPECT_FALSE(algorithm.cancelExecution());
    EXPECT_FALSE(algorithm.isExecutionCancelled());
}

TEST(BaseAlgorithm, keepsTheMemoryLimit)
{
    OpenAlgorithm algorithm;
    EXPECT_EQ(algorithm.getMaximumExtraMemoryUsage(), 0);
    for (int const limit : {1, 4096, -1, 0}) {
        algorithm.setMaximumExtraMemoryUsage(limit);
        EXPECT_EQ(algorithm.getMaximumExtraMemoryUsage(), limit);
    }
}

TEST_F(AlgorithmProperties, areCountedAndListedByDirection)
{
    EXPECT_EQ(algorithm.getNumOfProperties(), 4U);
    EXPECT_EQ(algorithm.getNumOfInputProperties(), 2U);
    EXPECT_EQ(algorithm.getNumOfOutputProperties(), 2U);
    EXPECT_EQ(algorithm.getInputProperty(0), &image);
    EXPECT_EQ(algorithm.getInputProperty(1), &level);
    EXPECT_EQ(algorithm.getOutputProperty(0), &mask);
    EXPECT_EQ(algorithm.getOutputProperty(1), &sum);
}

TEST_F(AlgorithmProperties, areNullBeyondTheLast)
{
    for (unsigned int const index : {2U, 3U, 0xFFFFFFFFU}) {
        EXPECT_EQ(algorithm.getInputProperty(index), nullptr) << index;
        EXPECT_EQ(algorithm.getOutputProperty(index), nullptr) << index;
    }
}

TEST_F(AlgorithmProperties, areFoundByName)
{
    EXPECT_EQ(algorithm.getPropertyfromName("image"), &image);
    EXPECT_EQ(algorithm.getPropertyfromName("sum"), &sum);
    for (char const* name : {"", "Image", "imag", "image "}) {
        EXPECT_EQ(algorithm.getPropertyfromName(name), nullptr) << name;
    }
}

TEST_F(AlgorithmProperties, areFoundAmongTheInputsFirst)
{
    Property<int> both = named("mask");
    algorithm.addInput(&both);
    EXPECT_EQ(algorithm.getPropertyfromName("mask"), &both);
    Property<int> second = named("image");
    algorithm.addInput(&second);
    EXPECT_EQ(algorithm.getPropertyfromName("image"), &image);
}

TEST_F(AlgorithmProperties, areLockedTogether)
{
    EXPECT_TRUE(algorithm.lockAllProperties(true));
    for (Property<int> const* property : {&image, &level, &mask, &sum}) {
        EXPECT_TRUE(property->isLocked());
    }
    EXPECT_TRUE(algorithm.lockAllProperties(false));
    for (Property<int> const* property : {&image, &level, &mask, &sum}) {
        EXPECT_FALSE(property->isLocked());
    }
}

TEST_F(AlgorithmProperties, areLockedAroundMissingOnes)
{
    algorithm.addInput(nullptr);
    algorithm.addOutput(nullptr);
    Property<int> last = named("last");
    algorithm.addOutput(&last);
    EXPECT_TRUE(algorithm.lockAllProperties(true));
    EXPECT_TRUE(level.isLocked());
    EXPECT_TRUE(last.isLocked());
}

TEST_F(AlgorithmProperties, haveTheirRulesAppliedInputsFirst)
{
    std::vector<std::string> calls;
    for (Property<int>* property : {&sum, &mask, &level, &image}) {
        PropertyAccess::addRule<int>(*property, boost::make_shared<RuleOfTest>([&, property] {
            calls.emplace_back(property->getName().c_str());
        }));
    }
    algorithm.applyAllRules();
    EXPECT_THAT(calls, ElementsAre("image", "level", "mask", "sum"));
}

TEST(CopiedAlgorithm, isASecondHandleToTheSameParameters)
{
    auto const source = TestAlgorithm::New();
    TestAlgorithm copy(*source);
    copy.number = 7.0;
    EXPECT_EQ(source->number.get(), 7.0);
    EXPECT_EQ(copy.getInputProperty(0), &source->input);
    copy.setMaximumExtraMemoryUsage(5);
    EXPECT_EQ(source->getMaximumExtraMemoryUsage(), 5);
}

TEST(CopiedAlgorithm, hasNoPropertiesOnceItsSourceIsGone)
{
    auto source = TestAlgorithm::New();
    TestAlgorithm copy(*source);
    source.reset();
    EXPECT_EQ(copy.getNumOfProperties(), 0U);
    EXPECT_EQ(copy.getPropertyfromName("input"), nullptr);
    copy.number = 7.0;
    EXPECT_EQ(copy.number.get(), 7.0);
}

TEST(CopiedAlgorithm, mayGoBeforeItsSource)
{
    auto const source = TestAlgorithm::New();
    {
        TestAlgorithm const copy(*source);
    }
    auto const assigned = TestAlgorithm::New();
    *assigned = *source;
    EXPECT_EQ(assigned->getInputProperty(0), &source->input);
    TestAlgorithm const& same = *source;
    *source = same;
    EXPECT_EQ(source->getNumOfProperties(), 3U);
    source->number = 3.0;
    EXPECT_EQ(assigned->number.get(), 3.0);
}

} // namespace

} // namespace mox::testing
