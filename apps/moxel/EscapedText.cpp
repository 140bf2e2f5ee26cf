#include "apps/moxel/EscapedText.h"

#include <charconv>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <system_error>

namespace moxel {

namespace {

struct Character {
    unsigned int code = 0;
    /// 0 when the bytes are none of UTF-8's characters of two or three bytes.
    std::size_t length = 0;
};

Character characterAt(std::string_view text)
{
    auto const bits = [&](std::size_t i) { return static_cast<unsigned char>(text[i]) & 0x3FU; };
    auto const isNext = [&](std::size_t i) {
        return i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    };
    auto const lead = static_cast<unsigned char>(text[0]);
    if (lead >= 0xC2 && lead <= 0xDF && isNext(1)) {
        return {(lead & 0x1FU) << 6U | bits(1), 2};
    }
    unsigned int const code = (lead & 0x0FU) << 12U | (isNext(1) && isNext(2) ? bits(1) << 6U | bits(2) : 0);
    return lead >= 0xE0 && lead <= 0xEF && isNext(1) && isNext(2) && code >= 0x800 ? Character{code, 3} : Character{};
}

std::string utf8(unsigned int code)
{
    auto const byte = [](unsigned int value) { return static_cast<char>(value); };
    auto const next = [&](unsigned int value) { return byte(0x80U | (value & 0x3FU)); };
    if (code < 0x80) {
        return {byte(code)};
    }
    if (code < 0x800) {
        return {byte(0xC0U | code >> 6U), next(code)};
    }
    return {byte(0xE0U | code >> 12U), next(code >> 6U), next(code)};
}

std::string unicodeEscape(unsigned int code)
{
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "\\u%04X", code);
    return buffer;
}

/// The character behind a backslash and the length of the whole; length 0 for what is no escape.
std::pair<std::string, std::size_t> escapedAt(std::string_view text)
{
    constexpr std::size_t unicodeLength = 6;
    char const kind = text.size() > 1 ? text[1] : '\0';
    switch (kind) {
    case '\\':
        return {"\\", 2};
    case 'n':
        return {"\n", 2};
    case 'r':
        return {"\r", 2};
    case 'u':
        break;
    default:
        return {};
    }
    unsigned int code = 0;
    std::string_view const digits = text.substr(2, 4);
    auto const [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
    bool const isWhole = digits.size() == 4 && error == std::errc() && stop == digits.data() + 4 && code != 0;
    return isWhole ? std::pair(utf8(code), unicodeLength) : std::pair<std::string, std::size_t>();
}

} // namespace

std::string escape(std::string const& text)
{
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        Character const character = characterAt(rest);
        char const first = rest[0];
        if (character.length > 0) {
            result += unicodeEscape(character.code);
            rest.remove_prefix(character.length);
            continue;
        }
        result += first == '\\' ? "\\\\" : first == '\n' ? "\\n" : first == '\r' ? "\\r" : std::string(1, first);
        rest.remove_prefix(1);
    }
    return result;
}

std::string unescape(std::string const& text)
{
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        auto const [character, length] = rest[0] == '\\' ? escapedAt(rest) : std::pair<std::string, std::size_t>();
        result += length > 0 ? character : std::string(1, rest[0]);
        rest.remove_prefix(length > 0 ? length : 1);
    }
    return result;
}

} // namespace moxel
