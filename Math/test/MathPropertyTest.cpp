#include <Moxelcore/Math/MathProperty.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>

#include "testing/VectorTests.h"

namespace mox::testing {

namespace {

using namespace math;

using MathElements =
    ::testing::Types<Vector2<int>, Vector2<unsigned int>, Vector2<int64>, Vector2<uint64>, Vector2<double>,
                     Vector3<int>, Vector3<unsigned int>, Vector3<int64>, Vector3<uint64>, Vector3<double>,
                     Vector4<int>, Vector4<unsigned int>, Vector4<int64>, Vector4<uint64>, Vector4<double>>;

INSTANTIATE_TYPED_TEST_SUITE_P(OfMathElements, VectorTest, MathElements);

/// The value after a successful read into a fresh property, none when the text is refused.
template <class T>
std::optional<T> valueRead(char const* text)
{
    Property<T> property;
    String echo = "before";
    bool const understood = property.read(text, echo);
    EXPECT_STREQ(echo.c_str(), text);
    return understood ? std::optional<T>(property.get()) : std::nullopt;
}

template <class V>
class PropertyOfMathVectors : public ::testing::Test {
};

TYPED_TEST_SUITE(PropertyOfMathVectors, MathElements);

TYPED_TEST(PropertyOfMathVectors, keepsWhatIsSetUnlessLocked)
{
    Property<TypeParam> property;
    EXPECT_TRUE(property.get() == TypeParam());
    EXPECT_TRUE((property = element<TypeParam>(3)) == element<TypeParam>(3));
    property.lock(true);
    EXPECT_TRUE((property = element<TypeParam>(4)) == element<TypeParam>(3));
}

TYPED_TEST(PropertyOfMathVectors, readsComponentsSeparatedByWhiteSpace)
{
    auto const value = valueRead<TypeParam>(" 1\t2\n3 4");
    ASSERT_TRUE(value.has_value());
    for (unsigned int i = 0; i < value->dim(); ++i) {
        EXPECT_TRUE((*value)[i] == decltype(value->length())(i + 1)) << i;
    }
}

TYPED_TEST(PropertyOfMathVectors, refusesTextsWithTooFewComponents)
{
    for (char const* text : {"", " ", "1", "x", "1,2,3,4", "1 x 3 4"}) {
        EXPECT_EQ(valueRead<TypeParam>(text), std::nullopt) << text;
    }
}

TYPED_TEST(PropertyOfMathVectors, pointsToSequencesThatHaveNoText)
{
    Vector<TypeParam> points;
    Property<Vector<TypeParam>*> writable;
    Property<Vector<TypeParam> const*> readable;
    writable = &points;
    readable = &points;
    for (char const* text : {"", "0", "1 2 3 4"}) {
        String echo;
        EXPECT_FALSE(writable.read(text, echo));
        EXPECT_STREQ(echo.c_str(), text);
        EXPECT_FALSE(readable.read(text, echo));
        EXPECT_EQ(writable.get(), &points);
        EXPECT_EQ(readable.get(), &points);
    }
}

TEST(PropertyOfMathValues, readsFractions)
{
    EXPECT_EQ(valueRead<Vector2<double>>("0.5 -1e3"), Vector2<double>(0.5, -1e3));
    EXPECT_EQ(valueRead<Vector2<int>>("-1 2 and more"), Vector2<int>(-1, 2));
}

Vector<Vector2<int>> points(std::initializer_list<Vector2<int>> values)
{
    Vector<Vector2<int>> result;
    for (Vector2<int> const& value : values) {
        result.push_back(value);
    }
    return result;
}

TEST(PropertyOfPoints, readsPairsToTheEndOfTheText)
{
    using Points = Vector<Vector2<int>>;
    EXPECT_EQ(valueRead<Points>("1 0 0 1"), points({{1, 0}, {0, 1}}));
    EXPECT_EQ(valueRead<Points>(" -1 2 \n"), points({{-1, 2}}));
    EXPECT_EQ(valueRead<Points>(""), points({}));
    EXPECT_EQ(valueRead<Points>(" "), points({}));
}

TEST(PropertyOfPoints, refusesHalfPoints)
{
    using Points = Vector<Vector2<int>>;
    for (char const* text : {"1", "1 2 3", "1 x", "1:0,0:1"}) {
        EXPECT_EQ(valueRead<Points>(text), std::nullopt) << text;
    }
}

template <class M>
class PropertyOfMatrices : public ::testing::Test {
};

using Matrices = ::testing::Types<Matrix2<float>, Matrix2<double>, Matrix3<float>, Matrix3<double>>;
TYPED_TEST_SUITE(PropertyOfMatrices, Matrices);

TYPED_TEST(PropertyOfMatrices, keepsWhatIsSetAndHasNoText)
{
    TypeParam matrix;
    matrix(1, 0) = 3;
    Property<TypeParam> property;
    property = matrix;
    for (char const* text : {"", "0", "1 2 3 4 5 6 7 8 9"}) {
        String echo;
        EXPECT_FALSE(property.read(text, echo)) << text;
        EXPECT_STREQ(echo.c_str(), text);
        EXPECT_TRUE(property.get() == matrix) << text;
    }
    property.lock(true);
    property = TypeParam();
    EXPECT_TRUE(property.get() == matrix);
}

} // namespace

} // namespace mox::testing
