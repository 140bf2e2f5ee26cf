#pragma once

#include <type_traits>

#include "testing/everyClass/Place.h"

namespace mox::testing {

template <class T>
void appendValue(Bytes& bytes, T const& value)
{
    static_assert(std::is_trivially_copyable_v<T>);
    auto const* const first = reinterpret_cast<std::byte const*>(&value);
    bytes.insert(bytes.end(), first, first + sizeof(T));
}

} // namespace mox::testing
