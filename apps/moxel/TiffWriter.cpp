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
        for (unsigned int time = 0; time < image_.getSize(mox::TIME_SERIES); ++time) {
            for (unsigned int plan = 0; plan < image_.getSize(mox::PLANS); ++plan) {
                for (unsigned int channel = 0; channel < image_.getSize(mox::SPECTRAL_SERIES); ++channel) {
                    writePage({plan, time, channel});
                }
            }
        }
    }

private:
    template <class T>
    void set(ttag_t tag, T value)
    {
        tiff_.require(TIFFSetField(tiff_.get(), tag, value) == 1);
    }

    void writePage(PagePosition const& position)
    {
        writeTags();
        unsigned int const columns = image_.getSize(mox::COLUMNS);
        for (unsigned int row = 0; row < image_.getSize(mox::ROWS); ++row) {
            interrupt::check();
            image_.readRowAt(columns, row_.data(), 0, row, position.plan, position.time, position.channel);
            tiff_.require(TIFFWriteScanline(tiff_.get(), row_.data(), row, 0) == 1);
        }
        tiff_.require(TIFFWriteDirectory(tiff_.get()) == 1);
    }

    void writeTags()
    {
        constexpr std::uint64_t stripBytes = 256U << 10U;
        TiffVoxelType const& form = formOf(image_.getVoxelType());
        std::uint64_t const rowsPerStrip = std::max<std::uint64_t>(1, stripBytes / row_.size());
        set(TIFFTAG_IMAGEWIDTH, image_.getSize(mox::COLUMNS));
        set(TIFFTAG_IMAGELENGTH, image_.getSize(mox::ROWS));
        set(TIFFTAG_BITSPERSAMPLE, int{form.bits});
        set(TIFFTAG_SAMPLEFORMAT, int{form.sampleFormat});
        set(TIFFTAG_SAMPLESPERPIXEL, 1);
        set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        set(TIFFTAG_COMPRESSION, compression_ == Compression::none ? COMPRESSION_NONE : COMPRESSION_ADOBE_DEFLATE);
        set(TIFFTAG_ROWSPERSTRIP,
            static_cast<std::uint32_t>(std::min<std::uint64_t>(rowsPerStrip, image_.getSize(mox::ROWS))));
        writeResolution();
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
