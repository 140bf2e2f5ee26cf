#pragma once

#include <optional>
#include <string>

#include "apps/moxel/TiffDescription.h"

namespace moxel {

/// The axes of a JSON description such as `{"shape": [5, 3, 64, 64]}`, slowest first, the page itself last. Without
/// `"axes": "TZYX"` the last axis before the page is plans, the one before time, the one before that channels.
/// Nothing when the tag is none or its shape is not that of the pages.
std::optional<TiffDescription> parseShapeDescription(std::string const& tag, TiffPages const& pages);

} // namespace moxel
