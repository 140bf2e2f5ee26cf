#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/String.h>

namespace mox {

/// The five dimensions of an image, fastest first.
enum MOXELCORE_API ImageDimension : int { COLUMNS = 0, ROWS, PLANS, TIME_SERIES, SPECTRAL_SERIES };

namespace helper {

/// "columns", "time series", ...; empty for a value that is no dimension.
MOXELCORE_API String getText(ImageDimension const& dimension);

} // namespace helper
} // namespace mox
