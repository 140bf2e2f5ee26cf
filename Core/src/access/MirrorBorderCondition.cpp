#include "Core/private/access/MirrorBorderCondition.h"

#include <vector>

#include "Core/private/VoxelTypeDispatch.h"
#include "Core/private/access/readInside.h"

namespace mox::access {

namespace {

constexpr char const* source = "Core/private/access/MirrorBorderCondition.impl";

int64 reflected(int64 coordinate, unsigned int size)
{
    int64 const m = size;
    int64 const folded = (coordinate < 0 ? -1 - coordinate : coordinate) % (2 * m);
    return folded < m ? folded : 2 * m - folded - 1;
}

} // namespace

template <class T>
void MirrorBorderCondition<T>::readRow(ImageModel const& image, T* begin, T* end, int x, int y, int z, int t,
                                       int s) const
{
    Sizes const sizes = Sizes::of(image);
    if (!isSpectralIndex(s, sizes)) {
        helper::raise<UnexpectedError>({source, 61},
                                       "Mirror border condition is not compatible with spectral series extrapolation");
    }
    int64 const length = end - begin;
    if (length == 0) {
        return;
    }
    if (sizes.empty()) {
        std::fill(begin, end, T());
        return;
    }
    y = static_cast<int>(reflected(y, sizes.rows));
    z = static_cast<int>(reflected(z, sizes.plans));
    t = static_cast<int>(reflected(t, sizes.timeSeries));
    InsidePart const part(x, length, sizes.columns);
    if (part.count == length) {
        readInside(image, begin, length, x, y, z, t, s, source);
        return;
    }
    // One read serves the row: the stretch of the image that holds all the columns that it reflects.
    int64 first = sizes.columns;
    int64 last = -1;
    for (int64 i = 0; i < length; ++i) {
        int64 const column = reflected(x + i, sizes.columns);
        first = std::min(first, column);
        last = std::max(last, column);
    }
    std::vector<T> stretch(static_cast<std::size_t>(last - first + 1));
    readInside(image, stretch.data(), last - first + 1, first, y, z, t, s, source);
    for (int64 i = 0; i < length; ++i) {
        begin[i] = stretch[static_cast<std::size_t>(reflected(x + i, sizes.columns) - first)];
    }
}

#define MOX_INSTANTIATE(T) template class MirrorBorderCondition<T>;
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::access
