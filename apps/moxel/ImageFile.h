#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <filesystem>
#include <memory>
#include <optional>

#include "apps/moxel/ImageReader.h"
#include "apps/moxel/TiffWriter.h"

// Image files of any format that the host knows. A file to read is known by its first bytes, one to write by its
// extension.

namespace moxel {

enum class ImageFormat { png, tiff };

/// Opens a file to look into it or to read it page by page. `pages` is the dimension that its pages run through,
/// against what the file tells. Throws `FileError`.
std::unique_ptr<ImageReader> openImage(std::filesystem::path const& path, std::optional<mox::ImageDimension> pages);

/// The whole image. Throws `FileError`, which names the file, and `Cancelled`.
std::unique_ptr<mox::memory::InMemoryImage> readImage(std::filesystem::path const& path,
                                                      std::optional<mox::ImageDimension> pages);

/// By the extension; throws `UsageError` for one that is not known.
ImageFormat formatOf(std::filesystem::path const& path);

/// Throws `FileError` for an image that has no form in the format.
void requireForm(mox::ImageModel const& image, ImageFormat format);

/// Throws `FileError` and `Cancelled`. The compression is that of TIFF.
void writeImage(mox::ImageModel const& image, std::filesystem::path const& path, ImageFormat format,
                Compression compression);

} // namespace moxel
