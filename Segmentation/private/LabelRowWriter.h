#pragma once

#include <emmintrin.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Segmentation/private/BitRows.h"
#include "Segmentation/private/RowStrip.h"

namespace mox::segmentation {

/// All bits of the lanes whose bit is set. A lane is as wide as the voxel type; lane 0 belongs to bit 0.
template <std::size_t laneSize>
__m128i laneMask(unsigned int bits)
{
    if constexpr (laneSize == 1) {
        __m128i const select = _mm_set1_epi64x(static_cast<long long>(0x8040201008040201U));
        __m128i value = _mm_cvtsi32_si128(static_cast<int>(bits));
        value = _mm_unpacklo_epi8(value, value);  // bytes 0 0 1 1
        value = _mm_shufflelo_epi16(value, 0x50); // 0 0 0 0 1 1 1 1
        value = _mm_unpacklo_epi32(value, value); // eight times 0, eight times 1
        return _mm_cmpeq_epi8(_mm_and_si128(value, select), select);
    } else if constexpr (laneSize == 2) {
        __m128i const select = _mm_set_epi16(128, 64, 32, 16, 8, 4, 2, 1);
        return _mm_cmpeq_epi16(_mm_and_si128(_mm_set1_epi16(static_cast<short>(bits)), select), select);
    } else {
        __m128i const select = laneSize == 4 ? _mm_set_epi32(8, 4, 2, 1) : _mm_set_epi32(2, 2, 1, 1);
        return _mm_cmpeq_epi32(_mm_and_si128(_mm_set1_epi32(static_cast<int>(bits)), select), select);
    }
}

template <class T>
__m128i allLanes(T value)
{
    if constexpr (sizeof(T) == 1) {
        return _mm_set1_epi8(static_cast<char>(value));
    } else if constexpr (sizeof(T) == 2) {
        return _mm_set1_epi16(static_cast<short>(value));
    } else if constexpr (sizeof(T) == 4) {
        return _mm_set1_epi32(static_cast<int>(value));
    } else {
        return _mm_set1_epi64x(static_cast<long long>(value));
    }
}

/// How words of labels go to memory: past the caches where they would not stay there until they are read.
enum class Stores { ordinary, streaming };

/// Writes the rows of a strip, 64 columns at a time and without a branch per voxel: labels of the strip's runs go into
/// a line, from which each row takes those of its own voxels.
template <class Out>
class LabelRowWriter {
public:
    /// `labelOf` gives the label of a run by its rank. The lower row's bits and voxels may be null. Returns the number
    /// of runs.
    template <class LabelOf>
    unsigned int write(std::size_t numOfWords, unsigned int columns, std::array<Word const*, 2> bits,
                       std::array<Out*, 2> rows, Stores stores, LabelOf const& labelOf)
    {
        auto const columnsAt = [&](std::size_t w) { return bits[0][w] | (bits[1] != nullptr ? bits[1][w] : 0); };
        std::array<bool, 2> streams{};
        for (std::size_t r = 0; r < rows.size(); ++r) {
            streams[r] = stores == Stores::streaming && reinterpret_cast<std::uintptr_t>(rows[r]) % 16 == 0;
        }
        unsigned int run = 0;
        for (std::size_t w = 0; w < numOfWords; ++w) {
            Word const next = w + 1 < numOfWords ? columnsAt(w + 1) : 0;
            run = fillLine(columnsAt(w), next, run, labelOf);
            std::size_t const x = w * wordBits;
            bool const isWhole = x + wordBits <= columns;
            for (std::size_t r = 0; r < rows.size() && rows[r] != nullptr; ++r) {
                if (isWhole && streams[r]) {
                    writeWord(bits[r][w], rows[r] + x, [](__m128i* out, __m128i v) { _mm_stream_si128(out, v); });
                } else if (isWhole) {
                    writeWord(bits[r][w], rows[r] + x, [](__m128i* out, __m128i v) { _mm_storeu_si128(out, v); });
                } else {
                    std::array<Out, wordBits> rest;
                    writeWord(bits[r][w], rest.data(), [](__m128i* out, __m128i v) { _mm_storeu_si128(out, v); });
                    std::memcpy(rows[r] + x, rest.data(), (columns - x) * sizeof(Out));
                }
            }
        }
        return run;
    }

private:
    static constexpr unsigned int lanes = 16 / sizeof(Out);
    /// Labels that are stored without a branch, so that the runs of noise need none.
    static constexpr unsigned int step = lanes < 8 ? 8 : lanes;

    /// Labels of runs are stored in whole steps; what they overshoot is overwritten or belongs to no run. Returns the
    /// rank of the run that goes on in the next word, or comes after it.
    template <class LabelOf>
    unsigned int fillLine(Word columns, Word next, unsigned int run, LabelOf const& labelOf)
    {
        for (Word ends = endsOf(columns, next); ends != 0; ends &= ends - 1) {
            fill(columns, static_cast<unsigned int>(__builtin_ctzll(ends)) + 1, labelOf(run++));
            columns &= ~(ends ^ (ends - 1)); // those after the end
        }
        if (columns != 0) {
            fill(columns, wordBits, labelOf(run));
        }
        return run;
    }

    void fill(Word columns, unsigned int end, Out label)
    {
        __m128i const labels = allLanes(label);
        for (auto x = static_cast<unsigned int>(__builtin_ctzll(columns)); x < end; x += step) {
            for (unsigned int i = 0; i < step; i += lanes) {
                _mm_storeu_si128(reinterpret_cast<__m128i*>(line_.data() + x + i), labels);
            }
        }
    }

    template <class Store>
    void writeWord(Word bits, Out* out, Store const& store) const
    {
        auto* const vectors = reinterpret_cast<__m128i*>(out);
        auto const* const line = reinterpret_cast<__m128i const*>(line_.data());
        constexpr unsigned int numOfVectors = wordBits / lanes;
        if (bits == 0) {
            for (unsigned int i = 0; i < numOfVectors; ++i) {
                store(vectors + i, _mm_setzero_si128());
            }
        } else if (bits == allOnes) {
            for (unsigned int i = 0; i < numOfVectors; ++i) {
                store(vectors + i, _mm_load_si128(line + i));
            }
        } else {
            for (unsigned int i = 0; i < numOfVectors; ++i) {
                auto const part = static_cast<unsigned int>(bits >> (i * lanes));
                store(vectors + i, _mm_and_si128(_mm_load_si128(line + i), laneMask<sizeof(Out)>(part)));
            }
        }
    }

    alignas(16) std::array<Out, wordBits + step> line_{};
};

} // namespace mox::segmentation
