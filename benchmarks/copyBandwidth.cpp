#include "benchmarks/copyBandwidth.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <vector>

namespace mox::benchmarks {

double copyBandwidth()
{
    constexpr std::size_t bytes = std::size_t{1} << 28U;
    constexpr int numOfRounds = 9;
    using Range = tbb::blocked_range<std::size_t>;
    std::vector<char> const from(bytes, 1);
    std::vector<char> to(bytes);
    double best = 0;
    for (int round = 0; round < numOfRounds; ++round) {
        auto const begin = std::chrono::steady_clock::now();
        tbb::parallel_for(
            Range(0, bytes),
            [&](Range const& part) { std::memcpy(to.data() + part.begin(), from.data() + part.begin(), part.size()); },
            tbb::static_partitioner());
        std::chrono::duration<double> const elapsed = std::chrono::steady_clock::now() - begin;
        best = std::max(best, 2.0 * static_cast<double>(bytes) / elapsed.count());
    }
    return best;
}

} // namespace mox::benchmarks
