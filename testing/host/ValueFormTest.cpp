#include "apps/moxel/ValueForm.h"

#include <Moxelcore/Core/Enum/DecimationOp.h>
#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>
#include <Moxelcore/Math/MathProperty.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace moxel {
namespace {

template <class T>
T parse(std::string const& text)
{
    return ValueForm<T>::parse(text);
}

TEST(ValueForm, ReadsWholeNumbersOnly)
{
    EXPECT_EQ(parse<int>("-12"), -12);
    for (char const* text : {"12abc", "1.5", "", " 1", "1 ", "0x10", "+1", "1,2", "1e3", "--1"}) {
        EXPECT_THROW(parse<int>(text), UsageError) << text;
    }
    EXPECT_THROW(parse<unsigned int>("-1"), UsageError);
    EXPECT_THROW(parse<mox::uint64>("-1"), UsageError);
}

TEST(ValueForm, KeepsToTheRangeOfTheType)
{
    EXPECT_EQ(parse<int>("2147483647"), std::numeric_limits<int>::max());
    EXPECT_THROW(parse<int>("2147483648"), UsageError);
    EXPECT_EQ(parse<unsigned int>("4294967295"), std::numeric_limits<unsigned int>::max());
    EXPECT_THROW(parse<unsigned int>("4294967296"), UsageError);
    EXPECT_EQ(parse<mox::uint64>("18446744073709551615"), std::numeric_limits<mox::uint64>::max());
    EXPECT_EQ(parse<mox::int64>("-9223372036854775808"), std::numeric_limits<mox::int64>::min());
    EXPECT_THROW(parse<mox::int64>("9223372036854775808"), UsageError);
    EXPECT_EQ(parse<unsigned char>("255"), 255);
    EXPECT_THROW(parse<unsigned char>("256"), UsageError);
    EXPECT_THROW(parse<double>("1e400"), UsageError);
}

TEST(ValueForm, ReadsDoubles)
{
    EXPECT_EQ(parse<double>("-1.5e-3"), -1.5e-3);
    EXPECT_EQ(parse<double>("110"), 110.0);
    EXPECT_EQ(parse<double>("inf"), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(parse<double>("nan")));
    for (char const* text : {"1,5", "1.5x", "", " 1", "1 2"}) {
        EXPECT_THROW(parse<double>(text), UsageError) << text;
    }
}

TEST(ValueForm, ReadsTruth)
{
    EXPECT_TRUE(parse<bool>("true"));
    EXPECT_TRUE(parse<bool>("1"));
    EXPECT_FALSE(parse<bool>("false"));
    EXPECT_FALSE(parse<bool>("0"));
    EXPECT_THROW(parse<bool>("2"), UsageError);
    EXPECT_THROW(parse<bool>("yes"), UsageError);
}

TEST(ValueForm, TellsWhatIsWrong)
{
    try {
        parse<int>("12abc");
        FAIL();
    } catch (UsageError const& error) {
        EXPECT_STREQ(error.what(), "\"12abc\" is no number of type int32");
    }
    try {
        parse<unsigned char>("300");
        FAIL();
    } catch (UsageError const& error) {
        EXPECT_STREQ(error.what(), "\"300\" is beyond the range of uint8");
    }
}

TEST(ValueForm, ReadsLists)
{
    auto const numbers = parse<mox::Vector<int>>("0,1,-4,9");
    ASSERT_EQ(numbers.size(), 4U);
    EXPECT_EQ(numbers[2], -4);
    EXPECT_EQ(parse<mox::Vector<int>>("").size(), 0U);
    EXPECT_EQ(parse<mox::Vector<unsigned char>>("65")[0], 65);
    for (char const* text : {"1,", ",1", "1,,2", "1 2", "1:2"}) {
        EXPECT_THROW(parse<mox::Vector<int>>(text), UsageError) << text;
    }
}

TEST(ValueForm, ReadsPoints)
{
    using Point = mox::math::Vector2<int>;
    EXPECT_EQ(parse<Point>("1:-2"), Point(1, -2));
    auto const points = parse<mox::Vector<Point>>("1:0,0:1");
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[1], Point(0, 1));
    EXPECT_EQ(parse<mox::math::Vector4<double>>("1:2.5:3:4")[1], 2.5);
    for (char const* text : {"1", "1:2:3", "1:", "1:a", "1,2"}) {
        EXPECT_THROW(parse<Point>(text), UsageError) << text;
    }
}

TEST(ValueForm, ReadsEnumeratorsByNameAndNumber)
{
    using mox::segmentation::TextureFeatureTypes;
    auto const features = parse<mox::Vector<TextureFeatureTypes>>("COOC_Contrast,0");
    ASSERT_EQ(features.size(), 2U);
    EXPECT_EQ(ValueForm<TextureFeatureTypes>::text(features[0]), "COOC_Contrast");
    EXPECT_EQ(static_cast<int>(features[1]), 0);
}

TEST(ValueForm, SuggestsEnumerators)
{
    EnumInfo const& info = mox::getEnumInfo<mox::miscellaneous::DecimationOp>();
    EXPECT_EQ(parseEnumerator(info, "MAX"), 2);
    EXPECT_EQ(parseEnumerator(info, "3"), 3);
    for (char const* text : {"4", "-1", "2x", "", "AVERAGE"}) {
        EXPECT_THROW(parseEnumerator(info, text), UsageError) << text;
    }
    try {
        parseEnumerator(info, "MEEN");
        FAIL();
    } catch (UsageError const& error) {
        EXPECT_STREQ(error.what(), "no DecimationOp \"MEEN\"; did you mean MEAN or MIN?");
    }
}

TEST(ValueForm, WritesWhatItReads)
{
    EXPECT_EQ(ValueForm<double>::text(0.1), "0.1");
    EXPECT_EQ(ValueForm<bool>::text(true), "true");
    EXPECT_EQ(ValueForm<unsigned char>::text(65), "65");
    EXPECT_EQ(ValueForm<mox::String>::text("a b"), "a b");
    using Points = mox::Vector<mox::math::Vector3<double>>;
    EXPECT_EQ(ValueForm<Points>::text(parse<Points>("1:2:0.5,4:5:6")), "1:2:0.5,4:5:6");
    EXPECT_EQ(ValueForm<Points>::json(parse<Points>("1:2:0.5")), Json::parse("[[1.0, 2.0, 0.5]]"));
    EXPECT_EQ(ValueForm<mox::Vector<int>>::text({}), "");
}

TEST(ValueForm, WritesMatricesByRows)
{
    mox::math::Matrix2<double> const matrix(1, 2, 3, 4.5);
    using Form = ValueForm<mox::math::Matrix2<double>>;
    EXPECT_EQ(Form::text(matrix), "1:2,3:4.5");
    EXPECT_EQ(Form::json(matrix), Json::parse("[[1.0, 2.0], [3.0, 4.5]]"));
    EXPECT_EQ(ValueForm<mox::math::Matrix3<float>>::name(), "3 x 3 matrix of float");
}

} // namespace
} // namespace moxel
