#pragma once

#include <Moxelcore/Core/Integers.h>

#include <emmintrin.h>

#include <array>
#include <cstddef>
#include <cstring>

namespace mox::segmentation {

/// 64 columns of a row; the first is the lowest bit.
using Word = uint64;
constexpr unsigned int wordBits = 64;
constexpr Word allOnes = ~Word{0};

inline std::size_t numOfWords(unsigned int columns)
{
    return (std::size_t{columns} + wordBits - 1) / wordBits;
}

/// In each byte the number of bits that are set up to its end; the last byte has the whole word's. Without the
/// processor's instruction, which is not on all of them.
inline Word countsByByte(Word word)
{
    word -= word >> 1U & 0x5555555555555555U;
    word = (word & 0x3333333333333333U) + (word >> 2U & 0x3333333333333333U);
    word = (word + (word >> 4U)) & 0x0F0F0F0F0F0F0F0FU;
    return word * 0x0101010101010101U;
}

inline unsigned int popCount(Word word)
{
    return static_cast<unsigned int>(countsByByte(word) >> 56U);
}

/// The number of bits that are set in each byte there is.
constexpr auto bitsOfByte = [] {
    std::array<unsigned char, 256> counts{};
    for (std::size_t i = 1; i < counts.size(); ++i) {
        counts[i] = static_cast<unsigned char>(counts[i / 2] + i % 2);
    }
    return counts;
}();

/// Calls `work` with the index of each bit that is set, from the lowest.
template <class Work>
void forEachBit(Word word, Work&& work)
{
    for (; word != 0; word &= word - 1) {
        work(static_cast<unsigned int>(__builtin_ctzll(word)));
    }
}

/// The voxels that are not 0.
template <class T>
Word bitsOf(T const* voxels)
{
    if constexpr (sizeof(T) == 1) {
        Word zeros = 0;
        for (unsigned int i = 0; i < wordBits; i += 16) {
            __m128i const part = _mm_loadu_si128(reinterpret_cast<__m128i const*>(voxels + i));
            auto const mask = _mm_movemask_epi8(_mm_cmpeq_epi8(part, _mm_setzero_si128()));
            zeros |= static_cast<Word>(static_cast<unsigned int>(mask)) << i;
        }
        return ~zeros;
    }
    alignas(16) std::array<unsigned char, wordBits> flags;
    for (std::size_t i = 0; i < wordBits; ++i) {
        flags[i] = voxels[i] != 0 ? 0xFF : 0;
    }
    Word word = 0;
    for (unsigned int i = 0; i < wordBits; i += 16) {
        __m128i const part = _mm_load_si128(reinterpret_cast<__m128i const*>(flags.data() + i));
        word |= static_cast<Word>(static_cast<unsigned int>(_mm_movemask_epi8(part))) << i;
    }
    return word;
}

/// A row as words; the bits beyond its end are 0.
template <class T>
void packRow(T const* voxels, unsigned int columns, Word* words)
{
    unsigned int x = 0;
    for (; x + wordBits <= columns; x += wordBits) {
        *words++ = bitsOf(voxels + x);
    }
    if (x < columns) {
        std::array<T, wordBits> rest{};
        std::memcpy(rest.data(), voxels + x, (columns - x) * sizeof(T));
        *words = bitsOf(rest.data());
    }
}

} // namespace mox::segmentation
