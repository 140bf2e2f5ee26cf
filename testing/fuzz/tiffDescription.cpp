// Reads any bytes as the description of a TIFF whose number of pages and samples the first two draw.

#include <cstddef>
#include <cstdint>

#include "apps/moxel/TiffDescription.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size < 2) {
        return 0;
    }
    moxel::TiffPages const pages = {data[0] + 1U, data[1] + 1U, 16 * (data[1] + 1U)};
    auto const description = moxel::parseTiffDescription({reinterpret_cast<char const*>(data) + 2, size - 2}, pages);
    moxel::numOfPages(description.axes);
    return 0;
}
