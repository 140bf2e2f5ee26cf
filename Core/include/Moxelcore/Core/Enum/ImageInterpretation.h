#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/String.h>

namespace mox {

/// How voxel values are to be read.
enum MOXELCORE_API ImageInterpretation : int { INTERPRETATION_BINARY = 0, INTERPRETATION_LABEL, INTERPRETATION_VALUE };

namespace helper {

/// "binary", "label" or "value"; empty for a value that is no interpretation.
MOXELCORE_API String getText(ImageInterpretation const& interpretation);

} // namespace helper
} // namespace mox
