#pragma once

#include <Moxelcore/Core/Integers.h>
#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "Core/private/access/Position.h"
#include "Core/private/filters/Store.h"

namespace mox::miscellaneous {

struct tag_mean {};
struct tag_min {};
struct tag_max {};
struct tag_first {};

namespace decimation {

__extension__ typedef __int128 int128;
__extension__ typedef unsigned __int128 uint128;

template <std::size_t size, bool isSigned>
struct Integer;
// clang-format off
template <> struct Integer<2, false> { using Type = unsigned short; };
template <> struct Integer<4, false> { using Type = unsigned int; };
template <> struct Integer<8, false> { using Type = uint64; };
template <> struct Integer<16, false> { using Type = uint128; };
template <> struct Integer<2, true> { using Type = short; };
template <> struct Integer<4, true> { using Type = int; };
template <> struct Integer<8, true> { using Type = int64; };
template <> struct Integer<16, true> { using Type = int128; };
// clang-format on

/// The sum of two voxels side by side, exact in an integer of twice their width, as which they are loaded together:
/// a loop over such pairs is vectorised without shuffling voxels apart.
template <std::integral T>
auto sumOfPair(T const* voxels)
{
    using Wide = typename Integer<2 * sizeof(T), std::is_signed_v<T>>::Type;
    using Bits = typename Integer<2 * sizeof(T), false>::Type;
    constexpr int numOfBits = 8 * sizeof(T);
    Bits pair;
    std::memcpy(&pair, voxels, sizeof(pair));
    auto const other = static_cast<Wide>(static_cast<Wide>(pair) >> numOfBits);
    if constexpr (std::is_unsigned_v<T>) {
        return static_cast<Wide>(static_cast<T>(pair) + other); // a mask is cheaper than two shifts
    } else {
        auto const one = static_cast<Wide>(static_cast<Wide>(static_cast<Bits>(pair << numOfBits)) >> numOfBits);
        return static_cast<Wide>(one + other);
    }
}

template <class T>
void reduce(tag_mean, T const* upper, T const* lower, T* out, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        if constexpr (std::is_integral_v<T>) {
            using Wide = decltype(sumOfPair(upper));
            auto const sum = static_cast<Wide>(sumOfPair(upper + 2 * i) + sumOfPair(lower + 2 * i));
            out[i] = static_cast<T>(sum / 4);
        } else {
            out[i] = ((upper[2 * i] + upper[2 * i + 1]) + (lower[2 * i] + lower[2 * i + 1])) * T(0.25);
        }
    }
}

/// The first of four that no later one goes before.
template <class T, class Before>
T foremost(T const* upper, T const* lower, Before const& goesBefore)
{
    T best = upper[0];
    best = goesBefore(upper[1], best) ? upper[1] : best;
    best = goesBefore(lower[0], best) ? lower[0] : best;
    return goesBefore(lower[1], best) ? lower[1] : best;
}

template <class T>
void reduce(tag_min, T const* upper, T const* lower, T* out, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = foremost(upper + 2 * i, lower + 2 * i, [](T a, T b) { return a < b; });
    }
}

template <class T>
void reduce(tag_max, T const* upper, T const* lower, T* out, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = foremost(upper + 2 * i, lower + 2 * i, [](T a, T b) { return a > b; });
    }
}

template <class T>
void reduce(tag_first, T const* upper, T const*, T* out, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = upper[2 * i];
    }
}

} // namespace decimation

/// Makes a row of one half the length of two rows, by the operator of the tag.
template <class T>
class DecimateBody2D {
public:
    template <class Tag>
    DecimateBody2D(Tag, filters::Store store)
        : reduce_([](T const* upper, T const* lower, T* out, std::size_t count) {
            decimation::reduce(Tag(), upper, lower, out, count);
        })
        , store_(store)
    {
    }

    void row(T const* upper, T const* lower, T* out, std::size_t count) const { reduce_(upper, lower, out, count); }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        unsigned int const columns = leaf.getNumOfColumns();
        bool const paysToStream =
            store_ == filters::Store::streamed && columns * sizeof(T) >= 2 * filters::streamedAtOnce;
        access::Position p{2 * static_cast<int>(leaf.getBeginColumn()), 2 * static_cast<int>(leaf.getBeginRow()),
                           static_cast<int>(leaf.getBeginPlan()), static_cast<int>(leaf.getBeginTimeSeries()),
                           static_cast<int>(leaf.getBeginSpectralSeries())};
        for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
            Lines lines;
            lines.upper = source.rowAt(0, p, 2 * columns);
            ++p.y;
            lines.lower = source.rowAt(1, p, 2 * columns);
            ++p.y;
            lines.nextUpper = source.aheadAt(p, 2 * columns);
            lines.nextLower = source.aheadAt({p.x, p.y + 1, p.z, p.t, p.s}, 2 * columns);
            bool const isStreamed = paysToStream && target.ahead(y, 0) != nullptr;
            lines.nextOut = isStreamed ? nullptr : target.ahead(y + 1, 0);
            target.writeRow(y, 0, [&](T* out) { makeRow(lines, out, columns, isStreamed); });
        }
    }

private:
    /// Rows of the input, and those that are fetched meanwhile.
    struct Lines {
        T const* upper;
        T const* lower;
        T const* nextUpper;
        T const* nextLower;
        T const* nextOut;
    };

    void makeRow(Lines const& lines, T* out, std::size_t columns, bool isStreamed) const
    {
        std::size_t x = 0;
        auto const makeNext = [&](void* voxels, std::size_t count) {
            T* next = static_cast<T*>(voxels);
            for (std::size_t const end = x + count; x < end;) {
                std::size_t const some = std::min(end - x, atOnce);
                fetch(lines.nextUpper, 2 * x, 2 * some);
                fetch(lines.nextLower, 2 * x, 2 * some);
                fetch(lines.nextOut, x, some);
                row(lines.upper + 2 * x, lines.lower + 2 * x, next, some);
                x += some;
                next += some;
            }
        };
        if (isStreamed) {
            filters::makeStreamed(out, sizeof(T), columns, makeNext);
        } else {
            makeNext(out, columns);
        }
    }

    /// A few lines of each row that is fetched: processors take no more at once.
    static constexpr std::size_t atOnce = 256 / sizeof(T);

    static void fetch(T const* row, std::size_t x, std::size_t count)
    {
        if (row == nullptr) {
            return;
        }
        for (std::size_t i = 0; i < count; i += 64 / sizeof(T)) {
            __builtin_prefetch(row + x + i);
        }
    }

    void (*reduce_)(T const* upper, T const* lower, T* out, std::size_t count);
    filters::Store store_;
};

} // namespace mox::miscellaneous
