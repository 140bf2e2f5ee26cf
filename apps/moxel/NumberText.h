#pragma once

#include <charconv>
#include <string>
#include <system_error>
#include <type_traits>

#include "apps/moxel/Errors.h"

namespace moxel {

template <class T>
constexpr char const* numberName()
{
    if constexpr (std::is_same_v<T, bool>) {
        return "bool";
    } else if constexpr (std::is_floating_point_v<T>) {
        return sizeof(T) == 4 ? "float" : "double";
    } else {
        constexpr char const* names[] = {"uint8", "int8", "uint16", "int16", "uint32", "int32", "uint64", "int64"};
        constexpr int log2size = sizeof(T) == 1 ? 0 : sizeof(T) == 2 ? 1 : sizeof(T) == 4 ? 2 : 3;
        return names[2 * log2size + (std::is_signed_v<T> ? 1 : 0)];
    }
}

/// The shortest text that reads back as the number.
template <class T>
std::string numberText(T number)
{
    if constexpr (std::is_same_v<T, bool>) {
        return number ? "true" : "false";
    } else {
        char buffer[32];
        auto const result = std::to_chars(buffer, buffer + sizeof buffer, number);
        return {buffer, result.ptr};
    }
}

/// The number that the whole text is; throws `UsageError`.
template <class T>
T parseNumber(std::string const& text)
{
    if constexpr (std::is_same_v<T, bool>) {
        if (text != "true" && text != "1" && text != "false" && text != "0") {
            throw UsageError(quoted(text) + " is neither true nor false");
        }
        return text == "true" || text == "1";
    } else {
        T number = 0;
        char const* const end = text.data() + text.size();
        auto const [stop, error] = std::from_chars(text.data(), end, number);
        if (error == std::errc::result_out_of_range) {
            throw UsageError(quoted(text) + " is beyond the range of " + numberName<T>());
        }
        if (error != std::errc() || stop != end) {
            throw UsageError(quoted(text) + " is no number of type " + numberName<T>());
        }
        return number;
    }
}

} // namespace moxel
