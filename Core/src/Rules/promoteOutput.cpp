#include "Core/private/Rules/promoteOutput.h"

#include <algorithm>

#include "Core/private/Rules/retype.h"
#include "Core/private/Rules/typePromotion.h"

namespace mox::rules {

void promoteOutput(ImageModel& output, std::initializer_list<ImageModel const*> inputs, int kind, VoxelTypes first,
                   VoxelTypes second, helper::Site site)
{
    auto const promoted = promotedType(kind, first, second);
    if (!promoted) {
        helper::raise<RuleException>(site, "unsupported type of rule");
    }
    if (output.getVoxelType() == *promoted) {
        return;
    }
    if (std::find(inputs.begin(), inputs.end(), &output) != inputs.end()) {
        helper::raise<RuleException>(site, "input image cannot be used as output image if it must be retyped");
    }
    retype(output, *promoted, site);
}

} // namespace mox::rules
