#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <memory>

#include "Core/private/access/Position.h"
#include "Segmentation/private/GreyClasses.h"

namespace mox::segmentation {

/// Reads rows of an image as classes of grey levels, mirrored at the image's faces. For one thread.
class GreyRowReader {
public:
    virtual ~GreyRowReader() = default;

    virtual void readLevels(access::Position const& first, std::size_t count, std::uint16_t* levels) = 0;
    virtual void readBins(access::Position const& first, std::size_t count, std::uint32_t* bins) = 0;
};

/// Null for an image of complex voxels. The image must outlive the reader.
std::unique_ptr<GreyRowReader> makeGreyRowReader(ImageModel const& image, GreyLevels const& levels,
                                                 HistogramBins const& bins);

} // namespace mox::segmentation
