#include "Segmentation/private/TextureFeatures.h"

#include <Moxelcore/Core/Exception.h>

#include "Core/private/Helper/raise.h"

namespace mox::segmentation {

std::vector<TextureFeature> expandFeatures(Vector<TextureFeatureTypes> const& group, std::size_t numOfDirections)
{
    std::vector<TextureFeature> features;
    for (TextureFeatureTypes const type : group) {
        if (!getEnumInfo<TextureFeatureTypes>().exists(type)) {
            helper::raise<InvalidCall>("Segmentation/private/TextureFeatures", "The enumeration value is not valid");
        }
        TextureFeature const feature{type};
        bool const isPerDirection =
            feature.isCooccurrence() && feature.across() == TextureFeature::Across::oneDirection;
        for (std::size_t k = 0; k < (isPerDirection ? numOfDirections : 1); ++k) {
            features.push_back({type, k});
        }
    }
    return features;
}

} // namespace mox::segmentation
