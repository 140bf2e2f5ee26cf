#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>

// A file may claim any sizes: the claims are held against the file and the machine before memory is taken.

namespace moxel {

/// Nothing when the product is beyond 64 bits.
std::optional<std::uint64_t> product(std::initializer_list<std::uint64_t> factors);

/// Bytes of rows of packed samples, each row filled up to a whole byte. Nothing when beyond 64 bits.
std::optional<std::uint64_t> packedBytes(std::uint64_t samplesPerRow, unsigned int bitsPerSample, std::uint64_t rows);

/// Throws `FileError` when so many stored bytes cannot hold the claimed ones, at `ratio` to one at the most.
void requirePlausible(std::optional<std::uint64_t> claimed, std::uint64_t stored, std::uint64_t ratio);

/// Bytes of memory that the machine has.
std::uint64_t physicalMemory();

/// The most that one byte of deflated data can become.
constexpr std::uint64_t deflateRatio = 1032;

} // namespace moxel
