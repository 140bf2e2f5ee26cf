#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "apps/moxel/ImageReader.h"
#include "apps/moxel/TiffDescription.h"
#include "apps/moxel/TiffHandle.h"

namespace moxel {

/// A TIFF file whose pages are equal in size and type. Pages are plans unless the description tag or the caller says
/// otherwise; the samples of a pixel are spectral series. Stored numbers are taken as they are, whatever the
/// photometric interpretation; smaller and reduced copies and masks are passed over.
class TiffReader final : public ImageReader {
public:
    /// `pages` is the dimension that the pages run through, against what the file tells. Throws `FileError`.
    TiffReader(std::filesystem::path const& path, std::optional<mox::ImageDimension> pages);

    unsigned int numOfPages() const override { return static_cast<unsigned int>(directories_.size()); }
    unsigned int channelsPerPage() const override { return format_.samples; }
    PagePosition positionOf(unsigned int page) const override;
    void readPage(unsigned int page, mox::ImageModel& image, PagePosition const& position) override;

private:
    struct Format {
        std::uint32_t columns;
        std::uint32_t rows;
        std::uint16_t bits;
        std::uint16_t sampleFormat;
        std::uint16_t samples;
        std::uint16_t planes;

        bool operator==(Format const&) const = default;
    };
    struct Target {
        mox::ImageModel& image;
        PagePosition position;
    };

    void findPages();
    Format readFormat() const;
    void requirePlausiblePage(Format const& format) const;
    std::uint64_t storedBytes() const;
    void describe(std::optional<mox::ImageDimension> pages);
    void readResolution();
    void setSizes();

    std::size_t samplesPerPixel() const { return format_.planes == PLANARCONFIG_CONTIG ? format_.samples : 1; }
    bool isPacked() const { return format_.bits % 8 != 0; }
    void requireRowBytes(std::uint64_t bytes, std::uint32_t pixels) const;
    void readStrips(Target const& target);
    void readTiles(Target const& target);
    void readTile(Target const& target, std::uint32_t column, std::uint32_t row, std::uint16_t plane,
                  std::vector<std::byte>& tile);
    void store(std::byte const* line, std::size_t pixels, std::uint32_t column, std::uint32_t row, unsigned int channel,
               Target const& target) const;

    std::uint64_t fileBytes_;
    TiffHandle tiff_;
    std::vector<toff_t> directories_;
    Format format_ = {};
    std::vector<PageAxis> axes_;
};

} // namespace moxel
