#include "Core/private/access/ContinueBorderCondition.h"

#include "Core/private/access/readInside.h"
#include "Core/private/forEachRealVoxel.h"

namespace mox::access {

namespace {

constexpr char const* source = "Core/private/access/ContinueBorderCondition.impl";

int nearest(int coordinate, unsigned int size)
{
    return static_cast<int>(std::clamp<int64>(coordinate, 0, int64{size} - 1));
}

} // namespace

template <class T>
void ContinueBorderCondition<T>::readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end,
                                         Position p) const
{
    if (!isSpectralIndex(p.s, sizes)) {
        helper::raise<UnexpectedError>(
            {source, 42}, "Continue border condition is not compatible with spectral series extrapolation");
    }
    if (sizes.empty()) {
        std::fill(begin, end, T());
        return;
    }
    p.t = nearest(p.t, sizes.timeSeries);
    p.z = nearest(p.z, sizes.plans);
    p.y = nearest(p.y, sizes.rows);
    InsidePart const part(p.x, end - begin, sizes.columns);
    if (part.count == 0) {
        T edge;
        readInside(image, &edge, 1, nearest(p.x, sizes.columns), p, source);
        std::fill(begin, end, edge);
        return;
    }
    T* const inside = begin + part.left;
    readInside(image, inside, part.count, p.x + part.left, p, source);
    std::fill(begin, inside, *inside);
    std::fill(inside + part.count, end, inside[part.count - 1]);
}

#define MOX_INSTANTIATE(T) template class ContinueBorderCondition<T>;
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::access
