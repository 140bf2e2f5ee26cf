#pragma once

#include <locale>
#include <ostream>
#include <sstream>
#include <string>

#include <Moxelcore/Core/String.h>

namespace mox {

inline std::ostream& operator<<(std::ostream& out, String const& text)
{
    return out << text.c_str();
}

namespace helper {

/// Streams the parts into one text. Numbers look the same whatever locale the application has chosen.
template <class... Part>
std::string composeText(Part const&... parts)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    (out << ... << parts);
    return out.str();
}

} // namespace helper
} // namespace mox
