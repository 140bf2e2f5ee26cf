#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

namespace mox::filters {

/// What a filter reads that must not see its own output: the input, or a copy of its voxels where the output is the
/// same image. A row that cannot be copied throws `UnexpectedError`.
class StableInput {
public:
    StableInput(ImageModel const& input, ImageModel const& output);

    ImageModel const& image() const { return image_; }

private:
    memory::InMemoryImage copy_;
    ImageModel const& image_;
};

} // namespace mox::filters
