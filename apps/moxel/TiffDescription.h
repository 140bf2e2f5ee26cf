#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/moxel/ImageReader.h"

namespace moxel {

/// A dimension that the pages of a file run through.
struct PageAxis {
    mox::ImageDimension dimension;
    unsigned int size;

    bool operator==(PageAxis const&) const = default;
};

/// What the description tag of a TIFF tells beside or instead of a plain text.
struct TiffDescription {
    /// Fastest first; empty when nothing is told.
    std::vector<PageAxis> axes;
    std::array<double, numOfDimensions> step = {};
    std::array<double, numOfDimensions> origin = {};
    std::string unit;
    std::string text;
    mox::ImageInterpretation interpretation = mox::INTERPRETATION_VALUE;
};

/// What the pages themselves tell.
struct TiffPages {
    unsigned int number;
    unsigned int samples;
    /// Of all samples of a page.
    std::uint64_t voxels;
};

/// Nothing when the axes need another number of pages.
std::optional<std::uint64_t> numOfPages(std::vector<PageAxis> const& axes);

/// Reads the forms of ImageJ, of OME-XML and of a JSON shape; anything else is a plain text.
TiffDescription parseTiffDescription(std::string const& tag, TiffPages const& pages);

} // namespace moxel
