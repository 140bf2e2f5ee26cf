#pragma once

#include <Moxelcore/Math/BasicVector.h>

#include <concepts>
#include <istream>

#include "Core/private/TextForm.h"

namespace mox {

/// Components separated by white space.
template <class V>
    requires requires(V& vector) {
        { vector.dim() } -> std::same_as<unsigned int>;
        vector.squaredLength();
    }
struct TextForm<V> {
    static constexpr bool exists = true;
    static void read(std::istream& in, V& value)
    {
        for (unsigned int i = 0; i < value.dim(); ++i) {
            in >> value[i];
        }
    }
};

} // namespace mox
