#include "apps/moxel/PngReader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "apps/moxel/FileLimits.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/Samples.h"

namespace moxel {

namespace {

/// Bytes of the chunks that hold voxels, as far as the file has them. Leaves the file at its begin.
std::uint64_t storedBytes(std::FILE* file)
{
    constexpr long signature = 8;
    constexpr long checksum = 4;
    std::uint64_t total = 0;
    unsigned char head[8];
    std::fseek(file, signature, SEEK_SET);
    while (std::fread(head, 1, sizeof head, file) == sizeof head) {
        std::uint32_t const length = png_get_uint_32(head);
        if (std::memcmp(head + 4, "IDAT", 4) == 0) {
            total += length;
        }
        fseeko(file, off_t{length} + checksum, SEEK_CUR);
    }
    std::fseek(file, 0, SEEK_END);
    auto const fileBytes = static_cast<std::uint64_t>(ftello(file));
    std::rewind(file);
    return std::min(total, fileBytes);
}

} // namespace

PngReader::PngReader(std::filesystem::path const& path)
    : file_(png::open(path, "rb"))
    , png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, &error_, png::fail, png::ignore))
{
    if (png_ == nullptr) {
        throw std::bad_alloc();
    }
    try {
        readHeader();
    } catch (...) {
        png_destroy_read_struct(&png_, &info_, nullptr);
        throw;
    }
}

PngReader::~PngReader()
{
    png_destroy_read_struct(&png_, &info_, nullptr);
}

void PngReader::readHeader()
{
    png::guarded(png_, [this] {
        info_ = png_create_info_struct(png_);
        png_init_io(png_, file_.get());
        png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    });
    std::uint64_t const stored = storedBytes(file_.get());
    png::guarded(png_, [this] { png_read_info(png_, info_); });
    requirePlausible(packedBytes(std::uint64_t{png_get_image_width(png_, info_)} * png_get_channels(png_, info_),
                                 png_get_bit_depth(png_, info_), png_get_image_height(png_, info_)),
                     stored, deflateRatio);
    png::guarded(png_, [this] {
        if (png_get_color_type(png_, info_) == PNG_COLOR_TYPE_PALETTE) {
            png_set_palette_to_rgb(png_);
            if (png_get_valid(png_, info_, PNG_INFO_tRNS) != 0) {
                png_set_tRNS_to_alpha(png_);
            }
        }
        png_set_packing(png_);
        if constexpr (png::swapsBytes) {
            png_set_swap(png_);
        }
        png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
    });
    header_.voxelType = png_get_bit_depth(png_, info_) == 16 ? mox::MOX_UINT16 : mox::MOX_UINT8;
    header_.sizes = {png_get_image_width(png_, info_), png_get_image_height(png_, info_), 1, 1,
                     png_get_channels(png_, info_)};
    readCalibration();
}

void PngReader::readCalibration()
{
    png_uint_32 columnsPerMetre = 0;
    png_uint_32 rowsPerMetre = 0;
    int unit = PNG_RESOLUTION_UNKNOWN;
    png_get_pHYs(png_, info_, &columnsPerMetre, &rowsPerMetre, &unit);
    if (unit != PNG_RESOLUTION_METER || columnsPerMetre == 0 || rowsPerMetre == 0) {
        return;
    }
    header_.step[mox::COLUMNS] = 1.0 / columnsPerMetre;
    header_.step[mox::ROWS] = 1.0 / rowsPerMetre;
    header_.unit = 'm';
}

void PngReader::readPage(unsigned int, mox::ImageModel& image, PagePosition const& position)
{
    if (png_get_interlace_type(png_, info_) == PNG_INTERLACE_NONE) {
        readRows(image, position);
    } else {
        readInterlaced(image, position);
    }
    png::guarded(png_, [this] { png_read_end(png_, nullptr); });
}

void PngReader::readRows(mox::ImageModel& image, PagePosition const& position)
{
    bool const isDirect = channelsPerPage() == 1;
    std::vector<png_byte> line(isDirect ? 0 : png_get_rowbytes(png_, info_));
    for (unsigned int row = 0; row < header_.sizes[mox::ROWS]; ++row) {
        interrupt::check();
        auto* const target = isDirect ? static_cast<png_bytep>(rowOf(image, row, position)) : line.data();
        png::guarded(png_, [&] { png_read_row(png_, target, nullptr); });
        if (!isDirect) {
            store(target, row, image, position);
        }
    }
}

void PngReader::readInterlaced(mox::ImageModel& image, PagePosition const& position)
{
    constexpr int passes = 7;
    unsigned int const rows = header_.sizes[mox::ROWS];
    std::size_t const rowBytes = png_get_rowbytes(png_, info_);
    std::vector<png_byte> lines(rowBytes * rows);
    for (int pass = 0; pass < passes; ++pass) {
        for (unsigned int row = 0; row < rows; ++row) {
            interrupt::check();
            png::guarded(png_, [&] { png_read_row(png_, lines.data() + row * rowBytes, nullptr); });
        }
    }
    for (unsigned int row = 0; row < rows; ++row) {
        store(lines.data() + row * rowBytes, row, image, position);
    }
}

void PngReader::store(png_const_bytep line, unsigned int row, mox::ImageModel& image,
                      PagePosition const& position) const
{
    unsigned int const bytes = mox::helper::getSizeOf(header_.voxelType);
    for (unsigned int channel = 0; channel < channelsPerPage(); ++channel) {
        void* const target = rowOf(image, row, {position.plan, position.time, position.channel + channel});
        copySamples(line + std::size_t{channel} * bytes, channelsPerPage(), target, 1, header_.sizes[mox::COLUMNS],
                    bytes);
    }
}

} // namespace moxel
