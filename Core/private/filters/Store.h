#pragma once

#include <algorithm>
#include <cstddef>

namespace mox::filters {

/// How voxels go to memory. Streamed ones pass the caches by, which pays for images that are larger than those.
enum class Store { cached, streamed };

/// What suits an output image that is none of the inputs, for so many bytes.
Store storeFor(std::size_t numOfBytes);

namespace detail {

constexpr std::size_t streamAlignment = 16;

/// Small enough to stay in the fastest cache beside the input.
constexpr std::size_t streamedAtOnce = 1024;

/// How many voxels lie before the first one that can be streamed.
std::size_t countBeforeAligned(void const* output, std::size_t voxelSize);

/// `streamedAtOnce` bytes, of aligned memory.
void stream(void* output, void const* voxels);

/// Whoever waits for this thread sees what was streamed.
void endStreaming();

} // namespace detail

/// Streams `count` voxels to memory; `makeNext(voxels, number)` makes them one part after the other.
template <class MakeNext>
void makeStreamed(void* output, std::size_t voxelSize, std::size_t count, MakeNext&& makeNext)
{
    char* out = static_cast<char*>(output);
    auto const make = [&](std::size_t number) {
        makeNext(static_cast<void*>(out), number);
        out += number * voxelSize;
        count -= number;
    };
    make(std::min(count, detail::countBeforeAligned(output, voxelSize)));
    for (std::size_t const number = detail::streamedAtOnce / voxelSize; count >= number; count -= number) {
        alignas(detail::streamAlignment) char voxels[detail::streamedAtOnce];
        makeNext(static_cast<void*>(voxels), number);
        detail::stream(out, voxels);
        out += detail::streamedAtOnce;
    }
    make(count);
    detail::endStreaming();
}

} // namespace mox::filters
