#include "Core/private/filters/Store.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstdint>

#include "Core/private/Cpu.h"

namespace mox::filters {

namespace {

/// A processor that does not tell its cache is taken to have as much.
constexpr std::size_t usualCacheSize = std::size_t{32} << 20U;

} // namespace

Store storeFor(std::size_t numOfBytes)
{
    auto const told = static_cast<std::size_t>(devices::Cpu::get().l3Cache) << 10U;
    return numOfBytes > (told > 0 ? told : usualCacheSize) ? Store::streamed : Store::cached;
}

namespace detail {

std::size_t countBeforeAligned(void const* output, std::size_t voxelSize, std::size_t count)
{
    std::size_t const misaligned = reinterpret_cast<std::uintptr_t>(output) % streamAlignment;
    std::size_t const before = (streamAlignment - misaligned) % streamAlignment;
    return before % voxelSize == 0 ? std::min(before / voxelSize, count) : count;
}

void stream(void* output, void const* voxels)
{
    auto* const out = static_cast<__m128i*>(output);
    auto const* const in = static_cast<__m128i const*>(voxels);
    for (std::size_t i = 0; i < streamedAtOnce / sizeof(__m128i); ++i) {
        _mm_stream_si128(out + i, _mm_load_si128(in + i));
    }
}

void endStreaming()
{
    _mm_sfence();
}

} // namespace detail

} // namespace mox::filters
