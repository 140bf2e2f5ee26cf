#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <memory>

namespace moxel {

/// A picture of an image of whole numbers, such as labels: black for 0 and a colour for each other value, unlike those
/// of the values near it. Channels are red, green and blue. Throws `FileError` for an image that has no picture: other
/// than integers of one plan, time step and channel.
std::unique_ptr<mox::memory::InMemoryImage> colourPicture(mox::ImageModel const& image);

/// Throws as `colourPicture` does.
void requireColourForm(mox::ImageModel const& image);

} // namespace moxel
