#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <vector>

#include "testing/AlgorithmTests.h"

// What is true of every class of the library, seen as a host sees it: through the registry alone.

namespace mox::testing {

namespace {

bool isImage(BaseProperty const& property)
{
    return dynamic_cast<Property<ImageModel*> const*>(&property) != nullptr ||
           dynamic_cast<Property<ImageModel const*> const*>(&property) != nullptr;
}

std::vector<std::string> namesOfClassesWithImages()
{
    std::vector<std::string> names;
    for (std::string const& name : namesOfClasses()) {
        auto const algorithm = AlgoInfo::fromName(name.c_str()).createInstance();
        auto const properties = propertiesOf(*algorithm);
        if (std::any_of(properties.begin(), properties.end(),
                        [](auto const* property) { return isImage(*property); })) {
            names.push_back(name);
        }
    }
    return names;
}

class EveryClass : public ::testing::TestWithParam<std::string> {
protected:
    std::string const name = GetParam();
    AlgoInfo const& info = AlgoInfo::fromName(name.c_str());
    boost::shared_ptr<BaseAlgorithm> const algorithm = info.createInstance();
};

class EveryClassWithImages : public EveryClass {};

TEST(Registry, isNotEmptyAndKeepsItsOrder)
{
    auto const names = namesOfClasses();
    EXPECT_FALSE(names.empty());
    EXPECT_EQ(namesOfClasses(), names);
}

TEST(Registry, holdsEveryNameOnce)
{
    auto const names = namesOfClasses();
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
}

TEST(Registry, holdsThreshold)
{
    EXPECT_STREQ(AlgoInfo::fromName("Threshold").getName(), "Threshold");
}

TEST_P(EveryClass, isFoundByItsName)
{
    EXPECT_EQ(info.getName(), name);
    EXPECT_STREQ(info.getLibName(), "Moxelcore");
}

TEST_P(EveryClass, hasABareNameInUpperCamelCase)
{
    ASSERT_FALSE(name.empty());
    EXPECT_NE(std::isupper(static_cast<unsigned char>(name[0])), 0);
    for (char const character : name) {
        EXPECT_NE(std::isalnum(static_cast<unsigned char>(character)), 0) << name;
    }
}

TEST_P(EveryClass, makesObjectsThatKnowTheirClass)
{
    ASSERT_NE(algorithm, nullptr);
    EXPECT_EQ(algorithm->getInfo(), &info);
}

TEST_P(EveryClass, makesIndependentObjects)
{
    auto const other = info.createInstance();
    EXPECT_NE(other, algorithm);
    auto const properties = propertiesOf(*algorithm);
    auto const otherProperties = propertiesOf(*other);
    ASSERT_EQ(properties.size(), otherProperties.size());
    for (std::size_t i = 0; i < properties.size(); ++i) {
        EXPECT_NE(properties[i], otherProperties[i]);
        EXPECT_EQ(properties[i]->getName(), otherProperties[i]->getName());
        properties[i]->lock(true);
        EXPECT_FALSE(otherProperties[i]->isLocked());
    }
    algorithm->setMaximumExtraMemoryUsage(7);
    EXPECT_EQ(other->getMaximumExtraMemoryUsage(), 0);
}

TEST_P(EveryClass, countsItsProperties)
{
    EXPECT_EQ(algorithm->getNumOfProperties(),
              algorithm->getNumOfInputProperties() + algorithm->getNumOfOutputProperties());
    EXPECT_GT(algorithm->getNumOfOutputProperties(), 0U);
    for (BaseProperty const* property : propertiesOf(*algorithm)) {
        ASSERT_NE(property, nullptr);
    }
}

TEST_P(EveryClass, hasNoPropertyBeyondTheLast)
{
    EXPECT_EQ(algorithm->getInputProperty(algorithm->getNumOfInputProperties()), nullptr);
    EXPECT_EQ(algorithm->getOutputProperty(algorithm->getNumOfOutputProperties()), nullptr);
    EXPECT_EQ(algorithm->getInputProperty(0xFFFFFFFFU), nullptr);
    EXPECT_EQ(algorithm->getOutputProperty(0xFFFFFFFFU), nullptr);
}

TEST_P(EveryClass, namesItsPropertiesUniquelyInEachDirection)
{
    std::set<std::string> inputs;
    for (unsigned int i = 0; i < algorithm->getNumOfInputProperties(); ++i) {
        inputs.insert(algorithm->getInputProperty(i)->getName().c_str());
    }
    std::set<std::string> outputs;
    for (unsigned int i = 0; i < algorithm->getNumOfOutputProperties(); ++i) {
        outputs.insert(algorithm->getOutputProperty(i)->getName().c_str());
    }
    EXPECT_EQ(inputs.size(), algorithm->getNumOfInputProperties());
    EXPECT_EQ(outputs.size(), algorithm->getNumOfOutputProperties());
    EXPECT_FALSE(inputs.contains(""));
    EXPECT_FALSE(outputs.contains(""));
}

TEST_P(EveryClass, findsItsPropertiesByName)
{
    for (unsigned int i = 0; i < algorithm->getNumOfInputProperties(); ++i) {
        BaseProperty* const property = algorithm->getInputProperty(i);
        EXPECT_EQ(algorithm->getPropertyfromName(property->getName()), property);
    }
    for (unsigned int i = 0; i < algorithm->getNumOfOutputProperties(); ++i) {
        EXPECT_NE(algorithm->getPropertyfromName(algorithm->getOutputProperty(i)->getName()), nullptr);
    }
    EXPECT_EQ(algorithm->getPropertyfromName("noSuchProperty"), nullptr);
    EXPECT_EQ(algorithm->getPropertyfromName(""), nullptr);
}

TEST_P(EveryClass, beginsUnlockedWithNullImages)
{
    for (BaseProperty const* property : propertiesOf(*algorithm)) {
        EXPECT_FALSE(property->isLocked());
        if (auto const* input = dynamic_cast<Property<ImageModel const*> const*>(property)) {
            EXPECT_EQ(input->get(), nullptr) << input->getName().c_str();
        }
        if (auto const* output = dynamic_cast<Property<ImageModel*> const*>(property)) {
            EXPECT_EQ(output->get(), nullptr) << output->getName().c_str();
        }
    }
}

TEST_P(EveryClass, readsNoImageFromText)
{
    for (BaseProperty* property : propertiesOf(*algorithm)) {
        String echo;
        EXPECT_FALSE(isImage(*property) && property->read("1", echo)) << property->getName().c_str();
    }
}

TEST_P(EveryClass, givesItsEnumerationsTables)
{
    for (BaseProperty* property : propertiesOf(*algorithm)) {
        if (auto* enumeration = dynamic_cast<PropertyEnumeration*>(property)) {
            EXPECT_GT(enumeration->getEnumInfo().size(), 0);
            EXPECT_TRUE(enumeration->getEnumInfo().exists(enumeration->get())) << "the default";
        }
    }
}

TEST_P(EveryClassWithImages, refusesNullImages)
{
    try {
        algorithm->run();
        FAIL() << "nothing was thrown";
    } catch (RuleException const& exception) {
        std::string const text = exception.what().c_str();
        EXPECT_TRUE(text.starts_with("Rule exception :\n#1 Error : ")) << text;
        EXPECT_NE(text.find("\n#2 From Rule error in property "), std::string::npos) << text;
        EXPECT_EQ(text.find('/'), std::string::npos) << "no paths of the machine that built it: " << text;
        EXPECT_TRUE(text.ends_with("\n#3 From " + name + " of Moxelcore library \n")) << text;
    }
}

TEST_P(EveryClassWithImages, isIdleAndUnlockedAfterARefusal)
{
    for (int round = 0; round < 2; ++round) {
        EXPECT_THROW(algorithm->run(), RuleException);
        EXPECT_FALSE(algorithm->running());
        EXPECT_FALSE(algorithm->isExecutionCancelled());
        EXPECT_EQ(algorithm->getProgress(), 0.0);
        for (BaseProperty const* property : propertiesOf(*algorithm)) {
            EXPECT_FALSE(property->isLocked()) << property->getName().c_str();
        }
    }
}

TEST_P(EveryClass, tellsItsBorderInfluence)
{
    AlgoBorderInfluence const influence = algorithm->getAlgoBorderInfluence();
    AlgoBorderInfluence const again = algorithm->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        auto const side = static_cast<DirectionTypes>(direction);
        EXPECT_EQ(influence.getNumOfVoxels(side), again.getNumOfVoxels(side)) << direction;
    }
}

TEST_P(EveryClass, supportsItsMostPerformantLevelAndNoneAbove)
{
    int const best = algorithm->getMostPerformantAvailableOptimLevel();
    int const levels = getEnumInfo<OptimLevelType>().size();
    ASSERT_GE(best, 0) << "a class without a runner cannot run";
    ASSERT_LT(best, levels);
    EXPECT_TRUE(algorithm->isOptimLevelSupported(static_cast<OptimLevelType::Value>(best)));
    for (int level = best + 1; level < levels; ++level) {
        EXPECT_FALSE(algorithm->isOptimLevelSupported(static_cast<OptimLevelType::Value>(level))) << level;
    }
}

TEST_P(EveryClass, runsOnEveryProcessor)
{
    EXPECT_TRUE(algorithm->isOptimLevelSupported(OptimLevelType::SCALAR));
}

std::string nameOf(::testing::TestParamInfo<std::string> const& info)
{
    return info.param;
}

INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryClass, ::testing::ValuesIn(namesOfClasses()), nameOf);
INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryClassWithImages, ::testing::ValuesIn(namesOfClassesWithImages()), nameOf);

} // namespace

} // namespace mox::testing
