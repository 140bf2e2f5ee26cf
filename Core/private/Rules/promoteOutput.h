#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <initializer_list>

#include "Core/private/Helper/raise.h"

namespace mox::rules {

/// Retypes the output of an arithmetic operator to the type that its operands promote to, its sizes kept.
/// The output may be one of the inputs only where that needs no change.
void promoteOutput(ImageModel& output, std::initializer_list<ImageModel const*> inputs, int kind, VoxelTypes first,
                   VoxelTypes second, helper::Site site);

} // namespace mox::rules
