#pragma once

#include <Moxelcore/Core/Integers.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

// A window slides along a row. Each of its rows is a run of the columns, so that a step takes one value out on the left
// of each run and one in on the right.

namespace mox::segmentation {

/// The run of one row of the window at its first place.
template <class T>
struct Run {
    T const* first;
    T const* last;
};

template <class T>
using Runs = std::vector<Run<T>>;

/// Sums of words over the window at `count` places. Borrows between packed sums cancel, as arithmetic is modulo 2^64.
inline void slideSums(Runs<uint64> const& runs, std::size_t count, uint64* sums)
{
    constexpr std::size_t lanes = 8; // columns whose sums stay in registers
    std::size_t x = 1;
    for (; x + lanes <= count; x += lanes) {
        std::array<uint64, lanes> change = {};
        for (Run<uint64> const& run : runs) {
            uint64 const* const in = run.last + x;
            uint64 const* const out = run.first + x - 1;
            for (std::size_t i = 0; i < lanes; ++i) {
                change[i] += in[i] - out[i];
            }
        }
        std::copy(change.begin(), change.end(), sums + x);
    }
    for (; x < count; ++x) {
        sums[x] = 0;
        for (Run<uint64> const& run : runs) {
            sums[x] += run.last[x] - run.first[x - 1];
        }
    }
    sums[0] = 0;
    for (Run<uint64> const& run : runs) {
        for (uint64 const* p = run.first; p <= run.last; ++p) {
            sums[0] += *p;
        }
    }
    for (x = 1; x < count; ++x) {
        sums[x] += sums[x - 1];
    }
}

/// What a pass over a table of counts keeps up to date.
struct TableSums {
    int64 const* steps = nullptr;    ///< F(n + 1) - F(n)
    int64* functions = nullptr;      ///< out: the sum of F(count) over all cells
    uint64* pairs = nullptr;         ///< out: the sum of n (n - 1) / 2, that of a heavy cell twice
    std::size_t numOfHeavyCells = 0; ///< they stand first
};

/// Counts of cells over the window at `count` places. The table is all zero before and after.
template <bool wantFunctions, bool wantPairs, class Cell>
void slideTable(Runs<Cell> const& runs, std::size_t count, std::uint32_t* table, TableSums const& sums)
{
    int64 functions = 0;
    uint64 pairs = 0;
    auto const enter = [&](Cell cell) {
        std::uint32_t const n = table[cell]++;
        if (wantFunctions) {
            functions += sums.steps[n];
        }
        if (wantPairs) {
            pairs += uint64{n} << (cell < sums.numOfHeavyCells ? 1U : 0U);
        }
    };
    auto const leave = [&](Cell cell) {
        std::uint32_t const n = --table[cell];
        if (wantFunctions) {
            functions -= sums.steps[n];
        }
        if (wantPairs) {
            pairs -= uint64{n} << (cell < sums.numOfHeavyCells ? 1U : 0U);
        }
    };
    for (Run<Cell> const& run : runs) {
        std::for_each(run.first, run.last + 1, enter);
    }
    for (std::size_t x = 0;;) {
        if (wantFunctions) {
            sums.functions[x] = functions;
        }
        if (wantPairs) {
            sums.pairs[x] = pairs;
        }
        if (++x == count) {
            break;
        }
        for (Run<Cell> const& run : runs) {
            leave(run.first[x - 1]);
            enter(run.last[x]);
        }
    }
    for (Run<Cell> const& run : runs) {
        std::for_each(run.first + count - 1, run.last + count, leave);
    }
}

} // namespace mox::segmentation
