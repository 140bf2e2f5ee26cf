#pragma once

#include <optional>

#include "Morphology/private/RowProgram.h"
#include "Morphology/private/passes.h"

namespace mox::morphology {

/// The cheapest program for an element that is a list of offsets; null where it is none, or one of more than four
/// million. Where voxels may be NaN, one that keeps the order of the list.
std::optional<RowProgram> listProgram(Element const& element, bool mayHoldNan);

} // namespace mox::morphology
