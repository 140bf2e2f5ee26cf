#include "Core/private/Helper/raise.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "testing/ForeignLocale.h"

namespace mox::helper {

namespace {

template <class E>
std::string infoOf(void (*failing)())
{
    try {
        failing();
    } catch (E const& exception) {
        return exception.getInfo().c_str();
    }
    return "nothing was thrown";
}

TEST(ComposeText, streamsItsParts)
{
    EXPECT_EQ(composeText("a ", 1, ' ', 2.5, " ", String("b"), std::string(" c")), "a 1 2.5 b c");
}

TEST(ComposeText, writesNumbersWithSixSignificantDigits)
{
    EXPECT_EQ(composeText(1.0 / 3, ' ', 1e6, ' ', 1234567.0, ' ', 1234567), "0.333333 1e+06 1.23457e+06 1234567");
}

TEST(ComposeText, doesNotFollowTheGlobalLocale)
{
    testing::ForeignLocale const locale;
    std::ostringstream foreign;
    foreign << 1234567 << ' ' << 0.5;
    ASSERT_EQ(foreign.str(), "1.234.567 0,5");
    EXPECT_EQ(composeText(1234567, ' ', 0.5), "1234567 0.5");
}

TEST(Raise, throwsTheClassWithMessageFileAndLine)
{
    auto const failing = [] { raise<InvalidCall>({"Core/src/Body", 12}, "value ", 3, " of ", String("some")); };
    EXPECT_EQ(infoOf<InvalidCall>(failing), "#1 Error : value 3 of some \n    (at \"Body\", line 12) \n");
}

TEST(Raise, recordsTheLineOfTheCall)
{
    auto const failing = [] { raise<RuntimeError>("Core/src/Body", "message"); };
    constexpr int line = __LINE__ - 1;
    EXPECT_EQ(infoOf<RuntimeError>(failing), composeText("#1 Error : message \n    (at \"Body\", line ", line, ") \n"));
}

TEST(Raise, writesNumbersAndLinesTheSameInEveryLocale)
{
    testing::ForeignLocale const locale;
    auto const failing = [] { raise<BadIndex>({"Core/src/Body", 1234}, "index ", 123456, " of ", 1.5); };
    EXPECT_EQ(infoOf<BadIndex>(failing), "#1 Error : index 123456 of 1.5 \n    (at \"Body\", line 1234) \n");
}

TEST(Site, takesTheLineWhereItIsMade)
{
    Site const site("Core/src/Body");
    constexpr int line = __LINE__ - 1;
    EXPECT_EQ(site.line, line);
    EXPECT_STREQ(site.file, "Core/src/Body");
}

} // namespace

} // namespace mox::helper
