#pragma once

#include <Moxelcore/Core/Exception.h>

#include "Core/private/Helper/text.h"

namespace mox::helper {

/// Where a failure is reported to come from. The file is a name of this library, folder and class, never a path of
/// the machine that built it; the line is that of the call unless a fixed one is given.
struct Site {
    Site(char const* siteFile, int siteLine = __builtin_LINE())
        : file(siteFile)
        , line(siteLine)
    {
    }

    char const* file;
    int line;
};

/// Throws an `E` of the `Exception` family; the parts are streamed into its message.
template <class E, class... Part>
[[noreturn]] void raise(Site site, Part const&... message)
{
    Exception::exceptionInfo info;
    info.message = composeText(message...).c_str();
    info.file = site.file;
    info.line = site.line;
    throw E(info);
}

} // namespace mox::helper
