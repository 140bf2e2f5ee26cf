#include "apps/moxel/ImageFile.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>

#include "apps/moxel/Errors.h"
#include "apps/moxel/PngCalls.h"
#include "apps/moxel/PngReader.h"
#include "apps/moxel/PngWriter.h"
#include "apps/moxel/TiffReader.h"
#include "apps/moxel/extension.h"

namespace moxel {

namespace fs = std::filesystem;

namespace {

std::string firstBytes(fs::path const& path)
{
    std::error_code ignored;
    if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored)) {
        throw FileError("it is not a file");
    }
    std::array<char, 8> bytes;
    auto const count = std::fread(bytes.data(), 1, bytes.size(), png::open(path, "rb").get());
    return {bytes.data(), count};
}

bool isPng(std::string const& bytes)
{
    return bytes == "\x89PNG\r\n\x1A\n";
}

bool isTiff(std::string const& bytes)
{
    using namespace std::string_view_literals;
    std::string_view const mark = std::string_view(bytes).substr(0, 4);
    return mark == "II*\0"sv || mark == "MM\0*"sv || mark == "II+\0"sv || mark == "MM\0+"sv;
}

} // namespace

std::unique_ptr<ImageReader> openImage(fs::path const& path, std::optional<mox::ImageDimension> pages)
{
    std::string const bytes = firstBytes(path);
    if (isPng(bytes)) {
        return std::make_unique<PngReader>(path);
    }
    if (isTiff(bytes)) {
        return std::make_unique<TiffReader>(path, pages);
    }
    throw FileError("it is neither PNG nor TIFF");
}

std::unique_ptr<mox::memory::InMemoryImage> readImage(fs::path const& path, std::optional<mox::ImageDimension> pages)
{
    try {
        auto const reader = openImage(path, pages);
        auto image = std::make_unique<mox::memory::InMemoryImage>();
        reader->header().applyTo(*image);
        for (unsigned int page = 0; page < reader->numOfPages(); ++page) {
            reader->readPage(page, *image, reader->positionOf(page));
        }
        return image;
    } catch (FileError const& error) {
        throw FileError("cannot read " + quoted(path) + ": " + error.what());
    }
}

ImageFormat formatOf(fs::path const& path)
{
    std::string const extension = extensionOf(path);
    if (extension == ".png") {
        return ImageFormat::png;
    }
    if (extension == ".tif" || extension == ".tiff") {
        return ImageFormat::tiff;
    }
    throw UsageError(quoted(path) + " ends in none of .png, .tif and .tiff");
}

void requireForm(mox::ImageModel const& image, ImageFormat format)
{
    for (auto const dimension : {mox::COLUMNS, mox::ROWS, mox::PLANS, mox::TIME_SERIES, mox::SPECTRAL_SERIES}) {
        if (image.getSize(dimension) == 0) {
            throw FileError("the image has no voxels");
        }
    }
    format == ImageFormat::png ? requirePngForm(image) : requireTiffForm(image);
}

void writeImage(mox::ImageModel const& image, fs::path const& path, ImageFormat format, Compression compression)
{
    requireForm(image, format);
    format == ImageFormat::png ? writePng(image, path) : writeTiff(image, path, compression);
}

} // namespace moxel
