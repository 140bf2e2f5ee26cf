#pragma once

#include <Moxelcore/Core/String.h>

#include <string>
#include <string_view>

namespace mox::testing {

/// The text of an exception with "N" for the numbers of source lines, which change with every edit.
inline std::string lineless(String const& text)
{
    constexpr std::string_view marker = ", line ";
    std::string result = text.c_str();
    for (auto at = result.find(marker); at != std::string::npos; at = result.find(marker, at + marker.size())) {
        auto const number = at + marker.size();
        auto const end = result.find_first_not_of("0123456789", number);
        if (end > number && result[number] != '0') {
            result.replace(number, end - number, 1, 'N');
        }
    }
    return result;
}

} // namespace mox::testing
