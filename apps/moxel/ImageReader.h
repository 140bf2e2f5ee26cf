#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <array>
#include <cstddef>
#include <string>

namespace moxel {

/// By `mox::ImageDimension`.
constexpr std::size_t numOfDimensions = 5;

/// What is known of an image before its voxels are read.
struct ImageHeader {
    mox::VoxelTypes voxelType = mox::MOX_UINT8;
    std::array<unsigned int, numOfDimensions> sizes = {1, 1, 1, 1, 1};
    /// 0 is a step that is not known.
    std::array<double, numOfDimensions> step = {};
    std::array<double, numOfDimensions> origin = {};
    std::string unit;
    std::string description;
    mox::ImageInterpretation interpretation = mox::INTERPRETATION_VALUE;

    /// Gives the image all of it. Throws `FileError` when there is not enough memory.
    void applyTo(mox::ImageModel& image) const;
};

/// Where a page begins in the image.
struct PagePosition {
    unsigned int plan = 0;
    unsigned int time = 0;
    unsigned int channel = 0;
};

/// An open image file. Its size claims have been held against what the file can hold; its voxels are read page by
/// page. A page is one plan of one or more channels.
class ImageReader {
public:
    ImageReader(ImageReader const&) = delete;
    ImageReader& operator=(ImageReader const&) = delete;
    virtual ~ImageReader() = default;

    ImageHeader const& header() const { return header_; }

    virtual unsigned int numOfPages() const = 0;
    virtual unsigned int channelsPerPage() const = 0;
    virtual PagePosition positionOf(unsigned int page) const = 0;

    /// Reads a page into the image from the position on. Throws `FileError` and, at a request to stop, `Cancelled`.
    virtual void readPage(unsigned int page, mox::ImageModel& image, PagePosition const& position) = 0;

protected:
    ImageReader() = default;

    ImageHeader header_;
};

/// The memory of a row, the whole width.
void* rowOf(mox::ImageModel& image, unsigned int row, PagePosition const& position);

} // namespace moxel
