#pragma once

#include <string>

#include "apps/moxel/TiffDescription.h"

namespace moxel {

/// The sizes, their order and the physical sizes of the first `Pixels` element. Pages are taken in the order that the
/// element names; a table that scatters them is not followed.
TiffDescription parseOmeDescription(std::string const& tag, TiffPages const& pages);

} // namespace moxel
