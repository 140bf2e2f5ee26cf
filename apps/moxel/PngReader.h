#pragma once

#include <filesystem>
#include <string>

#include "apps/moxel/ImageReader.h"
#include "apps/moxel/PngCalls.h"

namespace moxel {

/// A PNG file: one page, channels as spectral series, stored numbers as they are. A palette is replaced by its
/// colours.
class PngReader final : public ImageReader {
public:
    /// Throws `FileError`.
    explicit PngReader(std::filesystem::path const& path);
    ~PngReader() override;

    unsigned int numOfPages() const override { return 1; }
    unsigned int channelsPerPage() const override { return header_.sizes[mox::SPECTRAL_SERIES]; }
    PagePosition positionOf(unsigned int) const override { return {}; }
    void readPage(unsigned int page, mox::ImageModel& image, PagePosition const& position) override;

private:
    void readHeader();
    void readCalibration();
    void readInterlaced(mox::ImageModel& image, PagePosition const& position);
    void readRows(mox::ImageModel& image, PagePosition const& position);
    void store(png_const_bytep line, unsigned int row, mox::ImageModel& image, PagePosition const& position) const;

    std::string error_;
    png::File file_;
    png_structp png_;
    png_infop info_ = nullptr;
};

} // namespace moxel
