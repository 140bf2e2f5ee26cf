#pragma once

#include <cstddef>

namespace mox::point_operations {

/// The complement of the voxel, of which a mask is kept.
template <class T>
class InvertImageScalarGeneric {
public:
    explicit InvertImageScalarGeneric(T mask)
        : mask_(mask)
    {
    }

    void row(T const* in, T* out, std::size_t count) const
    {
        T const mask = mask_; // a copy that writing to `out` cannot change
#pragma GCC ivdep             // in and out are the same row or do not overlap
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<T>(~in[i] & mask);
        }
    }

private:
    T mask_;
};

} // namespace mox::point_operations
