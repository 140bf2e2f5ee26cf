#pragma once

#include <Moxelcore/Core/Enum/BinaryLogicalOperatorType.h>

#include <array>
#include <cstddef>
#include <type_traits>

namespace mox::testing {

/// From truth tables, bit by bit. A table holds the results for a, b = 0, 0; 0, 1; 1, 0; 1, 1.
template <class T>
T logicalReference(T a, int logicalOperator, T b)
{
    using U = std::make_unsigned_t<T>;
    constexpr std::array<std::array<bool, 4>, 7> tables = {{{false, false, false, true},
                                                            {false, true, true, true},
                                                            {false, true, true, false},
                                                            {true, true, true, false},
                                                            {true, false, false, false},
                                                            {true, false, false, true},
                                                            {false, false, true, false}}};
    U result = 0;
    for (std::size_t bit = 0; bit < 8 * sizeof(T); ++bit) {
        auto const isSet = [&](T voxel) { return static_cast<U>(static_cast<U>(voxel) >> bit) % 2; };
        auto const place = static_cast<std::size_t>(2 * isSet(a) + isSet(b));
        if (tables[static_cast<std::size_t>(logicalOperator)][place]) {
            result = static_cast<U>(result + static_cast<U>(U(1) << bit));
        }
    }
    return static_cast<T>(result);
}

} // namespace mox::testing
