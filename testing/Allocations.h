#pragma once

#include <cstddef>

namespace mox::testing {

/// What the test program asks `operator new` for, in all threads. The operators of the program are replaced to tell.
class Allocations {
public:
    /// The k-th allocation from now on fails, counted from 1.
    static void failAt(int k);
    /// No allocation fails any more. Returns whether the one that was told to did.
    static bool stopFailing();

    static void startCounting();
    /// Bytes asked for since then, freed ones too.
    static std::size_t numOfBytes();

    /// Allocations that have not been freed.
    static long numOfLive();
};

} // namespace mox::testing
