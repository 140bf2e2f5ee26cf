#include "apps/moxel/FileLimits.h"

#include <unistd.h>

#include <string>

#include "apps/moxel/Errors.h"

namespace moxel {

std::optional<std::uint64_t> product(std::initializer_list<std::uint64_t> factors)
{
    std::uint64_t result = 1;
    bool overflow = false;
    for (std::uint64_t const factor : factors) {
        if (factor == 0) {
            return 0;
        }
        overflow = __builtin_mul_overflow(result, factor, &result) || overflow;
    }
    return overflow ? std::nullopt : std::optional(result);
}

std::optional<std::uint64_t> packedBytes(std::uint64_t samplesPerRow, unsigned int bitsPerSample, std::uint64_t rows)
{
    auto const bitsPerRow = product({samplesPerRow, bitsPerSample});
    return bitsPerRow ? product({*bitsPerRow / 8 + (*bitsPerRow % 8 == 0 ? 0 : 1), rows}) : std::nullopt;
}

void requirePlausible(std::optional<std::uint64_t> claimed, std::uint64_t stored, std::uint64_t ratio)
{
    if (claimed && *claimed / ratio <= stored) {
        return;
    }
    throw FileError("its sizes ask for " + (claimed ? std::to_string(*claimed) : "more than 2^64") +
                    " bytes of voxels, which its " + std::to_string(stored) + " bytes of data cannot hold");
}

std::uint64_t physicalMemory()
{
    return static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

} // namespace moxel
