#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include "Core/private/Helper/raise.h"

namespace mox::rules {

/// Gives an image an interpretation, or fails.
inline void reinterpret(ImageModel& image, ImageInterpretation wanted, helper::Site site)
{
    ImageInterpretation const old = image.getInterpretation();
    if (old == wanted) {
        return;
    }
    image.setInterpretation(wanted);
    if (image.getInterpretation() != wanted) {
        helper::raise<RuleException>(site, "Image cannot be re-interpreted from ", helper::getText(old), " to ",
                                     helper::getText(wanted));
    }
}

} // namespace mox::rules
