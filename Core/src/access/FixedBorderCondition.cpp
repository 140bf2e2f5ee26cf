#include "Core/private/access/FixedBorderCondition.h"

#include "Core/private/access/readInside.h"
#include "Core/private/forEachRealVoxel.h"

namespace mox::access {

namespace {

constexpr char const* source = "Core/private/access/FixedBorderCondition.impl";

} // namespace

template <class T>
void FixedBorderCondition<T>::readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end, Position p) const
{
    if (!isSpectralIndex(p.s, sizes)) {
        helper::raise<UnexpectedError>({source, 46},
                                       "Fixed border condition is not compatible with spectral series extrapolation");
    }
    InsidePart const part(p.x, end - begin, sizes.columns);
    if (part.count == 0 || !isInside(p.t, sizes.timeSeries) || !isInside(p.z, sizes.plans) ||
        !isInside(p.y, sizes.rows)) {
        std::fill(begin, end, value_);
        return;
    }
    T* const inside = begin + part.left;
    std::fill(begin, inside, value_);
    readInside(image, inside, part.count, p.x + part.left, p, {source, 88});
    std::fill(inside + part.count, end, value_);
}

#define MOX_INSTANTIATE(T) template class FixedBorderCondition<T>;
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::access
