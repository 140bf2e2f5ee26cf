#pragma once

#include <Moxelcore/Core/EnumInfo.h>

#include <string>
#include <vector>

namespace moxel {

/// In order of declaration.
std::vector<std::string> enumeratorNames(EnumInfo const& info);

/// The value that a name or a number stands for; throws `UsageError` with the nearest names.
int parseEnumerator(EnumInfo const& info, std::string const& text);

/// The name; the number of a value that has none.
std::string enumeratorText(EnumInfo const& info, int value);

} // namespace moxel
