#include "Core/private/filters/StableInput.h"

#include "Core/private/access/Sizes.h"
#include "Core/private/access/copyVoxels.h"

namespace mox::filters {

StableInput::StableInput(ImageModel const& input, ImageModel const& output)
    : image_(&input == &output ? copy_ : input)
{
    if (&input == &output) {
        access::allocate(copy_, input.getVoxelType(), access::Sizes::of(input));
        access::copyVoxels(input, copy_);
    }
}

} // namespace mox::filters
