#include "apps/moxel/TiffReader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

#include "apps/moxel/Errors.h"
#include "apps/moxel/FileLimits.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/NumberText.h"
#include "apps/moxel/Samples.h"
#include "apps/moxel/TiffVoxelType.h"

namespace moxel {

namespace {

/// The most that one stored byte can become. The codecs without a bound of their own get a generous one.
std::uint64_t expansionOf(std::uint16_t compression)
{
    switch (compression) {
    case COMPRESSION_NONE:
        return 1;
    case COMPRESSION_PACKBITS:
        return 128;
    case COMPRESSION_LZW:
        return 4096;
    case COMPRESSION_DEFLATE:
    case COMPRESSION_ADOBE_DEFLATE:
        return deflateRatio;
    default:
        return 65536;
    }
}

mox::VoxelTypes voxelTypeOf(std::uint16_t bits, std::uint16_t sampleFormat)
{
    std::uint16_t const format = sampleFormat == SAMPLEFORMAT_VOID ? std::uint16_t{SAMPLEFORMAT_UINT} : sampleFormat;
    if (format == SAMPLEFORMAT_UINT && bits >= 1 && bits < 16) {
        return bits <= 8 ? mox::MOX_UINT8 : mox::MOX_UINT16;
    }
    for (TiffVoxelType const& type : tiffVoxelTypes) {
        if (type.bits == bits && type.sampleFormat == format) {
            return type.voxelType;
        }
    }
    throw FileError("samples of " + std::to_string(bits) + " bits in sample format " + std::to_string(sampleFormat) +
                    " are not supported");
}

/// To seven digits, which is what libtiff tells of a resolution: 0.107, not 0.10699999667.
double stepOf(float resolution)
{
    if (!(resolution > 0)) {
        return 0;
    }
    char digits[32];
    auto const end = std::to_chars(digits, digits + sizeof digits, 1.0 / resolution, std::chars_format::general, 7).ptr;
    return parseNumber<double>({digits, end});
}

} // namespace

TiffReader::TiffReader(std::filesystem::path const& path, std::optional<mox::ImageDimension> pages)
    : fileBytes_(std::filesystem::file_size(path))
    , tiff_(path, "rm") // not mapped into memory: a file cut off meanwhile is an error, not a crash
{
    findPages();
    tiff_.require(TIFFSetSubDirectory(tiff_.get(), directories_.front()) == 1);
    header_.voxelType = voxelTypeOf(format_.bits, format_.sampleFormat);
    describe(pages);
    readResolution();
    setSizes();
}

void TiffReader::findPages()
{
    constexpr std::uint32_t secondary = FILETYPE_REDUCEDIMAGE | FILETYPE_MASK;
    do {
        interrupt::check();
        if ((tiff_.tag<std::uint32_t>(TIFFTAG_SUBFILETYPE) & secondary) != 0) {
            continue;
        }
        Format const format = readFormat();
        if (!directories_.empty() && format != format_) {
            throw FileError("page " + std::to_string(directories_.size() + 1) +
                            " differs from the first in size or type");
        }
        requirePlausiblePage(format);
        format_ = format;
        directories_.push_back(TIFFCurrentDirOffset(tiff_.get()));
    } while (TIFFReadDirectory(tiff_.get()) == 1);
    tiff_.require(!directories_.empty());
    if (TIFFLastDirectory(tiff_.get()) == 0) {
        throw FileError("the chain of its pages does not end");
    }
}

TiffReader::Format TiffReader::readFormat() const
{
    auto const compression = tiff_.tag<std::uint16_t>(TIFFTAG_COMPRESSION);
    auto const photometric = tiff_.tag<std::uint16_t>(TIFFTAG_PHOTOMETRIC);
    if (photometric == PHOTOMETRIC_LOGL || photometric == PHOTOMETRIC_LOGLUV ||
        (photometric == PHOTOMETRIC_YCBCR && compression != COMPRESSION_JPEG)) {
        throw FileError("its colours are coded in a way that is not supported");
    }
    if (TIFFIsCODECConfigured(compression) == 0) {
        throw FileError("its compression, number " + std::to_string(compression) + ", is not supported");
    }
    if (photometric == PHOTOMETRIC_YCBCR) {
        TIFFSetField(tiff_.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    }
    return {tiff_.tag<std::uint32_t>(TIFFTAG_IMAGEWIDTH),      tiff_.tag<std::uint32_t>(TIFFTAG_IMAGELENGTH),
            tiff_.tag<std::uint16_t>(TIFFTAG_BITSPERSAMPLE),   tiff_.tag<std::uint16_t>(TIFFTAG_SAMPLEFORMAT),
            tiff_.tag<std::uint16_t>(TIFFTAG_SAMPLESPERPIXEL), tiff_.tag<std::uint16_t>(TIFFTAG_PLANARCONFIG)};
}

void TiffReader::requirePlausiblePage(Format const& format) const
{
    std::uint64_t const planes = format.planes == PLANARCONFIG_CONTIG ? 1 : format.samples;
    std::uint64_t const samples = format.planes == PLANARCONFIG_CONTIG ? format.samples : 1;
    bool const isTiled = TIFFIsTiled(tiff_.get()) != 0;
    auto const claimed = isTiled
                             ? product({TIFFNumberOfTiles(tiff_.get()), TIFFTileSize64(tiff_.get())})
                             : packedBytes(std::uint64_t{format.columns} * samples, format.bits, format.rows * planes);
    requirePlausible(claimed, storedBytes(), expansionOf(tiff_.tag<std::uint16_t>(TIFFTAG_COMPRESSION)));
}

std::uint64_t TiffReader::storedBytes() const
{
    std::uint32_t const parts =
        TIFFIsTiled(tiff_.get()) != 0 ? TIFFNumberOfTiles(tiff_.get()) : TIFFNumberOfStrips(tiff_.get());
    std::uint64_t total = 0;
    for (std::uint32_t part = 0; part < parts && total < fileBytes_ && part < fileBytes_; ++part) {
        total += std::min(fileBytes_, TIFFGetStrileByteCount(tiff_.get(), part));
    }
    return std::min(total, fileBytes_);
}

void TiffReader::describe(std::optional<mox::ImageDimension> pages)
{
    char const* const text = tiff_.tag<char const*>(TIFFTAG_IMAGEDESCRIPTION, "");
    TiffPages const present = {numOfPages(), format_.samples,
                               std::uint64_t{format_.columns} * format_.rows * format_.samples};
    TiffDescription const description = parseTiffDescription(text, present);
    header_.step = description.step;
    header_.origin = description.origin;
    header_.unit = description.unit;
    header_.description = description.text;
    header_.interpretation = description.interpretation;
    bool const isTold = !pages && !description.axes.empty();
    axes_ = isTold ? description.axes : std::vector<PageAxis>{{pages.value_or(mox::PLANS), numOfPages()}};
    if (moxel::numOfPages(axes_) != numOfPages()) {
        throw FileError("its description tells of other dimensions than its " + std::to_string(numOfPages()) +
                        " pages have; name the dimension of the pages with --pages");
    }
}

/// Without a unit, a resolution of one pixel tells nothing.
void TiffReader::readResolution()
{
    if (header_.step[mox::COLUMNS] != 0 || header_.step[mox::ROWS] != 0) {
        return;
    }
    auto const unit = tiff_.tag<std::uint16_t>(TIFFTAG_RESOLUTIONUNIT);
    double const columns = stepOf(tiff_.tag<float>(TIFFTAG_XRESOLUTION));
    double const rows = stepOf(tiff_.tag<float>(TIFFTAG_YRESOLUTION));
    if (unit == RESUNIT_NONE && header_.unit.empty() && columns == 1 && rows == 1) {
        return;
    }
    header_.step[mox::COLUMNS] = columns;
    header_.step[mox::ROWS] = rows;
    if (header_.unit.empty() && columns != 0) {
        header_.unit = unit == RESUNIT_INCH ? "inch" : unit == RESUNIT_CENTIMETER ? "cm" : "";
    }
}

void TiffReader::setSizes()
{
    std::array<std::uint64_t, numOfDimensions> sizes = {format_.columns, format_.rows, 1, 1, format_.samples};
    for (PageAxis const& axis : axes_) {
        sizes[axis.dimension] *= axis.size;
    }
    for (std::size_t i = 0; i < numOfDimensions; ++i) {
        if (sizes[i] > std::numeric_limits<unsigned int>::max()) {
            throw FileError("it has too many channels");
        }
        header_.sizes[i] = static_cast<unsigned int>(sizes[i]);
    }
}

PagePosition TiffReader::positionOf(unsigned int page) const
{
    std::array<unsigned int, numOfDimensions> position = {};
    std::array<unsigned int, numOfDimensions> stride = {1, 1, 1, 1, format_.samples};
    for (PageAxis const& axis : axes_) {
        position[axis.dimension] += page % axis.size * stride[axis.dimension];
        stride[axis.dimension] *= axis.size;
        page /= axis.size;
    }
    return {position[mox::PLANS], position[mox::TIME_SERIES], position[mox::SPECTRAL_SERIES]};
}

void TiffReader::readPage(unsigned int page, mox::ImageModel& image, PagePosition const& position)
{
    tiff_.require(TIFFSetSubDirectory(tiff_.get(), directories_[page]) == 1);
    if (readFormat() != format_) {
        throw FileError("it has changed meanwhile");
    }
    tiff_.forgetWarnings();
    if (TIFFIsTiled(tiff_.get()) != 0) {
        readTiles({image, position});
    } else {
        readStrips({image, position});
    }
}

/// What libtiff decodes to must be what is expected of it.
void TiffReader::requireRowBytes(std::uint64_t bytes, std::uint32_t pixels) const
{
    if (packedBytes(pixels * samplesPerPixel(), format_.bits, 1) != bytes) {
        throw FileError("its pixels are coded in a way that is not supported");
    }
}

void TiffReader::readStrips(Target const& target)
{
    bool const isDirect = samplesPerPixel() == 1 && !isPacked();
    auto const planes = static_cast<std::uint16_t>(format_.samples / samplesPerPixel());
    std::size_t const rowBytes = TIFFScanlineSize64(tiff_.get());
    requireRowBytes(rowBytes, format_.columns);
    std::vector<std::byte> line(isDirect ? 0 : rowBytes);
    for (std::uint16_t plane = 0; plane < planes; ++plane) {
        PagePosition const position = {target.position.plan, target.position.time, target.position.channel + plane};
        for (std::uint32_t row = 0; row < format_.rows; ++row) {
            interrupt::check();
            void* const decoded = isDirect ? rowOf(target.image, row, position) : line.data();
            tiff_.require(TIFFReadScanline(tiff_.get(), decoded, row, plane) == 1);
            tiff_.requireSilence();
            if (!isDirect) {
                store(line.data(), format_.columns, 0, row, plane, target);
            }
        }
    }
}

void TiffReader::readTiles(Target const& target)
{
    auto const width = tiff_.tag<std::uint32_t>(TIFFTAG_TILEWIDTH);
    auto const length = tiff_.tag<std::uint32_t>(TIFFTAG_TILELENGTH);
    auto const planes = static_cast<std::uint16_t>(format_.samples / samplesPerPixel());
    requireRowBytes(TIFFTileRowSize64(tiff_.get()), width);
    std::vector<std::byte> tile(static_cast<std::size_t>(TIFFTileSize(tiff_.get())));
    for (std::uint16_t plane = 0; plane < planes; ++plane) {
        for (std::uint64_t row = 0; row < format_.rows; row += length) {
            for (std::uint64_t column = 0; column < format_.columns; column += width) {
                readTile(target, static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(row), plane, tile);
            }
        }
    }
}

void TiffReader::readTile(Target const& target, std::uint32_t column, std::uint32_t row, std::uint16_t plane,
                          std::vector<std::byte>& tile)
{
    interrupt::check();
    tiff_.require(TIFFReadTile(tiff_.get(), tile.data(), column, row, 0, plane) > 0);
    tiff_.requireSilence();
    auto const rowBytes = static_cast<std::size_t>(TIFFTileRowSize(tiff_.get()));
    auto const rows = std::min(tiff_.tag<std::uint32_t>(TIFFTAG_TILELENGTH), format_.rows - row);
    auto const columns = std::min(tiff_.tag<std::uint32_t>(TIFFTAG_TILEWIDTH), format_.columns - column);
    for (std::uint32_t i = 0; i < rows; ++i) {
        store(tile.data() + i * rowBytes, columns, column, row + i, plane, target);
    }
}

/// Gives a line of decoded pixels to the rows of its channels.
void TiffReader::store(std::byte const* line, std::size_t pixels, std::uint32_t column, std::uint32_t row,
                       unsigned int channel, Target const& target) const
{
    unsigned int const bytes = mox::helper::getSizeOf(header_.voxelType);
    std::vector<std::byte> unpacked;
    if (isPacked()) {
        unpacked.resize(pixels * samplesPerPixel() * bytes);
        unpackSamples(line, format_.bits, unpacked.data(), pixels * samplesPerPixel());
        line = unpacked.data();
    }
    for (unsigned int sample = 0; sample < samplesPerPixel(); ++sample) {
        PagePosition const position = {target.position.plan, target.position.time,
                                       target.position.channel + channel + sample};
        auto* const to = static_cast<std::byte*>(rowOf(target.image, row, position)) + std::size_t{column} * bytes;
        copySamples(line + std::size_t{sample} * bytes, samplesPerPixel(), to, 1, pixels, bytes);
    }
}

} // namespace moxel
