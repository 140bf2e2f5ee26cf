#pragma once

#include <optional>

#include "Morphology/private/RowProgram.h"

namespace mox::morphology {

/// A program for a list of offsets, for voxels of which any order of comparisons gives the same. Two voxels at the step
/// that most of the list goes by are made once, then two such pairs at another step, and so on: half of a slanted line
/// looks nearly as the other half. Null for lists of many offsets, in which the steps would be sought too long.
std::optional<RowProgram> pairProgram(std::span<kernel::Offset3D const> list);

} // namespace mox::morphology
