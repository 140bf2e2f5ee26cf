#pragma once

#include <cstddef>

namespace mox::point_operations {

/// The voxel where the mask is not 0, and 0 elsewhere.
class MaskImageProcessingScalarGeneric {
public:
    template <class T, class Mask>
    void row(T const* in, Mask const* mask, T* out, std::size_t count) const
    {
#pragma GCC ivdep // out is the same row as an input or does not overlap it
        for (std::size_t i = 0; i < count; ++i) {
            T const voxel = in[i]; // read in any case, which lets the compiler do without a branch
            out[i] = mask[i] != 0 ? voxel : T(0);
        }
    }
};

} // namespace mox::point_operations
