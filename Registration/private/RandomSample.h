#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace mox::registration {

/// Draws sets of distinct indices, in ascending order. The same sequence on every platform: the generator is the
/// standard's, and the mapping from its output to an index is not left to a library. A 32-bit draw at or above the
/// largest multiple of N is rejected, any other is taken modulo N.
class RandomSample {
public:
    /// Indices below `numOfIndices`, which is at least `size`.
    RandomSample(std::size_t size, std::size_t numOfIndices)
        : size_(size)
        , numOfIndices_(numOfIndices)
        , limit_((std::uint64_t{1} << 32U) / numOfIndices * numOfIndices)
    {
    }

    std::vector<std::size_t> const& draw()
    {
        indices_.clear();
        while (indices_.size() < size_) {
            std::size_t const index = drawIndex();
            auto const place = std::lower_bound(indices_.begin(), indices_.end(), index);
            if (place == indices_.end() || *place != index) {
                indices_.insert(place, index);
            }
        }
        return indices_;
    }

private:
    std::size_t drawIndex()
    {
        std::uint64_t bits = generator_();
        while (bits >= limit_) {
            bits = generator_();
        }
        return bits % numOfIndices_;
    }

    std::size_t size_;
    std::uint64_t numOfIndices_;
    std::uint64_t limit_;
    std::mt19937 generator_; // its default seed is 5489
    std::vector<std::size_t> indices_;
};

} // namespace mox::registration
