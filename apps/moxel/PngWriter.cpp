#include "apps/moxel/PngWriter.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "apps/moxel/Errors.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/PngCalls.h"
#include "apps/moxel/Samples.h"

namespace moxel {

namespace {

constexpr int colourTypes[] = {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB,
                               PNG_COLOR_TYPE_RGB_ALPHA};
constexpr unsigned int mostChannels = 4;

class PngWriter {
public:
    PngWriter(mox::ImageModel const& image, std::filesystem::path const& path)
        : image_(image)
        , channels_(image.getSize(mox::SPECTRAL_SERIES))
        , bytes_(mox::helper::getSizeOf(image.getVoxelType()))
        , file_(png::open(path, "wb"))
        , png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, &error_, png::fail, png::ignore))
    {
        if (png_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    PngWriter(PngWriter const&) = delete;
    PngWriter& operator=(PngWriter const&) = delete;
    ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

    void write()
    {
        png::guarded(png_, [this] { writeHeader(); });
        writeRows();
        png::guarded(png_, [this] { png_write_end(png_, nullptr); });
        if (std::fflush(file_.get()) != 0) {
            throw FileError(std::strerror(errno));
        }
    }

private:
    /// Within `guarded`.
    void writeHeader()
    {
        info_ = png_create_info_struct(png_);
        png_init_io(png_, file_.get());
        png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(png_, info_, image_.getSize(mox::COLUMNS), image_.getSize(mox::ROWS), static_cast<int>(bytes_ * 8),
                     colourTypes[channels_ - 1], PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        writeCalibration();
        png_write_info(png_, info_);
        if constexpr (png::swapsBytes) {
            png_set_swap(png_);
        }
    }

    void writeCalibration()
    {
        double const columnsPerMetre = std::round(1 / image_.getCalibrationStep(mox::COLUMNS));
        double const rowsPerMetre = std::round(1 / image_.getCalibrationStep(mox::ROWS));
        auto const hasForm = [](double perMetre) { return perMetre >= 1 && perMetre <= PNG_UINT_31_MAX; };
        if (image_.getUnit() == "m" && hasForm(columnsPerMetre) && hasForm(rowsPerMetre)) {
            png_set_pHYs(png_, info_, static_cast<png_uint_32>(columnsPerMetre), static_cast<png_uint_32>(rowsPerMetre),
                         PNG_RESOLUTION_METER);
        }
    }

    void writeRows()
    {
        unsigned int const columns = image_.getSize(mox::COLUMNS);
        std::vector<png_byte> row(std::size_t{columns} * bytes_);
        std::vector<png_byte> line(row.size() * channels_);
        for (unsigned int y = 0; y < image_.getSize(mox::ROWS); ++y) {
            interrupt::check();
            for (unsigned int channel = 0; channel < channels_; ++channel) {
                image_.readRowAt(columns, row.data(), 0, y, 0, 0, channel);
                copySamples(row.data(), 1, line.data() + std::size_t{channel} * bytes_, channels_, columns, bytes_);
            }
            png::guarded(png_, [&] { png_write_row(png_, line.data()); });
        }
    }

    mox::ImageModel const& image_;
    unsigned int channels_;
    unsigned int bytes_;
    std::string error_;
    png::File file_;
    png_structp png_;
    png_infop info_ = nullptr;
};

} // namespace

void requirePngForm(mox::ImageModel const& image)
{
    mox::VoxelTypes const type = image.getVoxelType();
    if (type != mox::MOX_UINT8 && type != mox::MOX_UINT16) {
        throw FileError("PNG has no voxels of type " + std::string(mox::helper::getText(type).c_str()) + "; use TIFF");
    }
    if (image.getSize(mox::PLANS) != 1 || image.getSize(mox::TIME_SERIES) != 1) {
        throw FileError("PNG has one plan and one time step; use TIFF");
    }
    if (image.getSize(mox::SPECTRAL_SERIES) > mostChannels) {
        throw FileError("PNG has 4 channels at the most; use TIFF");
    }
}

void writePng(mox::ImageModel const& image, std::filesystem::path const& path)
{
    requirePngForm(image);
    PngWriter(image, path).write();
}

} // namespace moxel
