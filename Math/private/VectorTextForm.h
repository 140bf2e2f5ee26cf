#pragma once

#include <Moxelcore/Math/BasicVector.h>

#include <istream>

#include "Core/private/TextForm.h"

namespace mox {

template <class V>
concept MathVector = requires(V const& vector)
{
    vector.squaredLength();
};

/// Components separated by white space.
template <MathVector V>
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
