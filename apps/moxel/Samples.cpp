#include "apps/moxel/Samples.h"

#include <cstdint>
#include <cstring>

namespace moxel {

namespace {

template <std::size_t bytes>
void copySamples(std::byte const* from, std::size_t fromStep, std::byte* to, std::size_t toStep, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(to + i * toStep * bytes, from + i * fromStep * bytes, bytes);
    }
}

template <class T>
void unpack(std::uint8_t const* from, unsigned int bits, T* to, std::size_t count)
{
    std::size_t position = 0;
    for (std::size_t i = 0; i < count; ++i) {
        unsigned int sample = 0;
        for (unsigned int bit = 0; bit < bits; ++bit, ++position) {
            sample = 2 * sample + (from[position / 8] >> (7 - position % 8) & 1U);
        }
        to[i] = static_cast<T>(sample);
    }
}

} // namespace

void copySamples(void const* from, std::size_t fromStep, void* to, std::size_t toStep, std::size_t count,
                 unsigned int bytes)
{
    auto const* source = static_cast<std::byte const*>(from);
    auto* target = static_cast<std::byte*>(to);
    switch (bytes) {
    case 1:
        return copySamples<1>(source, fromStep, target, toStep, count);
    case 2:
        return copySamples<2>(source, fromStep, target, toStep, count);
    case 4:
        return copySamples<4>(source, fromStep, target, toStep, count);
    default:
        return copySamples<8>(source, fromStep, target, toStep, count);
    }
}

void unpackSamples(void const* from, unsigned int bits, void* to, std::size_t count)
{
    auto const* packed = static_cast<std::uint8_t const*>(from);
    if (bits <= 8) {
        unpack(packed, bits, static_cast<std::uint8_t*>(to), count);
    } else {
        unpack(packed, bits, static_cast<std::uint16_t*>(to), count);
    }
}

} // namespace moxel
