#pragma once

#include <Moxelcore/Core/Api.h>

namespace mox::math {

/// A matrix of 2 by 2 components, row first in memory and in the constructor. A default matrix is all 0.
/// Indices are not checked.
template <class T>
class MOXELCORE_API Matrix2 {
public:
    Matrix2() = default;
    Matrix2(T m00, T m01, T m10, T m11)
        : components_{m00, m01, m10, m11}
    {
    }

    T& operator()(unsigned int row, unsigned int column) { return components_[row * 2 + column]; }
    T const& operator()(unsigned int row, unsigned int column) const { return components_[row * 2 + column]; }

    bool operator==(Matrix2 const&) const = default;

private:
    T components_[2 * 2] = {};
};

} // namespace mox::math
