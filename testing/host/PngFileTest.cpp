#include <gmock/gmock.h>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/PngReader.h"
#include "apps/moxel/PngWriter.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using ::testing::HasSubstr;

std::unique_ptr<mox::memory::InMemoryImage> read(std::filesystem::path const& path)
{
    return readImage(path, {});
}

template <class T>
class PngOf : public ::testing::Test {
};

using PngTypes = ::testing::Types<std::uint8_t, std::uint16_t>;
TYPED_TEST_SUITE(PngOf, PngTypes);

TYPED_TEST(PngOf, ComesBack)
{
    Folder const folder;
    for (unsigned int channels = 1; channels <= 4; ++channels) {
        mox::memory::InMemoryImage image;
        Sizes const sizes = {5, 3, 1, 1, channels};
        auto const voxels = randomVoxels<TypeParam>(sizes);
        fill(image, sizes, voxels);
        writePng(image, folder / "a.png");
        auto const back = read(folder / "a.png");
        EXPECT_EQ(back->getVoxelType(), image.getVoxelType());
        EXPECT_EQ(sizesOf(*back), sizes);
        EXPECT_EQ(voxelsOf<TypeParam>(*back), voxels);
    }
}

TEST(PngFile, KeepsSmallNumbersAsTheyAre)
{
    Folder const folder;
    writePngFile(folder / "1.png", {9, 1, 1, PNG_COLOR_TYPE_GRAY}, {{0b10110010, 0b10000000}});
    EXPECT_EQ(voxelsOf<std::uint8_t>(*read(folder / "1.png")), (Bytes{1, 0, 1, 1, 0, 0, 1, 0, 1}));
    writePngFile(folder / "2.png", {4, 1, 2, PNG_COLOR_TYPE_GRAY}, {{0b11100100}});
    EXPECT_EQ(voxelsOf<std::uint8_t>(*read(folder / "2.png")), (Bytes{3, 2, 1, 0}));
    writePngFile(folder / "4.png", {2, 1, 4, PNG_COLOR_TYPE_GRAY}, {{0xF3}});
    EXPECT_EQ(voxelsOf<std::uint8_t>(*read(folder / "4.png")), (Bytes{15, 3}));
}

TEST(PngFile, WritesBinaryImagesAsZeroAndOne)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint8_t>(image, {3, 1, 1, 1, 1}, {0, 1, 1});
    image.setInterpretation(mox::INTERPRETATION_BINARY);
    writePng(image, folder / "a.png");
    EXPECT_EQ(voxelsOf<std::uint8_t>(*read(folder / "a.png")), (Bytes{0, 1, 1}));
}

TEST(PngFile, ReplacesAPaletteByItsColours)
{
    Folder const folder;
    png_color const palette[] = {{10, 20, 30}, {40, 50, 60}};
    auto const setPalette = [&](png_structp png, png_infop info) { png_set_PLTE(png, info, palette, 2); };
    writePngFile(folder / "rgb.png", {2, 1, 1, PNG_COLOR_TYPE_PALETTE}, {{0b01000000}}, setPalette);
    auto const rgb = read(folder / "rgb.png");
    EXPECT_EQ(sizesOf(*rgb), (Sizes{2, 1, 1, 1, 3}));
    EXPECT_EQ(voxelsOf<std::uint8_t>(*rgb), (Bytes{10, 40, 20, 50, 30, 60}));

    png_byte const alpha[] = {0, 200};
    writePngFile(folder / "rgba.png", {2, 1, 8, PNG_COLOR_TYPE_PALETTE}, {{1, 0}},
                 [&](png_structp png, png_infop info) {
                     setPalette(png, info);
                     png_set_tRNS(png, info, alpha, 2, nullptr);
                 });
    EXPECT_EQ(voxelsOf<std::uint8_t>(*read(folder / "rgba.png")), (Bytes{40, 10, 50, 20, 60, 30, 200, 0}));
}

TEST(PngFile, TakesATransparentGreyForANumber)
{
    Folder const folder;
    writePngFile(folder / "a.png", {2, 1, 8, PNG_COLOR_TYPE_GRAY}, {{7, 9}}, [](png_structp png, png_infop info) {
        png_color_16 grey = {};
        grey.gray = 7;
        png_set_tRNS(png, info, nullptr, 0, &grey);
    });
    auto const image = read(folder / "a.png");
    EXPECT_EQ(sizesOf(*image), (Sizes{2, 1, 1, 1, 1}));
    EXPECT_EQ(voxelsOf<std::uint8_t>(*image), (Bytes{7, 9}));
}

TEST(PngFile, MayBeInterlaced)
{
    Folder const folder;
    PngForm form = {9, 10, 8, PNG_COLOR_TYPE_RGB};
    std::vector<Bytes> rows;
    for (unsigned int row = 0; row < form.rows; ++row) {
        rows.push_back(randomVoxels<std::uint8_t>({27, 1, 1, 1, 1}));
    }
    writePngFile(folder / "plain.png", form, rows);
    form.interlace = PNG_INTERLACE_ADAM7;
    writePngFile(folder / "interlaced.png", form, rows);
    EXPECT_EQ(voxelsOf<std::uint8_t>(*read(folder / "interlaced.png")),
              voxelsOf<std::uint8_t>(*read(folder / "plain.png")));
}

TEST(PngFile, KeepsStepsInMetres)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint8_t>(image, {1, 1, 1, 1, 1}, {1});
    image.setCalibrationStep(mox::COLUMNS, 1.0 / 2835);
    image.setCalibrationStep(mox::ROWS, 1.0 / 3000);
    image.setUnit("m");
    writePng(image, folder / "a.png");
    auto const back = read(folder / "a.png");
    EXPECT_EQ(back->getCalibrationStep(mox::COLUMNS), 1.0 / 2835);
    EXPECT_EQ(back->getCalibrationStep(mox::ROWS), 1.0 / 3000);
    EXPECT_STREQ(back->getUnit().c_str(), "m");
    image.setUnit("pc");
    writePng(image, folder / "a.png");
    EXPECT_EQ(read(folder / "a.png")->getCalibrationStep(mox::COLUMNS), 0);
}

TEST(PngFile, RefusesWhatItHasNoFormFor)
{
    mox::memory::InMemoryImage image;
    image.allocate(mox::MOX_FLOAT32, 1, 1, 1, 1, 1);
    EXPECT_THROW(requirePngForm(image), FileError);
    for (Sizes const& sizes : {Sizes{1, 1, 2, 1, 1}, Sizes{1, 1, 1, 2, 1}, Sizes{1, 1, 1, 1, 5}}) {
        image.allocate(mox::MOX_UINT8, sizes[0], sizes[1], sizes[2], sizes[3], sizes[4]);
        try {
            requirePngForm(image);
            ADD_FAILURE();
        } catch (FileError const& error) {
            EXPECT_THAT(error.what(), HasSubstr("use TIFF"));
        }
    }
}

TEST(PngFile, RefusesSizesThatItsDataCannotHold)
{
    Folder const folder;
    constexpr std::uint32_t most = 0x7FFFFFFF;
    for (std::uint8_t const bits : {std::uint8_t{1}, std::uint8_t{16}}) {
        writeBytes(folder / "a.png", pngHeader(most, most, bits, PNG_COLOR_TYPE_GRAY) + pngChunk("IDAT", Bytes(100)) +
                                         pngChunk("IEND", {}));
        EXPECT_THROW(PngReader(folder / "a.png"), FileError);
    }
}

TEST(PngFile, CountsTheDataAndNotTheFile)
{
    Folder const folder;
    writeBytes(folder / "a.png", pngHeader(1U << 15U, 1U << 15U, 8, PNG_COLOR_TYPE_GRAY) +
                                     pngChunk("tEXt", Bytes(3U << 20U, 'a')) + pngChunk("IDAT", Bytes(100)) +
                                     pngChunk("IEND", {}));
    EXPECT_THROW(PngReader(folder / "a.png"), FileError);
}

TEST(PngFile, BelievesNoChunkThatLeavesTheFile)
{
    Folder const folder;
    Bytes bytes = pngHeader(1U << 20U, 1U << 15U, 8, PNG_COLOR_TYPE_GRAY) + pngChunk("IDAT", Bytes(100));
    std::size_t const length = pngHeader(1, 1, 8, 0).size();
    bytes[length] = 0x7F; // the high byte of the length of IDAT
    writeBytes(folder / "a.png", bytes);
    EXPECT_THROW(PngReader(folder / "a.png"), FileError);
}

TEST(PngFile, RefusesTruncatedAndChangedFiles)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    Sizes const sizes = {40, 30, 1, 1, 3};
    fill(image, sizes, randomVoxels<std::uint8_t>(sizes));
    writePng(image, folder / "whole.png");
    Bytes const whole = readBytes(folder / "whole.png");
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        writeBytes(folder / "cut.png", {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
        EXPECT_THROW(read(folder / "cut.png"), FileError) << length;
    }
    Bytes changed = whole;
    changed[whole.size() / 2] ^= 1U;
    writeBytes(folder / "changed.png", changed);
    EXPECT_THROW(read(folder / "changed.png"), FileError);
}

} // namespace
} // namespace moxel::testing
