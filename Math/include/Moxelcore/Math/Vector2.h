#pragma once

#include <Moxelcore/Math/BasicVector.h>

namespace mox::math {

/// A point or direction of 2 components.
template <class T>
class MOXELCORE_API Vector2 : public BasicVector<Vector2<T>, T, 2> {
public:
    using BasicVector<Vector2, T, 2>::setValue;

    Vector2() = default;
    Vector2(T x, T y) { setValue(x, y); }

    Vector2& setValue(T x, T y)
    {
        T const components[] = {x, y};
        return setValue(components);
    }
};

} // namespace mox::math
