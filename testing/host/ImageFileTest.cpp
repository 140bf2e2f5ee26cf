#include "apps/moxel/ImageFile.h"

#include <gmock/gmock.h>

#include <csignal>

#include "apps/moxel/Errors.h"
#include "apps/moxel/Interrupt.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using ::testing::HasSubstr;

TEST(ImageFile, IsKnownByItsExtensionWhenWritten)
{
    EXPECT_EQ(formatOf("a/b.PNG"), ImageFormat::png);
    EXPECT_EQ(formatOf("a.tif"), ImageFormat::tiff);
    EXPECT_EQ(formatOf("a.b.Tiff"), ImageFormat::tiff);
    for (char const* name : {"a.jpg", "a", "a.tif/b", "tif", ".tif"}) {
        EXPECT_THROW(formatOf(name), UsageError) << name;
    }
}

TEST(ImageFile, IsKnownByItsBytesWhenRead)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint8_t>(image, {2, 1, 1, 1, 1}, {3, 4});
    writeImage(image, folder / "really.tif", ImageFormat::png, Compression::deflate);
    EXPECT_EQ(voxelsOf<std::uint8_t>(*readImage(folder / "really.tif", {})), (Bytes{3, 4}));
}

TEST(ImageFile, TellsWhatCannotBeRead)
{
    Folder const folder;
    EXPECT_THAT(failureOf(folder / "none.tif"), HasSubstr("none.tif\": No such file"));
    EXPECT_THAT(failureOf(folder / "."), HasSubstr("it is not a file"));
    writeBytes(folder / "text.tif", {'h', 'i'});
    EXPECT_THAT(failureOf(folder / "text.tif"), HasSubstr("neither PNG nor TIFF"));
    writeBytes(folder / "empty.png", {});
    EXPECT_THAT(failureOf(folder / "empty.png"), HasSubstr("neither PNG nor TIFF"));
}

TEST(ImageFile, HoldsNoEmptyImage)
{
    mox::memory::InMemoryImage const image;
    EXPECT_THROW(requireForm(image, ImageFormat::png), FileError);
    EXPECT_THROW(requireForm(image, ImageFormat::tiff), FileError);
}

class InterruptedImageFile : public ::testing::Test {
protected:
    void TearDown() override { interrupt::watch(); }

    static void stop()
    {
        interrupt::watch();
        std::raise(SIGINT);
        std::raise(SIGTERM);
    }
};

TEST_F(InterruptedImageFile, IsNeitherReadNorWritten)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint8_t>(image, {2, 1, 1, 1, 1}, {3, 4});
    for (auto const format : {ImageFormat::png, ImageFormat::tiff}) {
        interrupt::watch();
        writeImage(image, folder / "a", format, Compression::deflate);
        stop();
        EXPECT_THROW(readImage(folder / "a", {}), Cancelled);
        EXPECT_THROW(writeImage(image, folder / "a", format, Compression::deflate), Cancelled);
    }
}

} // namespace
} // namespace moxel::testing
