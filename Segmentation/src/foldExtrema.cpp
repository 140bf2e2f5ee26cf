#include "Segmentation/private/foldExtrema.h"

#include <emmintrin.h>

#include <algorithm>
#include <type_traits>

namespace mox::analysis {

namespace {

/// Voxels whose partial sums fit their narrow lanes.
constexpr std::size_t chunk = std::size_t{1} << 16U;

template <class T>
struct Extrema {
    T& minimum;
    T& maximum;

    void take(T voxel)
    {
        minimum = voxel < minimum ? voxel : minimum;
        maximum = maximum < voxel ? voxel : maximum;
    }
};

/// Up to `chunk` voxels; the sum is returned.
template <class T>
auto foldPlain(T const* voxels, std::size_t count, Extrema<T> extrema)
{
    using Sum = std::conditional_t<sizeof(T) == 8, Int128, int64>;
    T minimum = extrema.minimum;
    T maximum = extrema.maximum;
    Sum sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        minimum = std::min(minimum, voxels[i]);
        maximum = std::max(maximum, voxels[i]);
        sum += voxels[i];
    }
    extrema.minimum = minimum;
    extrema.maximum = maximum;
    return sum;
}

template <class T, std::size_t N>
void storeTo(std::array<T, N>& lanes, __m128i vector)
{
    static_assert(sizeof lanes == sizeof vector);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(lanes.data()), vector);
}

/// Has the line fetched from memory that follows voxel i in a page or so: the processor by itself stops at the end of a
/// page.
template <class T>
void prefetchAfter(T const* voxels, std::size_t i)
{
    constexpr std::size_t bytesOfLine = 64;
    constexpr std::ptrdiff_t bytesAhead = 4096;
    if (i * sizeof(T) % bytesOfLine == 0) {
        _mm_prefetch(reinterpret_cast<char const*>(voxels + i) + bytesAhead, _MM_HINT_T0);
    }
}

/// SSE2 compares and adds 8-bit integers without their sign: signed voxels are moved by 128.
template <class T>
int64 foldBytes(T const* voxels, std::size_t count, Extrema<T> extrema)
{
    constexpr unsigned char bias = std::is_signed_v<T> ? 0x80 : 0;
    constexpr std::size_t width = sizeof(__m128i);
    auto const biased = _mm_set1_epi8(static_cast<char>(bias));
    __m128i low = _mm_set1_epi8(static_cast<char>(0xFF));
    __m128i high = _mm_setzero_si128();
    __m128i sums = _mm_setzero_si128();
    std::size_t const whole = count / width * width;
#pragma GCC unroll 4
    for (std::size_t i = 0; i < whole; i += width) {
        prefetchAfter(voxels, i);
        auto const v = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<__m128i const*>(voxels + i)), biased);
        low = _mm_min_epu8(low, v);
        high = _mm_max_epu8(high, v);
        sums = _mm_add_epi64(sums, _mm_sad_epu8(v, _mm_setzero_si128()));
    }
    std::array<int64, 2> sum;
    storeTo(sum, sums);
    if (whole > 0) {
        std::array<T, width> lows, highs;
        storeTo(lows, _mm_xor_si128(low, biased));
        storeTo(highs, _mm_xor_si128(high, biased));
        extrema.take(*std::min_element(lows.begin(), lows.end()));
        extrema.take(*std::max_element(highs.begin(), highs.end()));
    }
    return sum[0] + sum[1] - static_cast<int64>(whole) * bias + foldPlain(voxels + whole, count - whole, extrema);
}

/// SSE2 compares 16-bit integers with their sign: unsigned voxels are moved to it. They are added without it.
template <class T>
int64 foldWords(T const* voxels, std::size_t count, Extrema<T> extrema)
{
    constexpr std::size_t width = sizeof(__m128i) / sizeof(T);
    constexpr int64 addedBias = std::is_signed_v<T> ? 0x8000 : 0;
    auto const toSigned = _mm_set1_epi16(static_cast<short>(std::is_signed_v<T> ? 0 : 0x8000));
    auto const toUnsigned = _mm_set1_epi16(static_cast<short>(addedBias));
    auto const evenPlaces = _mm_set1_epi32(0xFFFF);
    __m128i low = _mm_set1_epi16(0x7FFF);
    __m128i high = _mm_set1_epi16(static_cast<short>(0x8000));
    __m128i evenSums = _mm_setzero_si128();
    __m128i oddSums = _mm_setzero_si128();
    std::size_t const whole = count / width * width;
#pragma GCC unroll 4
    for (std::size_t i = 0; i < whole; i += width) {
        prefetchAfter(voxels, i);
        auto const v = _mm_loadu_si128(reinterpret_cast<__m128i const*>(voxels + i));
        auto const compared = _mm_xor_si128(v, toSigned);
        auto const added = _mm_xor_si128(v, toUnsigned);
        low = _mm_min_epi16(low, compared);
        high = _mm_max_epi16(high, compared);
        evenSums = _mm_add_epi32(evenSums, _mm_and_si128(added, evenPlaces));
        oddSums = _mm_add_epi32(oddSums, _mm_srli_epi32(added, 16));
    }
    std::array<unsigned int, 4> evens, odds;
    storeTo(evens, evenSums);
    storeTo(odds, oddSums);
    if (whole > 0) {
        std::array<T, width> lows, highs;
        storeTo(lows, _mm_xor_si128(low, toSigned));
        storeTo(highs, _mm_xor_si128(high, toSigned));
        extrema.take(*std::min_element(lows.begin(), lows.end()));
        extrema.take(*std::max_element(highs.begin(), highs.end()));
    }
    int64 const sum = std::accumulate(evens.begin(), evens.end(), std::accumulate(odds.begin(), odds.end(), int64{0}));
    return sum - static_cast<int64>(whole) * addedBias + foldPlain(voxels + whole, count - whole, extrema);
}

template <class T>
auto foldChunk(T const* voxels, std::size_t count, Extrema<T> extrema)
{
    if constexpr (sizeof(T) == 1) {
        return foldBytes(voxels, count, extrema);
    } else if constexpr (sizeof(T) == 2) {
        return foldWords(voxels, count, extrema);
    } else {
        return foldPlain(voxels, count, extrema);
    }
}

/// Pairs of lanes of a floating type. The order of operands makes `lesser(v, low)` be `v < low ? v : low`, so that a
/// NaN voxel is passed over.
struct FloatPairs {
    static constexpr std::size_t width = 4;
    using Vector = __m128;
    static Vector all(float value) { return _mm_set1_ps(value); }
    static Vector load(float const* voxels) { return _mm_loadu_ps(voxels); }
    static void store(float* voxels, Vector v) { _mm_storeu_ps(voxels, v); }
    static Vector lesser(Vector a, Vector b) { return _mm_min_ps(a, b); }
    static Vector greater(Vector a, Vector b) { return _mm_max_ps(a, b); }
    static void add(__m128d* sums, Vector v)
    {
        sums[0] = _mm_add_pd(sums[0], _mm_cvtps_pd(v));
        sums[1] = _mm_add_pd(sums[1], _mm_cvtps_pd(_mm_movehl_ps(v, v)));
    }
};

struct DoublePairs {
    static constexpr std::size_t width = 2;
    using Vector = __m128d;
    static Vector all(double value) { return _mm_set1_pd(value); }
    static Vector load(double const* voxels) { return _mm_loadu_pd(voxels); }
    static void store(double* voxels, Vector v) { _mm_storeu_pd(voxels, v); }
    static Vector lesser(Vector a, Vector b) { return _mm_min_pd(a, b); }
    static Vector greater(Vector a, Vector b) { return _mm_max_pd(a, b); }
    static void add(__m128d* sums, Vector v) { sums[0] = _mm_add_pd(sums[0], v); }
};

template <class T>
void foldFloats(T const* voxels, std::size_t count, Extrema<T> extrema, ExtremaSum<T>& sum)
{
    using Pairs = std::conditional_t<sizeof(T) == 4, FloatPairs, DoublePairs>;
    constexpr std::size_t numOfLanes = ExtremaSum<T>::numOfLanes;
    constexpr std::size_t pairsPerVector = Pairs::width / 2;
    constexpr std::size_t numOfPairs = numOfLanes / 2;
    __m128d sums[numOfPairs];
    typename Pairs::Vector low[2] = {Pairs::all(extrema.minimum), Pairs::all(extrema.minimum)};
    typename Pairs::Vector high[2] = {Pairs::all(extrema.maximum), Pairs::all(extrema.maximum)};
    for (std::size_t k = 0; k < numOfPairs; ++k) {
        sums[k] = _mm_loadu_pd(sum.lanes.data() + 2 * k);
    }
    std::size_t const whole = count / numOfLanes * numOfLanes;
    for (std::size_t i = 0; i < whole; i += numOfLanes) {
        prefetchAfter(voxels, i);
        for (std::size_t k = 0; k < numOfPairs / pairsPerVector; ++k) {
            auto const v = Pairs::load(voxels + i + k * Pairs::width);
            low[k % 2] = Pairs::lesser(v, low[k % 2]);
            high[k % 2] = Pairs::greater(v, high[k % 2]);
            Pairs::add(sums + k * pairsPerVector, v);
        }
    }
    for (std::size_t k = 0; k < numOfPairs; ++k) {
        _mm_storeu_pd(sum.lanes.data() + 2 * k, sums[k]);
    }
    std::array<T, Pairs::width> lows, highs;
    Pairs::store(lows.data(), Pairs::lesser(low[0], low[1]));
    Pairs::store(highs.data(), Pairs::greater(high[0], high[1]));
    extrema.minimum = *std::min_element(lows.begin(), lows.end());
    extrema.maximum = *std::max_element(highs.begin(), highs.end());
    for (std::size_t i = whole; i < count; ++i) {
        extrema.take(voxels[i]);
        sum.lanes[i - whole] += static_cast<double>(voxels[i]);
    }
}

} // namespace

template <class T>
void foldExtrema(T const* voxels, std::size_t count, T& minimum, T& maximum, ExtremaSum<T>& sum)
{
    Extrema<T> const extrema{minimum, maximum};
    if constexpr (std::is_floating_point_v<T>) {
        foldFloats(voxels, count, extrema, sum);
    } else {
        for (std::size_t done = 0; done < count; done += chunk) {
            sum.value += foldChunk(voxels + done, std::min(chunk, count - done), extrema);
        }
    }
}

#define MOX_INSTANTIATE(T) template void foldExtrema(T const*, std::size_t, T&, T&, ExtremaSum<T>&);
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::analysis
