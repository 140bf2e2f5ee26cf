#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <filesystem>

namespace moxel {

/// Throws `FileError` for an image that PNG has no form for: other than one plan of 1 to 4 channels in uint8 or uint16.
void requirePngForm(mox::ImageModel const& image);

/// Numbers are stored as they are. Steps in metres are kept, other calibration is not. Throws `FileError` and, at a
/// request to stop, `Cancelled`.
void writePng(mox::ImageModel const& image, std::filesystem::path const& path);

} // namespace moxel
