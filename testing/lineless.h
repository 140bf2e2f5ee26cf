#pragma once

#include <Moxelcore/Core/String.h>

#include <regex>
#include <string>

namespace mox::testing {

/// The text of an exception with "N" for the numbers of source lines, which change with every edit.
inline std::string lineless(String const& text)
{
    return std::regex_replace(text.c_str(), std::regex(", line [1-9][0-9]*\\)"), ", line N)");
}

} // namespace mox::testing
