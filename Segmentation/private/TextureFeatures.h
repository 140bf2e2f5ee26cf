#pragma once

#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>
#include <Moxelcore/Core/Vector.h>

#include <cstddef>
#include <vector>

namespace mox::segmentation {

/// One number of a feature vector. The types below `HISTO_Mean` come in fours, one four a co-occurrence measure.
struct TextureFeature {
    /// What becomes of a measure's values in all directions.
    enum class Across { oneDirection, mean, stddev, range };

    TextureFeatureTypes type;
    std::size_t direction = 0; ///< of a per-direction value

    bool isCooccurrence() const { return type < HISTO_Mean; }
    std::size_t measure() const { return static_cast<std::size_t>(type) / 4; }
    Across across() const { return static_cast<Across>(type % 4); }

    bool operator==(TextureFeature const&) const = default;
};

/// The numbers that a group of types makes, in its order; a per-direction type makes one for each direction. Throws
/// `InvalidCall` for a type that does not exist.
std::vector<TextureFeature> expandFeatures(Vector<TextureFeatureTypes> const& group, std::size_t numOfDirections);

} // namespace mox::segmentation
