#include "apps/moxel/TiffDescription.h"

#include "apps/moxel/FileLimits.h"
#include "apps/moxel/ImageJDescription.h"
#include "apps/moxel/OmeDescription.h"
#include "apps/moxel/ShapeDescription.h"

namespace moxel {

std::optional<std::uint64_t> numOfPages(std::vector<PageAxis> const& axes)
{
    std::optional<std::uint64_t> pages = 1;
    for (PageAxis const& axis : axes) {
        pages = pages ? product({*pages, axis.size}) : pages;
    }
    return pages;
}

TiffDescription parseTiffDescription(std::string const& tag, TiffPages const& pages)
{
    if (tag.starts_with("ImageJ=")) {
        return parseImageJDescription(tag);
    }
    if (tag.find("<OME") != std::string::npos) {
        return parseOmeDescription(tag, pages);
    }
    if (auto const shaped = parseShapeDescription(tag, pages)) {
        return *shaped;
    }
    TiffDescription plain;
    plain.text = tag;
    return plain;
}

} // namespace moxel
