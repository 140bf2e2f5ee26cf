#pragma once

#include <cassert>
#include <cstddef>

namespace mox::filters {

/// How voxels go to memory. Streamed ones pass the caches by, which pays for images that are larger than those.
enum class Store { cached, streamed };

/// What suits an output image that is none of the inputs, in a run that makes so many bytes go through the caches.
Store storeFor(std::size_t numOfBytes);

/// Parts of a row that are made at once to be streamed; small enough to stay in the fastest cache beside the input.
constexpr std::size_t streamedAtOnce = 1024; ///< bytes

namespace detail {

constexpr std::size_t streamAlignment = 16;

/// How many voxels lie before the first one that can be streamed; all, where none can.
std::size_t countBeforeAligned(void const* output, std::size_t voxelSize, std::size_t count);

/// `streamedAtOnce` bytes, of aligned memory.
void stream(void* output, void const* voxels);

/// Whoever waits for this thread sees what was streamed.
void endStreaming();

} // namespace detail

/// Streams `count` voxels to memory; `makeNext(voxels, number)` makes them one part after the other.
template <class MakeNext>
void makeStreamed(void* output, std::size_t voxelSize, std::size_t count, MakeNext&& makeNext)
{
    assert(detail::streamAlignment % voxelSize == 0);
    std::size_t const atOnce = streamedAtOnce / voxelSize;
    std::size_t const head = detail::countBeforeAligned(output, voxelSize, count);
    makeNext(output, head);
    char* out = static_cast<char*>(output) + head * voxelSize;
    std::size_t rest = count - head;
    for (; rest >= atOnce; rest -= atOnce) {
        alignas(detail::streamAlignment) char voxels[streamedAtOnce];
        makeNext(static_cast<void*>(voxels), atOnce);
        detail::stream(out, voxels);
        out += streamedAtOnce;
    }
    makeNext(static_cast<void*>(out), rest);
    detail::endStreaming();
}

} // namespace mox::filters
