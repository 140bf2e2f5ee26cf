#include <Moxelcore/Core/EnumInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "testing/ForeignLocale.h"

namespace {

using Entry = std::pair<std::string, int>;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<Entry> entriesOf(EnumInfo const& info)
{
    std::vector<Entry> entries;
    for (int i = 0; i < info.size(); ++i) {
        entries.emplace_back(info.getNameByIndex(i).c_str(), info.getEnumByIndex(i));
    }
    return entries;
}

std::vector<Entry> entriesOf(char const* definition)
{
    return entriesOf(EnumInfo(definition, "E"));
}

TEST(EnumInfo, countsUpFromTheLastExplicitValue)
{
    EnumInfo const info("A = 5, B , C = 2, D", "E");
    EXPECT_EQ(info.size(), 4);
    EXPECT_THAT(entriesOf(info), ElementsAre(Entry("A", 5), Entry("B", 6), Entry("C", 2), Entry("D", 3)));
    EXPECT_STREQ(info.getNameByIndex(1).c_str(), "B");
}

TEST(EnumInfo, givesAFirstNameWithoutAValueOne)
{
    EXPECT_THAT(entriesOf("A, B"), ElementsAre(Entry("A", 1), Entry("B", 2)));
}

TEST(EnumInfo, trimsNamesButKeepsBlanksInside)
{
    EXPECT_THAT(entriesOf(" \t\nA B\v\f\r= 0,\nC\t"), ElementsAre(Entry("A B", 0), Entry("C", 1)));
}

TEST(EnumInfo, readsValuesWithOrWithoutBlanks)
{
    EXPECT_THAT(entriesOf("A=3,B =  4 ,C= 5,D"),
                ElementsAre(Entry("A", 3), Entry("B", 4), Entry("C", 5), Entry("D", 6)));
}

TEST(EnumInfo, readsDecimalIntegersOfBothSigns)
{
    EXPECT_THAT(entriesOf("A = -2, B, C, D = +010, E = 0x10"),
                ElementsAre(Entry("A", -2), Entry("B", -1), Entry("C", 0), Entry("D", 10), Entry("E", 0)));
}

TEST(EnumInfo, ignoresWhatFollowsTheValue)
{
    EXPECT_THAT(entriesOf("A = 5x, B = 7 = 8, C"), ElementsAre(Entry("A", 5), Entry("B", 7), Entry("C", 8)));
}

TEST(EnumInfo, keepsTheCounterAtAValueThatIsNoNumber)
{
    EXPECT_THAT(entriesOf("A = 4, B = x, C"), ElementsAre(Entry("A", 4), Entry("B", 4), Entry("C", 5)));
    EXPECT_THAT(entriesOf("A = x, B"), ElementsAre(Entry("A", 0), Entry("B", 1)));
    EXPECT_THAT(entriesOf("A = 4, B =, C"), ElementsAre(Entry("A", 4), Entry("B", 4), Entry("C", 5)));
}

TEST(EnumInfo, keepsTheCounterAtAValueThatIsTooLarge)
{
    EXPECT_THAT(entriesOf("A = 4, B = 99999999999, C"), ElementsAre(Entry("A", 4), Entry("B", 4), Entry("C", 5)));
}

TEST(EnumInfo, goesOnFromTheLargestValueWithTheSmallest)
{
    EXPECT_THAT(entriesOf("A = 2147483647, B, C"),
                ElementsAre(Entry("A", 2147483647), Entry("B", -2147483647 - 1), Entry("C", -2147483647)));
}

TEST(EnumInfo, dropsEmptyTokensButEntersBlankOnes)
{
    EXPECT_THAT(entriesOf("A = 0,,B,"), ElementsAre(Entry("A", 0), Entry("B", 1)));
    EXPECT_THAT(entriesOf("A = 0, "), ElementsAre(Entry("A", 0), Entry("", 1)));
    EXPECT_THAT(entriesOf("= 3, A"), ElementsAre(Entry("", 3), Entry("A", 4)));
}

TEST(EnumInfo, isEmptyForAnEmptyDefinition)
{
    EnumInfo const info("", "E");
    EXPECT_EQ(info.size(), 0);
    EXPECT_FALSE(info.exists(0));
    EXPECT_FALSE(info.exists(""));
    EXPECT_THAT(entriesOf(","), IsEmpty());
}

TEST(EnumInfo, letsTheLastOfEqualValuesNameTheValue)
{
    EnumInfo const info("A = 1, B = 1", "E");
    EXPECT_EQ(info.size(), 2);
    EXPECT_STREQ(info.getName(1).c_str(), "B");
    EXPECT_EQ(info.getEnum("A"), 1);
    EXPECT_EQ(info.getEnum("B"), 1);
    EXPECT_STREQ(info.getNameByIndex(0).c_str(), "A");
}

TEST(EnumInfo, letsTheLastOfEqualNamesGiveTheValue)
{
    EnumInfo const info("A = 1, A = 2", "E");
    EXPECT_EQ(info.size(), 2);
    EXPECT_EQ(info.getEnum("A"), 2);
    EXPECT_STREQ(info.getName(1).c_str(), "A");
    EXPECT_STREQ(info.getName(2).c_str(), "A");
    EXPECT_EQ(info.getEnumByIndex(0), 1);
}

TEST(EnumInfo, knowsItsNamesAndValues)
{
    EnumInfo const info("A = 5, B", "E");
    EXPECT_TRUE(info.exists("A"));
    EXPECT_TRUE(info.exists(6));
    for (char const* name : {"a", "A ", "", "C"}) {
        EXPECT_FALSE(info.exists(name)) << name;
    }
    for (int const value : {0, 4, 7, -5}) {
        EXPECT_FALSE(info.exists(value)) << value;
    }
    EXPECT_EQ(info.getEnum("B"), 6);
    EXPECT_STREQ(info.getName(5).c_str(), "A");
    EXPECT_STREQ(info.getEnumName().c_str(), "E");
}

template <class Look>
std::string failureOf(Look const& look)
{
    try {
        look();
    } catch (std::out_of_range const& error) {
        return error.what();
    }
    return "nothing was thrown";
}

TEST(EnumInfo, throwsForAnUnknownNameOrValue)
{
    EnumInfo const info("A = 5, B", "E");
    EXPECT_EQ(failureOf([&] { info.getEnum("C"); }), "invalid map<K, T> key");
    EXPECT_EQ(failureOf([&] { info.getEnum("a"); }), "invalid map<K, T> key");
    EXPECT_EQ(failureOf([&] { info.getName(99); }), "invalid map<K, T> key");
}

TEST(EnumInfo, copiesDeeply)
{
    EnumInfo source("A = 5", "E");
    EnumInfo const copy(source);
    EnumInfo assigned("X, Y, Z", "F");
    assigned = copy;
    source = EnumInfo("B = 1, C", "G");
    EXPECT_THAT(entriesOf(copy), ElementsAre(Entry("A", 5)));
    EXPECT_THAT(entriesOf(assigned), ElementsAre(Entry("A", 5)));
    EXPECT_STREQ(assigned.getEnumName().c_str(), "E");
    EXPECT_FALSE(assigned.exists("X"));
    EXPECT_THAT(entriesOf(source), ElementsAre(Entry("B", 1), Entry("C", 2)));
    EnumInfo const& same = assigned;
    assigned = same;
    EXPECT_THAT(entriesOf(assigned), ElementsAre(Entry("A", 5)));
}

TEST(EnumInfo, readsDefinitionsTheSameInEveryLocale)
{
    mox::testing::ForeignLocale const locale;
    EXPECT_THAT(entriesOf("A = 1.234, B"), ElementsAre(Entry("A", 1), Entry("B", 2)));
}

} // namespace
