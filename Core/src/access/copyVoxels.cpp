#include "Core/private/access/copyVoxels.h"

#include <cstddef>
#include <vector>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/Sizes.h"
#include "Core/private/access/rowExtent.h"

namespace mox::access {

void copyVoxels(ImageModel const& from, ImageModel& to, std::function<bool()> const& isStopped)
{
    constexpr char const* source = "Core/private/access/copyVoxels";
    Sizes const sizes = Sizes::of(from);
    if (sizes.empty()) {
        return;
    }
    std::vector<unsigned char> buffer(std::size_t{sizes.columns} * helper::getSizeOf(from.getVoxelType()));
    for (unsigned int s = 0; s < sizes.spectralSeries; ++s) {
        for (unsigned int t = 0; t < sizes.timeSeries; ++t) {
            for (unsigned int z = 0; z < sizes.plans; ++z) {
                for (unsigned int y = 0; y < sizes.rows; ++y) {
                    if (isStopped()) {
                        return;
                    }
                    void const* row = nullptr;
                    if (!from.getConstRowPointerAt(sizes.columns, row, 0, y, z, t, s)) {
                        row = buffer.data();
                        if (!from.readRowAt(sizes.columns, buffer.data(), 0, y, z, t, s)) {
                            helper::raise<UnexpectedError>(source, readFailure);
                        }
                    }
                    if (!to.writeRowAt(sizes.columns, row, 0, y, z, t, s)) {
                        helper::raise<UnexpectedError>(source, writeFailure);
                    }
                }
            }
        }
    }
}

} // namespace mox::access
