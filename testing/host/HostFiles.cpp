#include "testing/host/HostFiles.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"

namespace moxel::testing {

namespace fs = std::filesystem;

namespace {

void append(Bytes& bytes, std::uint64_t value, int count)
{
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

void appendBigEndian(Bytes& bytes, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

} // namespace

Folder::Folder()
{
    std::string name = (fs::temp_directory_path() / "moxel-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for the test's files");
    }
    path_ = name;
}

Folder::~Folder()
{
    fs::remove_all(path_);
}

std::vector<std::string> Folder::names() const
{
    std::vector<std::string> names;
    for (auto const& entry : fs::directory_iterator(path_)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void writeBytes(fs::path const& path, Bytes const& bytes)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<char const*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

Bytes readBytes(fs::path const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::uint32_t dataOffset(std::size_t numOfEntries)
{
    return static_cast<std::uint32_t>(8 + 2 + 12 * numOfEntries + 4);
}

Bytes tiffBytes(std::vector<TiffEntry> const& entries, Bytes const& data)
{
    Bytes bytes = {'I', 'I', 42, 0, 8, 0, 0, 0};
    append(bytes, entries.size(), 2);
    for (TiffEntry const& entry : entries) {
        append(bytes, entry.tag, 2);
        append(bytes, entry.type, 2);
        append(bytes, entry.count, 4);
        append(bytes, entry.value, 4);
    }
    append(bytes, 0, 4);
    return bytes + data;
}

Bytes pngChunk(std::string const& type, Bytes const& content)
{
    Bytes bytes;
    appendBigEndian(bytes, static_cast<std::uint32_t>(content.size()));
    Bytes checked(type.begin(), type.end());
    checked = checked + content;
    bytes = bytes + checked;
    appendBigEndian(bytes, static_cast<std::uint32_t>(crc32(0, checked.data(), static_cast<uInt>(checked.size()))));
    return bytes;
}

Bytes pngHeader(std::uint32_t columns, std::uint32_t rows, std::uint8_t bits, std::uint8_t colourType)
{
    Bytes content;
    appendBigEndian(content, columns);
    appendBigEndian(content, rows);
    content = content + Bytes{bits, colourType, 0, 0, 0};
    return Bytes{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'} + pngChunk("IHDR", content);
}

Bytes operator+(Bytes a, Bytes const& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

void writePngFile(fs::path const& path, PngForm const& form, std::vector<Bytes> const& rows,
                  std::function<void(png_structp, png_infop)> const& more)
{
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, form.columns, form.rows, form.bits, form.colourType, form.interlace,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (more) {
        more(png, info);
    }
    std::vector<png_bytep> pointers;
    for (Bytes const& row : rows) {
        pointers.push_back(const_cast<png_bytep>(row.data()));
    }
    png_set_rows(png, info, pointers.data());
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

void writeTiffFile(fs::path const& path, char const* mode, std::function<void(TIFF*)> const& work)
{
    TIFF* const tiff = TIFFOpen(path.c_str(), mode);
    work(tiff);
    TIFFClose(tiff);
}

void setTiffTags(TIFF* tiff, std::uint32_t columns, std::uint32_t rows, TiffVoxelType const& type)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, columns);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, rows);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, int{type.bits});
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, int{type.sampleFormat});
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 2);
}

mox::VoxelTypes voxelTypeOf(std::size_t bytes, bool isSigned, bool isFloating)
{
    auto const format = isFloating ? SAMPLEFORMAT_IEEEFP : isSigned ? SAMPLEFORMAT_INT : SAMPLEFORMAT_UINT;
    auto const* const found =
        std::find_if(std::begin(tiffVoxelTypes), std::end(tiffVoxelTypes),
                     [&](TiffVoxelType const& type) { return type.bits == 8 * bytes && type.sampleFormat == format; });
    return found->voxelType;
}

Sizes sizesOf(mox::ImageModel const& image)
{
    Sizes sizes;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        sizes[i] = image.getSize(static_cast<mox::ImageDimension>(i));
    }
    return sizes;
}

std::string failureOf(fs::path const& path)
{
    try {
        readImage(path, {});
        return "none";
    } catch (FileError const& error) {
        return error.what();
    }
}

fs::path realImages()
{
    char const* const told = std::getenv("MOXEL_TEST_IMAGES");
    return told != nullptr ? fs::path(told) : fs::path(MOXELCORE_SOURCE_DIR) / ".." / "shared" / "images";
}

} // namespace moxel::testing
