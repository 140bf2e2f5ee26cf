#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <png.h>
#include <tiffio.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "apps/moxel/TiffVoxelType.h"

// Files and images for the tests of the host. Files are written by libpng and libtiff or byte by byte, never by the
// code under test.

namespace moxel::testing {

using Bytes = std::vector<std::uint8_t>;
using Sizes = std::array<unsigned int, 5>;

/// A folder that is removed with all that is in it.
class Folder {
public:
    Folder();
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder();

    std::filesystem::path operator/(std::string const& name) const { return path_ / name; }
    /// Names of all that is in it, in order.
    std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

void writeBytes(std::filesystem::path const& path, Bytes const& bytes);
Bytes readBytes(std::filesystem::path const& path);

/// An entry of a TIFF directory; the value is a number or an offset.
struct TiffEntry {
    std::uint16_t tag;
    std::uint16_t type;
    std::uint32_t count;
    std::uint32_t value;
};

/// A little-endian TIFF of one page: header, directory, data. `dataOffset` is where the data come to lie.
Bytes tiffBytes(std::vector<TiffEntry> const& entries, Bytes const& data);
std::uint32_t dataOffset(std::size_t numOfEntries);

/// A chunk of a PNG file with its length and checksum.
Bytes pngChunk(std::string const& type, Bytes const& content);
Bytes pngHeader(std::uint32_t columns, std::uint32_t rows, std::uint8_t bits, std::uint8_t colourType);
Bytes operator+(Bytes a, Bytes const& b);

struct PngForm {
    std::uint32_t columns;
    std::uint32_t rows;
    int bits;
    int colourType;
    int interlace = PNG_INTERLACE_NONE;
};

/// Writes packed rows as they are; `more` may set further chunks.
void writePngFile(std::filesystem::path const& path, PngForm const& form, std::vector<Bytes> const& rows,
                  std::function<void(png_structp, png_infop)> const& more = nullptr);

/// Opens a file for writing and closes it when the work is done.
void writeTiffFile(std::filesystem::path const& path, char const* mode, std::function<void(TIFF*)> const& work);

/// The tags of a page of one sample.
void setTiffTags(TIFF* tiff, std::uint32_t columns, std::uint32_t rows, TiffVoxelType const& type);

mox::VoxelTypes voxelTypeOf(std::size_t bytes, bool isSigned, bool isFloating);

/// The voxels in memory order: columns fastest, then rows, plans, time series, spectral series.
template <class T>
std::vector<T> voxelsOf(mox::ImageModel const& image)
{
    std::vector<T> voxels;
    std::vector<T> row(image.getSize(mox::COLUMNS));
    for (unsigned int s = 0; s < image.getSize(mox::SPECTRAL_SERIES); ++s) {
        for (unsigned int t = 0; t < image.getSize(mox::TIME_SERIES); ++t) {
            for (unsigned int z = 0; z < image.getSize(mox::PLANS); ++z) {
                for (unsigned int y = 0; y < image.getSize(mox::ROWS); ++y) {
                    image.readRowAt(image.getSize(mox::COLUMNS), row.data(), 0, y, z, t, s);
                    voxels.insert(voxels.end(), row.begin(), row.end());
                }
            }
        }
    }
    return voxels;
}

template <class T>
void fill(mox::ImageModel& image, Sizes const& sizes, std::vector<T> const& voxels)
{
    image.allocate(voxelTypeOf(sizeof(T), std::is_signed_v<T>, std::is_floating_point_v<T>), sizes[0], sizes[1],
                   sizes[2], sizes[3], sizes[4]);
    T const* row = voxels.data();
    for (unsigned int s = 0; s < sizes[4]; ++s) {
        for (unsigned int t = 0; t < sizes[3]; ++t) {
            for (unsigned int z = 0; z < sizes[2]; ++z) {
                for (unsigned int y = 0; y < sizes[1]; ++y, row += sizes[0]) {
                    image.writeRowAt(sizes[0], row, 0, y, z, t, s);
                }
            }
        }
    }
}

/// Any bit patterns but, in floating types, NaN.
template <class T>
std::vector<T> randomVoxels(Sizes const& sizes)
{
    static std::mt19937_64 random(1);
    std::vector<T> voxels(std::size_t{sizes[0]} * sizes[1] * sizes[2] * sizes[3] * sizes[4]);
    for (T& voxel : voxels) {
        if constexpr (std::is_floating_point_v<T>) {
            voxel = std::uniform_real_distribution<T>(T(-1e6), T(1e6))(random);
        } else {
            voxel = static_cast<T>(random());
        }
    }
    return voxels;
}

Sizes sizesOf(mox::ImageModel const& image);

/// What reading the file throws, or "none".
std::string failureOf(std::filesystem::path const& path);

/// The folder of the real test images, which need not be there.
std::filesystem::path realImages();

} // namespace moxel::testing
