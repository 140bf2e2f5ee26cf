#pragma once

#include <cstdlib>

namespace mox::fuzz {

/// What must hold; the fuzzer keeps the input for which it does not.
inline void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace mox::fuzz
