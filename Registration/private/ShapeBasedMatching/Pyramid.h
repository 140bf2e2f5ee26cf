#pragma once

#include <Moxelcore/Core/Enum/DecimationOp.h>
#include <Moxelcore/Core/InMemoryImage.h>

#include <memory>
#include <vector>

namespace mox::registration {

/// An image, its half, the half of that, and so on. Level 0 is the image itself, which is borrowed.
class Pyramid {
public:
    Pyramid(ImageModel const& image, miscellaneous::DecimationOp operatorType, unsigned int numOfLevels);

    /// Throws `BadIndex` "invalid level of pyramid".
    ImageModel const& getLevel(unsigned int level) const;

private:
    std::vector<ImageModel const*> levels_;
    std::vector<std::unique_ptr<memory::InMemoryImage>> decimated_;
};

} // namespace mox::registration
