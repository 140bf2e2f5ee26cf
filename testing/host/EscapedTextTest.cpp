#include "apps/moxel/EscapedText.h"

#include <gtest/gtest.h>

#include <random>

namespace moxel {
namespace {

TEST(EscapedText, IsOneLineOfAscii)
{
    EXPECT_EQ(escape("5 µm\nC:\\data\r"), "5 \\u00B5m\\nC:\\\\data\\r");
    EXPECT_EQ(escape("Å 日"), "\\u00C5 \\u65E5");
}

TEST(EscapedText, ComesBack)
{
    for (std::string const text : {"", "plain", "\\u00B5", "a\nb\\n", "µ日", "\U0001F600", "\xFF\xC2", "\xE2\x82"}) {
        EXPECT_EQ(unescape(escape(text)), text);
    }
}

TEST(EscapedText, ComesBackWhateverTheBytes)
{
    std::mt19937 random(1);
    std::string const letters = "\\un\n\r0BCa\xC2\xB5\xE2\x82\xAC\xF0\x9F\xED\xA0\x80";
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 8, ' ');
        for (char& c : text) {
            c = letters[random() % letters.size()];
        }
        ASSERT_EQ(unescape(escape(text)), text);
        ASSERT_EQ(escape(text).find('\n'), std::string::npos);
    }
}

TEST(EscapedText, KeepsWhatIsNoEscape)
{
    EXPECT_EQ(unescape("\\u00B"), "\\u00B");
    EXPECT_EQ(unescape("\\uXYZW \\q \\"), "\\uXYZW \\q \\");
    EXPECT_EQ(unescape("\\u0000"), "\\u0000");
}

} // namespace
} // namespace moxel
