#include "apps/moxel/ShapeDescription.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "apps/moxel/FileLimits.h"
#include "apps/moxel/Json.h"

namespace moxel {

namespace {

using Shape = std::vector<unsigned int>;

Shape shapeOf(Json const& json)
{
    Shape shape;
    if (!json.is_object() || !json.contains("shape") || !json["shape"].is_array()) {
        return shape;
    }
    for (Json const& size : json["shape"]) {
        bool const isSize = size.is_number_unsigned() && size <= std::numeric_limits<unsigned int>::max();
        if (!isSize) {
            return {};
        }
        shape.push_back(size.get<unsigned int>());
    }
    return shape;
}

std::optional<std::uint64_t> productOf(Shape const& shape, std::size_t begin, std::size_t end)
{
    std::optional<std::uint64_t> result = 1;
    for (std::size_t i = begin; i < end && result; ++i) {
        result = product({*result, shape[i]});
    }
    return result;
}

/// How many of the sizes run through the pages.
std::optional<std::size_t> numOfPageSizes(Shape const& shape, TiffPages const& pages)
{
    for (std::size_t i = 0; i < shape.size(); ++i) {
        if (productOf(shape, 0, i) == pages.number && productOf(shape, i, shape.size()) == pages.voxels) {
            return i;
        }
    }
    return {};
}

/// Letters of the sizes, or nothing.
std::string lettersOf(Json const& json, std::size_t count)
{
    bool const hasLetters = json.contains("axes") && json["axes"].is_string();
    std::string const letters = hasLetters ? json["axes"].get<std::string>() : std::string();
    return letters.size() == count ? letters : std::string();
}

mox::ImageDimension dimensionOf(char letter)
{
    switch (letter) {
    case 'T':
        return mox::TIME_SERIES;
    case 'C':
    case 'S':
        return mox::SPECTRAL_SERIES;
    default:
        return mox::PLANS;
    }
}

} // namespace

std::optional<TiffDescription> parseShapeDescription(std::string const& tag, TiffPages const& pages)
{
    if (!tag.starts_with('{')) {
        return {};
    }
    Json const json = Json::parse(tag, nullptr, false);
    Shape const shape = shapeOf(json);
    auto const count = numOfPageSizes(shape, pages);
    if (!count) {
        return {};
    }
    std::string const letters = lettersOf(json, shape.size());
    std::string const usual = "ZTC";
    TiffDescription description;
    for (std::size_t i = *count; i-- > 0;) {
        if (shape[i] > 1) {
            std::size_t const rank = std::min(description.axes.size(), usual.size() - 1);
            description.axes.push_back({dimensionOf(letters.empty() ? usual[rank] : letters[i]), shape[i]});
        }
    }
    return description;
}

} // namespace moxel
