#include <gtest/gtest.h>

#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

struct RealImage {
    char const* name;
    Sizes sizes;
    mox::VoxelTypes voxelType;
    std::optional<mox::ImageDimension> pages;

    friend std::ostream& operator<<(std::ostream& stream, RealImage const& image) { return stream << image.name; }
};

RealImage const images[] = {
    {"coins.png", {384, 303, 1, 1, 1}, mox::MOX_UINT8, {}},
    {"horse_binary.png", {400, 328, 1, 1, 1}, mox::MOX_UINT8, {}},
    {"landsat_rgb.png", {791, 718, 1, 1, 3}, mox::MOX_UINT8, {}},
    {"cells_3channel_u16.tif", {695, 395, 1, 1, 3}, mox::MOX_UINT16, mox::SPECTRAL_SERIES},
    {"elevation_i16.tif", {403, 344, 1, 1, 1}, mox::MOX_INT16, {}},
    {"topobathy_f32.tif", {120, 91, 1, 1, 1}, mox::MOX_FLOAT32, {}},
    {"tooth_ct_u16.tif", {103, 94, 161, 1, 1}, mox::MOX_UINT16, {}},
    {"neck_mr_i16.tif", {42, 76, 77, 1, 1}, mox::MOX_INT16, {}},
    {"berea_binary_u8.tif", {200, 200, 200, 1, 1}, mox::MOX_UINT8, {}},
    {"cell_migration_time_u16.tif", {130, 130, 1, 48, 1}, mox::MOX_UINT16, mox::TIME_SERIES},
};

class RealImages : public ::testing::TestWithParam<RealImage> {};

TEST_P(RealImages, AreReadAndWritten)
{
    RealImage const& expected = GetParam();
    auto const path = realImages() / expected.name;
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "there is no real image " << path;
    }
    auto const image = readImage(path, expected.pages);
    EXPECT_EQ(sizesOf(*image), expected.sizes);
    EXPECT_EQ(image->getVoxelType(), expected.voxelType);

    Folder const folder;
    writeImage(*image, folder / "a.tif", ImageFormat::tiff, Compression::deflate);
    auto const back = readImage(folder / "a.tif", {});
    EXPECT_EQ(sizesOf(*back), expected.sizes);
    std::size_t const bytes = mox::helper::getSizeOf(expected.voxelType);
    EXPECT_TRUE(bytes == 1   ? voxelsOf<std::uint8_t>(*back) == voxelsOf<std::uint8_t>(*image)
                : bytes == 2 ? voxelsOf<std::uint16_t>(*back) == voxelsOf<std::uint16_t>(*image)
                             : voxelsOf<std::uint32_t>(*back) == voxelsOf<std::uint32_t>(*image));
}

INSTANTIATE_TEST_SUITE_P(Shared, RealImages, ::testing::ValuesIn(images), [](auto const& test) {
    std::string name = test.param.name;
    return name.substr(0, name.find('.'));
});

} // namespace
} // namespace moxel::testing
