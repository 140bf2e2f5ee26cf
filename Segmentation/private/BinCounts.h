#pragma once

#include <Moxelcore/Core/Integers.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <vector>

#include "Segmentation/private/GreyClasses.h"

namespace mox::segmentation {

/// Counts of bins, in vector registers where they are searched. Zeros stand before the first and after the last; then
/// the count of what lies outside the range.
template <class Count>
class BinCounts {
public:
    explicit BinCounts(HistogramBins const& bins)
        : numOfBins_(static_cast<std::size_t>(bins.count))
        , end_(static_cast<std::size_t>(bins.outside))
        , counts_(lanes + end_ + 1)
    {
    }

    /// By bin, that of the outside too.
    Count* bins() { return counts_.data() + lanes; }

    Count largest() const
    {
        Vector most = {};
        Vector others = {}; // so that one comparison need not wait for the one before
        for (std::size_t i = 0; i < end_; i += 2 * lanes) {
            Vector const n = load(i);
            Vector const next = load(i + lanes);
            most = n > most ? n : most;
            others = next > others ? next : others;
        }
        most = others > most ? others : most;
        Count result = 0;
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            result = std::max(result, most[lane]);
        }
        return result;
    }

    std::size_t firstWith(Count wanted) const
    {
        std::size_t i = 0;
        while (!any(load(i) == wanted)) {
            i += lanes;
        }
        return static_cast<std::size_t>(std::find(at(i), at(i + lanes), wanted) - at(0));
    }

    /// What quantiles are compared with: half a bin's count and its left neighbour's whole count.
    Count quantileCount(std::size_t bin) const { return static_cast<Count>((at(bin)[0] >> 1) + at(bin)[-1]); }

    /// The first bin from a given one on with a larger quantile count; `numOfBins` when there is none.
    std::size_t firstAbove(Count threshold, std::size_t from) const
    {
        for (std::size_t i = from / lanes * lanes; i < end_; i += lanes) {
            Vector const c = (load(i) >> 1) + loadBefore(i);
            if (any(c > threshold)) {
                while (quantileCount(i) <= threshold) {
                    ++i;
                }
                return std::min(i, numOfBins_);
            }
        }
        return numOfBins_;
    }

private:
    using Vector __attribute__((vector_size(16))) = Count;
    static constexpr std::size_t lanes = 16 / sizeof(Count);
    static_assert(HistogramBins::padding % (2 * lanes) == 0);

    Count const* at(std::size_t bin) const { return counts_.data() + lanes + bin; }

    Vector load(std::size_t bin) const
    {
        Vector v;
        std::memcpy(&v, at(bin), sizeof(v));
        return v;
    }

    Vector loadBefore(std::size_t bin) const
    {
        Vector v;
        std::memcpy(&v, at(bin) - 1, sizeof(v));
        return v;
    }

    template <class Mask>
    static bool any(Mask const& mask)
    {
        std::array<uint64, 2> halves;
        std::memcpy(halves.data(), &mask, sizeof(halves));
        return (halves[0] | halves[1]) != 0;
    }

    std::size_t numOfBins_;
    std::size_t end_;
    std::vector<Count> counts_;
};

} // namespace mox::segmentation
