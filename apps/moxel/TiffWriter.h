#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <cstdint>
#include <filesystem>

namespace moxel {

enum class Compression { none, deflate };

/// Throws `FileError` for an image whose voxel type TIFF does not name.
void requireTiffForm(mox::ImageModel const& image);

/// One page per plan, channels fastest, then plans, then time; the description tag tells the dimensions in ImageJ's
/// form. Throws `FileError` and, at a request to stop, `Cancelled`.
void writeTiff(mox::ImageModel const& image, std::filesystem::path const& path, Compression compression);

/// Whether a file of so many pages and bytes of voxels may outgrow the 4 GiB that a classic TIFF can address.
bool needsBigTiff(std::uint64_t voxelBytes, std::uint64_t pages);

} // namespace moxel
