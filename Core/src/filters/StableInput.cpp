#include "Core/private/filters/StableInput.h"

#include "Core/private/Helper/raise.h"
#include "Core/private/access/Sizes.h"
#include "Core/private/access/rowExtent.h"

namespace mox::filters {

namespace {

void copyVoxels(ImageModel const& from, memory::InMemoryImage& to)
{
    access::Sizes const sizes = access::Sizes::of(from);
    access::allocate(to, from.getVoxelType(), sizes);
    if (sizes.empty()) {
        return;
    }
    for (unsigned int s = 0; s < sizes.spectralSeries; ++s) {
        for (unsigned int t = 0; t < sizes.timeSeries; ++t) {
            for (unsigned int z = 0; z < sizes.plans; ++z) {
                for (unsigned int y = 0; y < sizes.rows; ++y) {
                    void* row = nullptr;
                    to.getRowPointerAt(sizes.columns, row, 0, y, z, t, s);
                    if (!from.readRowAt(sizes.columns, row, 0, y, z, t, s)) {
                        helper::raise<UnexpectedError>("Core/private/filters/StableInput", access::readFailure);
                    }
                }
            }
        }
    }
}

} // namespace

StableInput::StableInput(ImageModel const& input, ImageModel const& output)
    : image_(&input == &output ? copy_ : input)
{
    if (&input == &output) {
        copyVoxels(input, copy_);
    }
}

} // namespace mox::filters
