#include <Moxelcore/Core/InMemoryImage.h>
#include <Moxelcore/Core/Property.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <optional>

#include "testing/ForeignLocale.h"

namespace mox {

namespace {

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

template <class T>
Vector<T> sequence(std::initializer_list<T> values)
{
    Vector<T> result;
    for (T const value : values) {
        result.push_back(value);
    }
    return result;
}

TEST(PropertyRead, takesABoolAsADigit)
{
    EXPECT_EQ(valueRead<bool>("0"), false);
    EXPECT_EQ(valueRead<bool>("1"), true);
    EXPECT_EQ(valueRead<bool>(" 1"), true);
    for (char const* text : {"", "2", "-1", "true", "false", "x"}) {
        EXPECT_EQ(valueRead<bool>(text), std::nullopt) << text;
    }
}

TEST(PropertyRead, takesIntegers)
{
    EXPECT_EQ(valueRead<int>("42"), 42);
    EXPECT_EQ(valueRead<int>("-42"), -42);
    EXPECT_EQ(valueRead<int>("+7"), 7);
    EXPECT_EQ(valueRead<int>(" \t\n 7"), 7);
    EXPECT_EQ(valueRead<int>("010"), 10);
    EXPECT_EQ(valueRead<int>("2147483647"), std::numeric_limits<int>::max());
    EXPECT_EQ(valueRead<int>("-2147483648"), std::numeric_limits<int>::min());
    EXPECT_EQ(valueRead<unsigned int>("4294967295"), std::numeric_limits<unsigned int>::max());
    EXPECT_EQ(valueRead<int64>("-9223372036854775808"), std::numeric_limits<int64>::min());
    EXPECT_EQ(valueRead<uint64>("18446744073709551615"), std::numeric_limits<uint64>::max());
}

TEST(PropertyRead, ignoresWhatFollowsANumber)
{
    EXPECT_EQ(valueRead<int>("12abc"), 12);
    EXPECT_EQ(valueRead<int>("12.9"), 12);
    EXPECT_EQ(valueRead<int>("12 13"), 12);
    EXPECT_EQ(valueRead<unsigned int>("0x10"), 0U);
    EXPECT_EQ(valueRead<double>("1.5mm"), 1.5);
}

TEST(PropertyRead, wrapsNegativeNumbersIntoUnsignedOnes)
{
    EXPECT_EQ(valueRead<unsigned int>("-1"), std::numeric_limits<unsigned int>::max());
    EXPECT_EQ(valueRead<uint64>("-1"), std::numeric_limits<uint64>::max());
}

TEST(PropertyRead, refusesWhatIsNoNumber)
{
    for (char const* text : {"", " ", "abc", "-", "+", "."}) {
        EXPECT_EQ(valueRead<int>(text), std::nullopt) << text;
        EXPECT_EQ(valueRead<unsigned int>(text), std::nullopt) << text;
        EXPECT_EQ(valueRead<int64>(text), std::nullopt) << text;
        EXPECT_EQ(valueRead<uint64>(text), std::nullopt) << text;
        EXPECT_EQ(valueRead<double>(text), std::nullopt) << text;
    }
}

TEST(PropertyRead, refusesNumbersOutOfRange)
{
    EXPECT_EQ(valueRead<int>("2147483648"), std::nullopt);
    EXPECT_EQ(valueRead<unsigned int>("4294967296"), std::nullopt);
    EXPECT_EQ(valueRead<int64>("9223372036854775808"), std::nullopt);
    EXPECT_EQ(valueRead<uint64>("18446744073709551616"), std::nullopt);
    EXPECT_EQ(valueRead<double>("1e999"), std::nullopt);
}

TEST(PropertyRead, takesDoubles)
{
    EXPECT_EQ(valueRead<double>("0.1"), 0.1);
    EXPECT_EQ(valueRead<double>("-2.5e-3"), -2.5e-3);
    EXPECT_EQ(valueRead<double>(".5"), 0.5);
    EXPECT_EQ(valueRead<double>("110"), 110.0);
}

TEST(PropertyRead, readsNumbersTheSameInEveryLocale)
{
    testing::ForeignLocale const locale;
    EXPECT_EQ(valueRead<double>("0.5"), 0.5);
    EXPECT_EQ(valueRead<int>("1.234"), 1);
    EXPECT_EQ(valueRead<Vector<double>>("0.5 1.5"), sequence({0.5, 1.5}));
}

TEST(PropertyRead, takesTheWholeTextAsAString)
{
    for (char const* text : {"", " ", "two words", " \n leading and trailing \t", "12"}) {
        EXPECT_EQ(valueRead<String>(text), String(text)) << text;
    }
}

template <class T>
class PropertyReadOfSequences : public ::testing::Test {
};

using Numbers = ::testing::Types<unsigned char, int, unsigned int, int64, uint64, double>;
TYPED_TEST_SUITE(PropertyReadOfSequences, Numbers);

TYPED_TEST(PropertyReadOfSequences, takesNumbersSeparatedByWhiteSpace)
{
    using Sequence = Vector<TypeParam>;
    auto const expected = sequence<TypeParam>({0, 10, 255});
    EXPECT_EQ(valueRead<Sequence>("0 10 255"), expected);
    EXPECT_EQ(valueRead<Sequence>("  0\t10\n255 \n"), expected);
    EXPECT_EQ(valueRead<Sequence>("65"), sequence<TypeParam>({65}));
}

TYPED_TEST(PropertyReadOfSequences, takesTheEmptyTextAsTheEmptySequence)
{
    Property<Vector<TypeParam>> property;
    for (char const* text : {"", " ", "\t\n"}) {
        property.set(Vector<TypeParam>(2));
        String echo;
        EXPECT_TRUE(property.read(text, echo)) << text;
        EXPECT_TRUE(property.get().empty()) << text;
    }
}

TYPED_TEST(PropertyReadOfSequences, refusesATextWithAnythingElse)
{
    for (char const* text : {"a", "1 a", "1,2", "1 2 x 3", "1;"}) {
        EXPECT_EQ(valueRead<Vector<TypeParam>>(text), std::nullopt) << text;
    }
}

TEST(PropertyRead, takesBytesAsNumbersInTheirRange)
{
    using Bytes = Vector<unsigned char>;
    EXPECT_EQ(valueRead<Bytes>("7 65"), sequence<unsigned char>({7, 65}));
    EXPECT_EQ(valueRead<Bytes>("A"), std::nullopt);
    EXPECT_EQ(valueRead<Bytes>("256"), std::nullopt);
    EXPECT_EQ(valueRead<Bytes>("-1"), std::nullopt);
}

TEST(PropertyRead, keepsASequenceThatItCannotReplace)
{
    Property<Vector<int>> property;
    property.set(sequence({1, 2}));
    String echo;
    EXPECT_FALSE(property.read("3 x", echo));
    EXPECT_EQ(property.get(), sequence({1, 2}));
}

template <class T>
class PropertyReadOfImages : public ::testing::Test {
};

using Images = ::testing::Types<ImageModel*, ImageModel const*>;
TYPED_TEST_SUITE(PropertyReadOfImages, Images);

TYPED_TEST(PropertyReadOfImages, refusesEveryTextAndKeepsTheImage)
{
    memory::InMemoryImage image;
    Property<TypeParam> property;
    property.set(&image);
    for (char const* text : {"", "0", "1", "0x1000", "coins.png"}) {
        String echo;
        EXPECT_FALSE(property.read(text, echo)) << text;
        EXPECT_STREQ(echo.c_str(), text);
        EXPECT_EQ(property.get(), &image) << text;
    }
}

TEST(PropertyRead, mayEchoIntoTheTextItself)
{
    Property<String> property;
    String text = "both";
    EXPECT_TRUE(property.read(text, text));
    EXPECT_STREQ(text.c_str(), "both");
    EXPECT_STREQ(property.get().c_str(), "both");
}

} // namespace

} // namespace mox
