#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <iosfwd>

#include "apps/moxel/OutputForm.h"

namespace moxel {

/// The properties, levels and border influence of an algorithm.
void printDescription(mox::BaseAlgorithm const& algorithm, OutputForm form, std::ostream& out);

} // namespace moxel
