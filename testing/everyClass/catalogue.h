#pragma once

#include <Moxelcore/Core/Enum/ImageInterpretation.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

// What the tests over all classes must know of a class beyond its properties, so that a run of it does real work.

namespace mox::testing {

/// What stands in an input image.
enum class Content { noise, sparse, labels };

/// Sizes of images: those of a series of volumes, of a plane, of one that is costly to work on, or of a small part.
enum class Extent { volume, plane, costlyPlane, part };

/// An image that differs from the others of its class.
struct ImageEntry {
    std::string property;
    Content content = Content::noise;
    std::optional<VoxelTypes> voxelType = std::nullopt;
    std::optional<ImageInterpretation> interpretation = std::nullopt;
    std::optional<Extent> extent = std::nullopt;
};

struct Entry {
    std::string className;
    Extent extent = Extent::volume;
    bool takesFloats = true;
    /// The output may be the first input.
    bool worksInPlace = true;
    /// Texts for properties that would not do with their defaults.
    std::vector<std::pair<std::string, std::string>> values = {};
    std::vector<ImageEntry> images = {};

    ImageEntry imageOf(std::string const& property) const;
};

/// The classes in no particular order.
std::vector<Entry> const& catalogue();

/// Throws `std::out_of_range` for a class that the catalogue does not have.
Entry const& entryOf(std::string const& className);

} // namespace mox::testing
