#pragma once

#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Math/MathProperty.h>

#include <type_traits>

namespace mox::testing {

/// Calls the visitor with the property as that of the type of the list that it has. False when it has none of them.
template <class... T, class Visitor>
bool visitAs(BaseProperty& property, Visitor const& visitor)
{
    auto const visitType = [&]<class V>(std::type_identity<V>) {
        auto* const typed = dynamic_cast<Property<V>*>(&property);
        if (typed != nullptr) {
            visitor(*typed);
        }
        return typed != nullptr;
    };
    return (visitType(std::type_identity<T>()) || ...);
}

/// Calls the visitor with a property that holds its value itself: a number, an enumerator, a vector, a list, a text.
template <class Visitor>
bool visitValue(BaseProperty& property, Visitor const& visitor)
{
    return visitAs<bool, int, unsigned int, int64, uint64, double, math::Vector2<int>, math::Vector2<double>,
                   math::Vector3<int>, math::Vector3<double>, Vector<unsigned char>, Vector<int>, Vector<double>,
                   Vector<math::Vector2<int>>, String>(property, visitor);
}

/// Calls the visitor with a property that points to a list of landmarks.
template <class Visitor>
bool visitLandmarks(BaseProperty& property, Visitor const& visitor)
{
    return visitAs<Vector<math::Vector2<double>> const*, Vector<math::Vector3<double>> const*>(property, visitor);
}

} // namespace mox::testing
