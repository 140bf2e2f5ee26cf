#include "Core/private/access/FixedBorderCondition.h"

#include "Core/private/VoxelTypeDispatch.h"
#include "Core/private/access/readInside.h"

namespace mox::access {

namespace {

constexpr char const* source = "Core/private/access/FixedBorderCondition.impl";

} // namespace

template <class T>
void FixedBorderCondition<T>::readRow(ImageModel const& image, T* begin, T* end, int x, int y, int z, int t,
                                      int s) const
{
    Sizes const sizes = Sizes::of(image);
    if (!isSpectralIndex(s, sizes)) {
        helper::raise<UnexpectedError>({source, 46},
                                       "Fixed border condition is not compatible with spectral series extrapolation");
    }
    InsidePart const part(x, end - begin, sizes.columns);
    if (part.count == 0 || !isInside(t, sizes.timeSeries) || !isInside(z, sizes.plans) || !isInside(y, sizes.rows)) {
        std::fill(begin, end, value_);
        return;
    }
    T* const inside = begin + part.left;
    std::fill(begin, inside, value_);
    readInside(image, inside, part.count, x + part.left, y, z, t, s, {source, 88});
    std::fill(inside + part.count, end, value_);
}

#define MOX_INSTANTIATE(T) template class FixedBorderCondition<T>;
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::access
