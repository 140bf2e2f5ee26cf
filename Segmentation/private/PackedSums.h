#pragma once

#include <Moxelcore/Core/Integers.h>

#include <bit>
#include <cstddef>
#include <vector>

namespace mox::segmentation {

/// Where a sum stands among others in 64-bit words. Sums of small numbers over a window share a word, so that one
/// addition moves them all.
struct PackedSum {
    std::size_t word = 0;
    unsigned int shift = 0;
    uint64 mask = 0; ///< 0 for a sum that is always 0

    uint64 of(uint64 word64) const { return (word64 >> shift) & mask; }
};

class PackedSums {
public:
    /// A sum that never exceeds the largest.
    PackedSum add(uint64 largest)
    {
        auto const bits = static_cast<unsigned int>(std::bit_width(largest));
        if (bits == 0) {
            return {};
        }
        if (numOfWords_ == 0 || used_ + bits > 64) {
            ++numOfWords_;
            used_ = 0;
        }
        PackedSum const sum{numOfWords_ - 1, used_, bits == 64 ? ~uint64{0} : (uint64{1} << bits) - 1};
        used_ += bits;
        return sum;
    }

    std::size_t numOfWords() const { return numOfWords_; }

private:
    std::size_t numOfWords_ = 0;
    unsigned int used_ = 0;
};

} // namespace mox::segmentation
