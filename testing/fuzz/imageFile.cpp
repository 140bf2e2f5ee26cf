// Reads any bytes as an image file: an error, or an image that the host writes in the same format and reads again.

#include "apps/moxel/ImageFile.h"
#include "apps/moxel/Errors.h"
#include "testing/fuzz/MemoryFile.h"
#include "testing/fuzz/require.h"

#include <cstring>

namespace {

using Image = std::unique_ptr<mox::memory::InMemoryImage>;
using mox::fuzz::require;

constexpr std::uint64_t mostToWrite = 1U << 20U;

std::uint64_t numOfBytes(mox::ImageModel const& image)
{
    std::uint64_t bytes = mox::helper::getSizeOf(image.getVoxelType());
    for (std::size_t i = 0; i < moxel::numOfDimensions; ++i) {
        bytes *= image.getSize(static_cast<mox::ImageDimension>(i));
    }
    return bytes;
}

/// An image in memory is one block.
void requireSameVoxels(mox::ImageModel& a, mox::ImageModel& b)
{
    require(a.getVoxelType() == b.getVoxelType());
    for (std::size_t i = 0; i < moxel::numOfDimensions; ++i) {
        auto const dimension = static_cast<mox::ImageDimension>(i);
        require(a.getSize(dimension) == b.getSize(dimension));
    }
    require(std::memcmp(moxel::rowOf(a, 0, {}), moxel::rowOf(b, 0, {}), numOfBytes(a)) == 0);
}

void writeAndRead(mox::ImageModel& image)
{
    mox::fuzz::MemoryFile const written(nullptr, 0);
    moxel::writeImage(image, written.path(), moxel::ImageFormat::IMAGE_FORMAT, moxel::Compression::deflate);
    requireSameVoxels(image, *moxel::readImage(written.path(), {}));
}

Image read(mox::fuzz::MemoryFile const& file, std::optional<mox::ImageDimension> pages)
{
    try {
        return moxel::readImage(file.path(), pages);
    } catch (moxel::FileError const&) {
        return {};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    mox::fuzz::MemoryFile const file(data, size);
    Image const image = read(file, {});
    if (image != nullptr && numOfBytes(*image) <= mostToWrite) {
        writeAndRead(*image);
    }
    if (image == nullptr) {
        read(file, mox::TIME_SERIES);
    }
    return 0;
}
