#include "apps/moxel/TiffWriter.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageJDescription.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/TiffHandle.h"
#include "apps/moxel/TiffVoxelType.h"

namespace moxel {

namespace {

TiffVoxelType const& formOf(mox::VoxelTypes voxelType)
{
    auto const* const found = std::find_if(std::begin(tiffVoxelTypes), std::end(tiffVoxelTypes),
                                           [&](TiffVoxelType const& type) { return type.voxelType == voxelType; });
    if (found == std::end(tiffVoxelTypes)) {
        throw FileError("TIFF has no voxels of type " + std::string(mox::helper::getText(voxelType).c_str()));
    }
    return *found;
}

std::uint64_t numOfPages(mox::ImageModel const& image)
{
    return std::uint64_t{image.getSize(mox::PLANS)} * image.getSize(mox::TIME_SERIES) *
           image.getSize(mox::SPECTRAL_SERIES);
}

std::uint64_t rowBytesOf(mox::ImageModel const& image)
{
    return std::uint64_t{image.getSize(mox::COLUMNS)} * mox::helper::getSizeOf(image.getVoxelType());
}

char const* modeFor(mox::ImageModel const& image)
{
    std::uint64_t const pages = numOfPages(image);
    return needsBigTiff(rowBytesOf(image) * image.getSize(mox::ROWS) * pages, pages) ? "w8" : "w";
}

/// Voxels that libtiff collects before it writes or compresses them.
constexpr tmsize_t bufferBytes = 256 << 10;

class TiffWriter {
public:
    TiffWriter(mox::ImageModel const& image, std::filesystem::path const& path, Compression compression)
        : image_(image)
        , compression_(compression)
        , tiff_(path, modeFor(image))
        , row_(rowBytesOf(image))
    {
    }

    void write()
    {
        set(TIFFTAG_IMAGEDESCRIPTION, composeImageJDescription(image_).c_str());
        compression_ == Compression::none ? writeContiguously() : writePageByPage();
    }

private:
    template <class T>
    void set(ttag_t tag, T value)
    {
        tiff_.require(TIFFSetField(tiff_.get(), tag, value) == 1);
    }

    template <class Work>
    void forEachPage(Work const& work) const
    {
        for (unsigned int time = 0; time < image_.getSize(mox::TIME_SERIES); ++time) {
            for (unsigned int plan = 0; plan < image_.getSize(mox::PLANS); ++plan) {
                for (unsigned int channel = 0; channel < image_.getSize(mox::SPECTRAL_SERIES); ++channel) {
                    interrupt::check();
                    work(PagePosition{plan, time, channel});
                }
            }
        }
    }

    void writePageByPage()
    {
        forEachPage([this](PagePosition const& position) {
            writeTags();
            writeRows(position);
            tiff_.require(TIFFWriteDirectory(tiff_.get()) == 1);
        });
    }

    /// All directories, then the voxels of all pages in one piece: programs that know ImageJ's form take them for that
    /// when they are not compressed.
    void writeContiguously()
    {
        TIFF* const tiff = tiff_.get();
        forEachPage([&](PagePosition const&) {
            writeTags();
            tiff_.require(TIFFDeferStrileArrayWriting(tiff) == 1 && TIFFWriteCheck(tiff, 0, "") == 1 &&
                          TIFFWriteDirectory(tiff) == 1);
        });
        tiff_.require(TIFFSetDirectory(tiff, 0) == 1);
        forEachPage([&](PagePosition const& position) {
            tiff_.require(TIFFForceStrileArrayWriting(tiff) == 1 &&
                          TIFFWriteBufferSetup(tiff, nullptr, bufferBytes) == 1);
            writeRows(position);
            tiff_.require(TIFFFlush(tiff) == 1);
            TIFFReadDirectory(tiff); // the next one; there is none behind the last
        });
    }

    void writeRows(PagePosition const& position)
    {
        unsigned int const columns = image_.getSize(mox::COLUMNS);
        for (unsigned int row = 0; row < image_.getSize(mox::ROWS); ++row) {
            interrupt::check();
            image_.readRowAt(columns, row_.data(), 0, row, position.plan, position.time, position.channel);
            tiff_.require(TIFFWriteScanline(tiff_.get(), row_.data(), row, 0) == 1);
        }
    }

    void writeTags()
    {
        TiffVoxelType const& form = formOf(image_.getVoxelType());
        set(TIFFTAG_IMAGEWIDTH, image_.getSize(mox::COLUMNS));
        set(TIFFTAG_IMAGELENGTH, image_.getSize(mox::ROWS));
        set(TIFFTAG_BITSPERSAMPLE, int{form.bits});
        set(TIFFTAG_SAMPLEFORMAT, int{form.sampleFormat});
        set(TIFFTAG_SAMPLESPERPIXEL, 1);
        set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        set(TIFFTAG_COMPRESSION, compression_ == Compression::none ? COMPRESSION_NONE : COMPRESSION_ADOBE_DEFLATE);
        set(TIFFTAG_ROWSPERSTRIP, rowsPerStrip());
        writeResolution();
    }

    /// One strip is contiguous; compressed ones are small, for the readers that unpack them whole.
    std::uint32_t rowsPerStrip() const
    {
        std::size_t const rows = image_.getSize(mox::ROWS);
        std::size_t const few = std::max<std::size_t>(1, bufferBytes / row_.size());
        return static_cast<std::uint32_t>(compression_ == Compression::none ? rows : std::min(rows, few));
    }

    /// Pixels per unit, as nearly as a fraction can tell; the description holds the exact steps.
    void writeResolution()
    {
        double const columns = 1 / image_.getCalibrationStep(mox::COLUMNS);
        double const rows = 1 / image_.getCalibrationStep(mox::ROWS);
        auto const hasForm = [](double resolution) { return resolution >= 1e-6 && resolution <= 1e6; };
        if (!hasForm(columns) || !hasForm(rows)) {
            return;
        }
        mox::String const unit = image_.getUnit();
        set(TIFFTAG_XRESOLUTION, columns);
        set(TIFFTAG_YRESOLUTION, rows);
        set(TIFFTAG_RESOLUTIONUNIT, unit == "inch" ? RESUNIT_INCH : unit == "cm" ? RESUNIT_CENTIMETER : RESUNIT_NONE);
    }

    mox::ImageModel const& image_;
    Compression compression_;
    TiffHandle tiff_;
    std::vector<std::byte> row_;
};

} // namespace

bool needsBigTiff(std::uint64_t voxelBytes, std::uint64_t pages)
{
    constexpr std::uint64_t mostBytes = 3'900'000'000;
    constexpr std::uint64_t pageOverhead = 512;
    return voxelBytes > mostBytes || pages > (mostBytes - voxelBytes) / pageOverhead;
}

void requireTiffForm(mox::ImageModel const& image)
{
    formOf(image.getVoxelType());
}

void writeTiff(mox::ImageModel const& image, std::filesystem::path const& path, Compression compression)
{
    requireTiffForm(image);
    TiffWriter(image, path, compression).write();
}

} // namespace moxel
