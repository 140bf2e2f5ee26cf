#pragma once

#include <cstddef>

// Rows of interleaved samples, as files have them, and rows of one channel, as images have them.

namespace moxel {

/// Copies `count` samples, `fromStep` apart, to places `toStep` apart; steps count samples of `bytes` bytes.
void copySamples(void const* from, std::size_t fromStep, void* to, std::size_t toStep, std::size_t count,
                 unsigned int bytes);

/// Widens `count` samples of `bits` bits, packed from the most significant bit of the first byte on, to 1 or 2 bytes
/// each, the fewest that hold one. `to` may not overlap `from`.
void unpackSamples(void const* from, unsigned int bits, void* to, std::size_t count);

} // namespace moxel
