#pragma once

#include <Moxelcore/Core/Api.h>

namespace mox::math {

/// A matrix of 3 by 3 components, row first in memory and in the constructor. A default matrix is all 0.
/// Indices are not checked.
template <class T>
class MOXELCORE_API Matrix3 {
public:
    Matrix3() = default;
    Matrix3(T m00, T m01, T m02, T m10, T m11, T m12, T m20, T m21, T m22)
        : components_{m00, m01, m02, m10, m11, m12, m20, m21, m22}
    {
    }

    T& operator()(unsigned int row, unsigned int column) { return components_[row * 3 + column]; }
    T const& operator()(unsigned int row, unsigned int column) const { return components_[row * 3 + column]; }

    bool operator==(Matrix3 const&) const = default;

private:
    T components_[3 * 3] = {};
};

} // namespace mox::math
