#pragma once

#include <Moxelcore/Math/BasicVector.h>

namespace mox::math {

/// A point or direction of 3 components.
template <class T>
class MOXELCORE_API Vector3 : public BasicVector<Vector3<T>, T, 3> {
public:
    using BasicVector<Vector3, T, 3>::setValue;

    Vector3() = default;
    Vector3(T x, T y, T z) { setValue(x, y, z); }

    Vector3& setValue(T x, T y, T z)
    {
        T const components[] = {x, y, z};
        return setValue(components);
    }
};

} // namespace mox::math
