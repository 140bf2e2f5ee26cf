#pragma once

#include <Moxelcore/Core/Integers.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

namespace mox::point_operations {

/// The bits that enter are 0.
struct BitShiftOperator_LeftTag {
    static constexpr bool entersSign = false;

    template <class T>
    static T apply(T voxel, int count)
    {
        return static_cast<T>(static_cast<std::make_unsigned_t<T>>(voxel) << count);
    }
};

/// The bits that enter are the sign's.
struct BitShiftOperator_RightTag {
    static constexpr bool entersSign = true;

    template <class T>
    static T apply(T voxel, int count)
    {
        return static_cast<T>(voxel >> count);
    }
};

/// The voxel shifted by a count that may be beyond its width.
template <class T, class Operator>
class BitShiftScalarGeneric {
public:
    explicit BitShiftScalarGeneric(unsigned int count)
        : count_(static_cast<int>(std::min(count, width - 1)))
        , kept_(count < width || (Operator::entersSign && std::is_signed_v<T>) ? static_cast<T>(-1) : T(0))
    {
    }

    void row(T const* in, T* out, std::size_t numOfVoxels) const
    {
        int const count = count_; // copies that writing to `out` cannot change
        T const kept = kept_;
        std::size_t begin = 0;
        if constexpr (sizeof(T) < sizeof(int) && !(Operator::entersSign && std::is_signed_v<T>)) {
            begin = shiftWords(in, out, numOfVoxels);
        }
#pragma GCC ivdep // in and out are the same row or do not overlap
        for (std::size_t i = begin; i < numOfVoxels; ++i) {
            out[i] = static_cast<T>(Operator::apply(in[i], count) & kept);
        }
    }

private:
    static constexpr unsigned int width = 8 * sizeof(T);

    /// Narrow voxels, which would be widened one by one, several in a word: the bits that come from a neighbour are
    /// taken off. Returns how many voxels there are in whole words.
    std::size_t shiftWords(T const* in, T* out, std::size_t numOfVoxels) const
    {
        using Lane = std::make_unsigned_t<T>;
        constexpr std::size_t lanes = sizeof(uint64) / sizeof(T);
        constexpr uint64 lowestBits = std::numeric_limits<uint64>::max() / std::numeric_limits<Lane>::max();
        auto const lane = static_cast<Lane>(Operator::apply(std::numeric_limits<Lane>::max(), count_) & kept_);
        uint64 const kept = lowestBits * lane;
        int const count = count_;
        std::size_t const end = numOfVoxels / lanes * lanes;
#pragma GCC ivdep // in and out are the same row or do not overlap
        for (std::size_t i = 0; i < end; i += lanes) {
            uint64 word;
            std::memcpy(&word, in + i, sizeof(word));
            word = Operator::apply(word, count) & kept;
            std::memcpy(out + i, &word, sizeof(word));
        }
        return end;
    }

    int count_;
    T kept_;
};

} // namespace mox::point_operations
