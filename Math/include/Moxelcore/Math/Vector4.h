#pragma once

#include <Moxelcore/Math/BasicVector.h>

namespace mox::math {

/// A point or direction of 4 components.
template <class T>
class MOXELCORE_API Vector4 : public BasicVector<Vector4<T>, T, 4> {
public:
    using BasicVector<Vector4, T, 4>::setValue;

    Vector4() = default;
    Vector4(T x, T y, T z, T w) { setValue(x, y, z, w); }

    Vector4& setValue(T x, T y, T z, T w)
    {
        T const components[] = {x, y, z, w};
        return setValue(components);
    }
};

} // namespace mox::math
