#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>

#include "apps/moxel/ImageReader.h"
#include "apps/moxel/OutputForm.h"

namespace moxel {

/// Tells what an image file holds. Reads it page by page: memory is taken for one page only.
void printInfo(std::filesystem::path const& path, std::optional<mox::ImageDimension> pages, OutputForm form,
               std::ostream& out);

} // namespace moxel
