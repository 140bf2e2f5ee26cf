#include <Moxelcore/Core/String.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>

namespace mox {

namespace {

TEST(String, isAsLargeAsAPointer)
{
    EXPECT_EQ(sizeof(String), sizeof(void*));
}

TEST(String, isEmptyByDefault)
{
    String const text;
    EXPECT_STREQ(text.c_str(), "");
    EXPECT_EQ(text.length(), 0U);
}

TEST(String, holdsACopyOfTheCharacters)
{
    char characters[] = "voxel";
    String const text(characters);
    characters[0] = 'V';
    EXPECT_STREQ(text.c_str(), "voxel");
    EXPECT_EQ(text.length(), 5U);
}

TEST(String, takesNullAsTheEmptyText)
{
    char const* const null = nullptr;
    String text(null);
    EXPECT_STREQ(text.c_str(), "");
    text = "voxel";
    text = null;
    EXPECT_STREQ(text.c_str(), "");
}

TEST(String, copiesDeeply)
{
    String source("voxel");
    String const copy(source);
    EXPECT_NE(copy.c_str(), source.c_str());
    source = "row";
    EXPECT_STREQ(copy.c_str(), "voxel");
}

TEST(String, assignsDeeply)
{
    String source("voxel");
    String target("an older and longer text");
    String const& result = target = source;
    EXPECT_EQ(&result, &target);
    source = "row";
    EXPECT_STREQ(target.c_str(), "voxel");
    EXPECT_STREQ(source.c_str(), "row");
}

TEST(String, survivesAssignmentToItself)
{
    String text("voxel");
    String const& same = text;
    text = same;
    EXPECT_STREQ(text.c_str(), "voxel");
    text = text.c_str();
    EXPECT_STREQ(text.c_str(), "voxel");
}

TEST(String, leavesAMovedFromTextUsable)
{
    String source("voxel");
    String const target(std::move(source));
    EXPECT_STREQ(target.c_str(), "voxel");
    source = "row";
    EXPECT_STREQ(source.c_str(), "row");
}

TEST(String, comparesByteByByte)
{
    EXPECT_TRUE(String("voxel") == String("voxel"));
    EXPECT_FALSE(String("voxel") != String("voxel"));
    EXPECT_TRUE(String("voxel") != String("Voxel"));
    EXPECT_TRUE(String("voxel") != String("voxels"));
    EXPECT_FALSE(String("voxel") == String("voxe"));
    EXPECT_TRUE(String() == "");
    EXPECT_TRUE(String("\xC3\xA9") != String("e"));
}

TEST(String, holdsLongTexts)
{
    std::string const characters(std::size_t{1} << 20, 'x');
    String const text(characters.c_str());
    EXPECT_EQ(text.length(), characters.length());
    EXPECT_EQ(text.c_str(), characters);
}

} // namespace

} // namespace mox
