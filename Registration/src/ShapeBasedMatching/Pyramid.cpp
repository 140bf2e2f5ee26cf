#include "Registration/private/ShapeBasedMatching/Pyramid.h"

#include <Moxelcore/Miscellaneous/Decimate2D.h>

#include "Core/private/Helper/raise.h"

namespace mox::registration {

Pyramid::Pyramid(ImageModel const& image, miscellaneous::DecimationOp operatorType, unsigned int numOfLevels)
{
    if (numOfLevels == 0) {
        return;
    }
    levels_.push_back(&image);
    auto const decimate = miscellaneous::Decimate2D::New();
    decimate->operatorType = operatorType;
    while (levels_.size() < numOfLevels) {
        decimated_.push_back(std::make_unique<memory::InMemoryImage>());
        decimate->input = levels_.back();
        decimate->output = decimated_.back().get();
        decimate->run();
        levels_.push_back(decimated_.back().get());
    }
}

ImageModel const& Pyramid::getLevel(unsigned int level) const
{
    if (level >= levels_.size()) {
        helper::raise<BadIndex>("Registration/src/ShapeBasedMatching/Pyramid", "invalid level of pyramid");
    }
    return *levels_[level];
}

} // namespace mox::registration
