#include "Core/private/access/MirrorBorderCondition.h"

#include <vector>

#include "Core/private/access/readInside.h"
#include "Core/private/forEachRealVoxel.h"

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
void MirrorBorderCondition<T>::readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end, Position p) const
{
    if (!isSpectralIndex(p.s, sizes)) {
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
    p.y = static_cast<int>(reflected(p.y, sizes.rows));
    p.z = static_cast<int>(reflected(p.z, sizes.plans));
    p.t = static_cast<int>(reflected(p.t, sizes.timeSeries));
    InsidePart const part(p.x, length, sizes.columns);
    if (part.count == length) {
        readInside(image, begin, length, p.x, p, source);
        return;
    }
    // One read serves the row: the stretch of the image that holds all the columns that it reflects.
    int64 first = sizes.columns;
    int64 last = -1;
    for (int64 i = 0; i < length; ++i) {
        int64 const column = reflected(p.x + i, sizes.columns);
        first = std::min(first, column);
        last = std::max(last, column);
    }
    std::vector<T> stretch(static_cast<std::size_t>(last - first + 1));
    readInside(image, stretch.data(), last - first + 1, first, p, source);
    for (int64 i = 0; i < length; ++i) {
        begin[i] = stretch[static_cast<std::size_t>(reflected(p.x + i, sizes.columns) - first)];
    }
}

#define MOX_INSTANTIATE(T) template class MirrorBorderCondition<T>;
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::access
