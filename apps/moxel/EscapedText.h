#pragma once

#include <string>

namespace moxel {

/// One line of text with few bytes beyond ASCII, as Java's properties have it: `\\`, `\n`, `\r`, and `\uXXXX` for
/// what UTF-8 writes in two or three bytes. Other bytes stay as they are, so that no text is changed on the way back.
std::string escape(std::string const& text);

std::string unescape(std::string const& text);

} // namespace moxel
