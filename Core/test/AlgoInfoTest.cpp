#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/Exception.h>

#include <gtest/gtest.h>

#include <string>

#include "Core/private/AlgoInfoAccess.h"
#include "testing/TestAlgorithm.h"
#include "testing/lineless.h"

namespace mox {

namespace {

using testing::TestAlgorithm;

class RunnerOfTest final : public Runnable {
public:
    void run(BaseAlgorithm*) override {}
    bool canRun(BaseAlgorithm*) override { return true; }
    OptimLevelType getOptimLevel() override { return OptimLevelType::GPU; }
};

AlgoInfo record()
{
    return {"Name", "Library", &TestAlgorithm::NewBase};
}

/// What `fromName` says of a name that it does not know.
std::string refusalOf(char const* name)
{
    try {
        AlgoInfo::fromName(name);
    } catch (InvalidCall const& error) {
        return testing::lineless(error.what());
    }
    return "nothing was thrown";
}

std::string refusal(std::string const& message)
{
    return "Invalid call :\n#1 Error : " + message + " \n    (at \"AlgoInfo\", line N) \n";
}

TEST(AlgoInfo, tellsItsNames)
{
    AlgoInfo const info = record();
    EXPECT_STREQ(info.getName(), "Name");
    EXPECT_STREQ(info.getLibName(), "Library");
}

TEST(AlgoInfo, keepsItsOwnNames)
{
    char name[] = "Name";
    AlgoInfo const info(name, name, nullptr);
    name[0] = 'n';
    EXPECT_STREQ(info.getName(), "Name");
    EXPECT_STREQ(info.getLibName(), "Name");
}

TEST(AlgoInfo, makesObjectsThroughItsFactory)
{
    AlgoInfo const info = record();
    auto const first = info.createInstance();
    auto const second = info.createInstance();
    EXPECT_NE(dynamic_cast<TestAlgorithm*>(first.get()), nullptr);
    EXPECT_NE(first, second);
}

TEST(AlgoInfo, copiesDeeply)
{
    AlgoInfo source = record();
    AlgoInfo const copy(source);
    AlgoInfo assigned("Other", "Other", nullptr);
    assigned = source;
    AlgoInfoAccess::getRunners(source).push_back(boost::make_shared<RunnerOfTest>());
    source = AlgoInfo("Newer", "Newer", nullptr);

    for (AlgoInfo info : {copy, assigned}) {
        EXPECT_STREQ(info.getName(), "Name");
        EXPECT_STREQ(info.getLibName(), "Library");
        EXPECT_NE(info.createInstance(), nullptr);
        EXPECT_TRUE(AlgoInfoAccess::getRunners(info).empty());
    }
    EXPECT_NE(static_cast<void const*>(copy.getName()), assigned.getName());
}

TEST(AlgoInfo, copiesTheRunnersThatItHas)
{
    AlgoInfo source = record();
    AlgoInfoAccess::getRunners(source).push_back(boost::make_shared<RunnerOfTest>());
    AlgoInfo copy(source);
    EXPECT_EQ(AlgoInfoAccess::getRunners(copy), AlgoInfoAccess::getRunners(source));
}

TEST(AlgoInfo, survivesAssignmentToItself)
{
    AlgoInfo info = record();
    AlgoInfo const& same = info;
    info = same;
    EXPECT_STREQ(info.getName(), "Name");
}

TEST(AlgoInfo, isFoundByName)
{
    AlgoInfo const& info = AlgoInfo::fromName("Threshold");
    EXPECT_STREQ(info.getName(), "Threshold");
    EXPECT_STREQ(info.getLibName(), "Moxelcore");
}

TEST(AlgoInfo, isNotFoundByAnythingButItsExactName)
{
    EXPECT_EQ(refusalOf("NoSuchClass"), refusal("The className NoSuchClass does not exist"));
    EXPECT_EQ(refusalOf(""), refusal("The className  does not exist"));
    EXPECT_EQ(refusalOf(nullptr), refusal("The className  does not exist"));
    EXPECT_EQ(refusalOf("threshold"), refusal("The className threshold does not exist"));
    EXPECT_EQ(refusalOf("Thresh"), refusal("The className Thresh does not exist"));
    EXPECT_EQ(refusalOf("Threshold "), refusal("The className Threshold  does not exist"));
    EXPECT_EQ(refusalOf("mox::segmentation::Threshold"),
              refusal("The className mox::segmentation::Threshold does not exist"));
}

TEST(AlgoInfo, isNotFoundUnlessItIsInTheRegistry)
{
    EXPECT_EQ(refusalOf("TestAlgorithm"), refusal("The className TestAlgorithm does not exist"));
}

TEST(AlgoInfo, isFoundByPosition)
{
    ASSERT_GT(AlgoInfo::count(), 0U);
    for (std::size_t i = 0; i < AlgoInfo::count(); ++i) {
        AlgoInfo const& info = AlgoInfo::at(i);
        EXPECT_EQ(&AlgoInfo::fromName(info.getName()), &info);
    }
}

TEST(AlgoInfo, isNotFoundBeyondTheLastPosition)
{
    std::string const count = std::to_string(AlgoInfo::count());
    try {
        AlgoInfo::at(AlgoInfo::count());
        FAIL() << "nothing was thrown";
    } catch (BadIndex const& error) {
        EXPECT_EQ(testing::lineless(error.what()), "Bad index :\n#1 Error : There is no class at position " + count +
                                                       " of " + count + " \n    (at \"AlgoInfo\", line N) \n");
    }
    EXPECT_THROW(AlgoInfo::at(static_cast<std::size_t>(-1)), BadIndex);
}

TEST(AlgoInfo, isTheRecordOfTheClass)
{
    auto const algorithm = TestAlgorithm::New();
    EXPECT_EQ(algorithm->getInfo(), TestAlgorithm::getClassInfo());
    EXPECT_STREQ(algorithm->getInfo()->getName(), "TestAlgorithm");
    EXPECT_STREQ(algorithm->getInfo()->getLibName(), "Moxelcore");
}

} // namespace

} // namespace mox
