#pragma once

#include <Moxelcore/Core/Enum/MatchingActionTypes.h>
#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "Core/private/filters/leafRows.h"
#include "Morphology/private/MorphologicalLutAccess.h"

namespace mox::morphology {

/// What becomes of a voxel: 0, 1, or the voxel itself.
constexpr unsigned char keepVoxel = 2;

inline unsigned char actionCode(int action, bool isSet)
{
    switch (action) {
    case MatchingActionTypes::SET_ONE:
        return 1;
    case MatchingActionTypes::SET_CHANGE:
        return isSet ? 0 : 1;
    case MatchingActionTypes::SET_UNCHANGE:
        return keepVoxel;
    default:
        return 0;
    }
}

/// What becomes of the voxel of each pattern in the plane.
class LutCodes2D {
public:
    using Index = unsigned short;
    static constexpr int numOfRows = 3;

    template <class Lut>
    LutCodes2D(Lut const& lut, int matching, int noMatching)
    {
        for (unsigned int index = 0; index < codes_.size(); ++index) {
            codes_[index] = actionCode(lut[index] != 0 ? matching : noMatching, (index >> 4U & 1U) != 0);
        }
    }

    unsigned char operator[](Index index) const { return codes_[index]; }

private:
    std::array<unsigned char, 512> codes_;
};

/// What becomes of the voxel of each pattern in space. Of the table itself there is no copy.
class LutCodes3D {
public:
    using Index = unsigned int;
    static constexpr int numOfRows = 9;

    LutCodes3D(MorphologicalLut3D const& lut, int matching, int noMatching)
        : words_(MorphologicalLutAccess::words(lut))
        , codes_{actionCode(noMatching, false), actionCode(noMatching, true), actionCode(matching, false),
                 actionCode(matching, true)}
    {
    }

    unsigned char operator[](Index index) const
    {
        auto const isHit = static_cast<unsigned int>(words_[index / 64] >> (index % 64) & 1U);
        return codes_[2 * isHit + (index >> 13U & 1U)];
    }

private:
    uint64 const* words_;
    std::array<unsigned char, 4> codes_;
};

/// What a pass tells of the image that it has made.
struct LutPass {
    bool changed = false;           ///< against the image that it was made of
    bool differsFromBefore = false; ///< from the image that was in its place

    void join(LutPass const& other)
    {
        changed = changed || other.changed;
        differsFromBefore = differsFromBefore || other.differsFromBefore;
    }
};

/// One pass of a look-up table. The target's rows must be the memory of an image, which but for the first pass into it
/// holds voxels already.
template <class T, class Codes>
class ApplyMorphoLutGeneric {
public:
    using Value = LutPass;

    /// The first image that is made in a place has none before it to be compared with.
    ApplyMorphoLutGeneric(Codes const& codes, bool isFirst)
        : codes_(codes)
        , isFirst_(isFirst)
    {
    }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target, LutPass& pass) const
    {
        std::size_t const columns = leaf.getNumOfColumns();
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
                Lines lines;
                for (int k = 0; k < Codes::numOfRows; ++k) {
                    int const plan = Codes::numOfRows == 9 ? z + k / 3 - 1 : z;
                    auto const slot = static_cast<std::size_t>(k);
                    lines[slot] = source.line(slot, y + k % 3 - 1, plan);
                }
                target.writeRow(y, z, [&](T* out) { applyToRow(lines, columns, out, pass); });
            }
        }
    }

private:
    using Index = typename Codes::Index;
    using Lines = std::array<filters::Line<T>, Codes::numOfRows>; ///< in raster order

    static constexpr std::size_t chunk = 256;

    void applyToRow(Lines const& lines, std::size_t columns, T* out, LutPass& pass) const
    {
        for (std::size_t x = 0; x < columns; x += chunk) {
            std::size_t const count = std::min(chunk, columns - x);
            std::array<Index, chunk + 2> bits{}; // of columns x - 1 to x + count: every third bit of an index
            for (std::size_t k = 0; k < lines.size(); ++k) {
                addRow(lines[k], k, x, count, columns, bits);
            }
            std::array<unsigned char, chunk> codes;
            for (std::size_t i = 0; i < count; ++i) {
                codes[i] = codes_[static_cast<Index>(bits[i] | bits[i + 1] << 1U | bits[i + 2] << 2U)];
            }
            std::array<T, chunk> made;
            pass.changed |= act(codes, lines[lines.size() / 2].voxels + x, count, made.data());
            pass.differsFromBefore |= isFirst_ || differ(made.data(), out + x, count);
            std::copy_n(made.begin(), count, out + x);
        }
    }

    static void addRow(filters::Line<T> const& line, std::size_t k, std::size_t x, std::size_t count,
                       std::size_t columns, std::array<Index, chunk + 2>& bits)
    {
        auto const bit = static_cast<Index>(1U << 3 * k);
        auto const bitOf = [bit](T voxel) { return static_cast<Index>(voxel != 0 ? bit : 0); };
        T const* const voxels = line.voxels + x;
        for (std::size_t i = 0; i < count; ++i) {
            bits[i + 1] = static_cast<Index>(bits[i + 1] | bitOf(voxels[i]));
        }
        bits[0] = static_cast<Index>(bits[0] | bitOf(x == 0 ? line.left : voxels[-1]));
        bits[count + 1] =
            static_cast<Index>(bits[count + 1] | bitOf(x + count == columns ? line.right : voxels[count]));
    }

    /// Whether any voxel is another one than before.
    static bool act(std::array<unsigned char, chunk> const& codes, T const* in, std::size_t count, T* made)
    {
        unsigned char changed = 0;
        for (std::size_t i = 0; i < count; ++i) {
            made[i] = codes[i] == keepVoxel ? in[i] : static_cast<T>(codes[i]);
            changed |= static_cast<unsigned char>((codes[i] != keepVoxel) & (made[i] != in[i]));
        }
        return changed != 0;
    }

    static bool differ(T const* made, T const* before, std::size_t count)
    {
        unsigned char differs = 0;
        for (std::size_t i = 0; i < count; ++i) {
            bool const areNaN = made[i] != made[i] && before[i] != before[i]; // NOLINT(misc-redundant-expression)
            differs |= static_cast<unsigned char>((made[i] != before[i]) & !areNaN);
        }
        return differs != 0;
    }

    Codes const& codes_;
    bool isFirst_;
};

} // namespace mox::morphology
