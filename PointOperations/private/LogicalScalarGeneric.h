#pragma once

#include <cstddef>

namespace mox::point_operations {

/// A logical operator on the bits of two voxels.
template <class T, class Operator>
class LogicalImageProcessingScalarGeneric {
public:
    void row(T const* a, T const* b, T* out, std::size_t count) const
    {
#pragma GCC ivdep // out is the same row as an input or does not overlap it
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = Operator::apply(a[i], b[i]);
        }
    }
};

/// A logical operator on the bits of a voxel and of a value. Each bit of the result depends on one bit of the voxel,
/// so that any operator with a fixed value keeps some bits and flips some, which are found once.
template <class T>
class LogicalValueProcessingScalarGeneric {
public:
    template <class Operator>
    LogicalValueProcessingScalarGeneric(Operator, T value)
        : flipped_(Operator::apply(T(0), value))
        , kept_(static_cast<T>(Operator::apply(static_cast<T>(-1), value) ^ flipped_))
    {
    }

    void row(T const* in, T* out, std::size_t count) const
    {
        T const kept = kept_; // copies that writing to `out` cannot change
        T const flipped = flipped_;
#pragma GCC ivdep // in and out are the same row or do not overlap
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<T>((in[i] & kept) ^ flipped);
        }
    }

private:
    T flipped_;
    T kept_;
};

} // namespace mox::point_operations
