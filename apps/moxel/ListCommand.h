#pragma once

#include <iosfwd>

#include "apps/moxel/OutputForm.h"

namespace moxel {

/// The algorithms of the library by module and name.
void printAlgorithms(OutputForm form, std::ostream& out);

} // namespace moxel
