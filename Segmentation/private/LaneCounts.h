#pragma once

#include <Moxelcore/Core/Integers.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "Segmentation/private/windowPasses.h"

namespace mox::segmentation {

/// Counts of the ends, differences and sums of the pairs in a window, for up to 16 levels: few enough to be counted
/// side by side in vector registers, and to be looked up all anew at each place. Twice as fast as tables of counts,
/// where neighbouring pairs wait for each other.
class LaneCounts {
public:
    static constexpr std::size_t mostLevels = 16;
    /// A lane of a byte takes the change of a step.
    static constexpr std::size_t mostRows = 63;

    /// `cellOf` numbers the pairs of levels, in either order, below `numOfCells`.
    template <class CellOf>
    LaneCounts(std::size_t numOfLevels, std::size_t numOfCells, CellOf&& cellOf)
        : rows_(numOfCells)
    {
        for (std::size_t a = 0; a < numOfLevels; ++a) {
            for (std::size_t b = 0; b <= a; ++b) {
                Row& row = rows_[cellOf(a, b)];
                ++row[ends + a];
                ++row[ends + b];
                ++row[differences + (a - b)];
                ++row[sums + (a + b)];
            }
        }
    }

    /// Sums of a function of the counts over all levels, differences and sums, at each place of the window. The
    /// function of 0 is 0.
    template <class Cell>
    void slide(Runs<Cell> const& runs, std::size_t count, int64 const* function, int64* ofEnds, int64* ofDifferences,
               int64* ofSums) const
    {
        std::array<std::int16_t, numOfLanes> counts = {};
        for (Run<Cell> const& run : runs) {
            for (Cell const* cell = run.first; cell <= run.last; ++cell) {
                for (std::size_t i = 0; i < numOfLanes; ++i) {
                    counts[i] = static_cast<std::int16_t>(counts[i] + rows_[*cell][i]);
                }
            }
        }
        for (std::size_t x = 0;;) {
            ofEnds[x] = sumOver<mostLevels>(function, counts.data() + ends);
            ofDifferences[x] = sumOver<mostLevels>(function, counts.data() + differences);
            ofSums[x] = sumOver<2 * mostLevels>(function, counts.data() + sums);
            if (++x == count) {
                return;
            }
            step(runs, x, counts);
        }
    }

private:
    static constexpr std::size_t ends = 0;
    static constexpr std::size_t differences = mostLevels;
    static constexpr std::size_t sums = 2 * mostLevels;
    static constexpr std::size_t numOfLanes = 4 * mostLevels;

    using Row = std::array<std::int8_t, numOfLanes>;
    using Lanes __attribute__((vector_size(16))) = std::int8_t;

    static Lanes load(Row const& row, std::size_t first)
    {
        Lanes lanes;
        std::memcpy(&lanes, row.data() + first, sizeof(lanes));
        return lanes;
    }

    template <class Cell>
    void step(Runs<Cell> const& runs, std::size_t x, std::array<std::int16_t, numOfLanes>& counts) const
    {
        Lanes change[4] = {};
        for (Run<Cell> const& run : runs) {
            Row const& in = rows_[run.last[x]];
            Row const& out = rows_[run.first[x - 1]];
            change[0] += load(in, 0) - load(out, 0);
            change[1] += load(in, 16) - load(out, 16);
            change[2] += load(in, 32) - load(out, 32);
            change[3] += load(in, 48) - load(out, 48);
        }
        Row changes;
        std::memcpy(changes.data(), change, sizeof(change));
        for (std::size_t i = 0; i < numOfLanes; ++i) {
            counts[i] = static_cast<std::int16_t>(counts[i] + changes[i]);
        }
    }

    /// Four counts are loaded at once: it is loads that bound the look-ups.
    template <std::size_t numOfCounts>
    static int64 sumOver(int64 const* function, std::int16_t const* counts)
    {
        int64 sum = 0;
        for (std::size_t i = 0; i < numOfCounts; i += 4) {
            uint64 four;
            std::memcpy(&four, counts + i, sizeof(four));
            sum += function[four & 0xffffU] + function[(four >> 16U) & 0xffffU] + function[(four >> 32U) & 0xffffU] +
                   function[four >> 48U];
        }
        return sum;
    }

    std::vector<Row> rows_;
};

} // namespace mox::segmentation
