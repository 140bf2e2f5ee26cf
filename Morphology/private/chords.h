#pragma once

#include "Morphology/private/RowProgram.h"

namespace mox::morphology {

/// The program for a list of offsets. The list is cut, in its order, into chords: runs of a constant step from one
/// offset to the next. Stages of runs of 2, 4, 8, ... voxels along that step are made by doubling, and a chord is one
/// or two of them that overlap (van Droogenbroeck and Talbot, 1996; Urbach and Wilkinson, 2008). The step is the one
/// that leads to the fewest reads.
///
/// Exact for voxels that may be NaN too: the order of the list is kept, and a run passes over NaN, so that a NaN stays
/// only where it is the list's first voxel, which the result then reads by itself.
RowProgram chordProgram(std::span<kernel::Offset3D const> list, bool mayHoldNan);

} // namespace mox::morphology
