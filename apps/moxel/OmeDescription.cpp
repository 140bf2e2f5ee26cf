#include "apps/moxel/OmeDescription.h"

#include "apps/moxel/Errors.h"
#include "apps/moxel/NumberText.h"

namespace moxel {

namespace {

std::string attribute(std::string const& element, std::string const& name)
{
    std::string const opening = ' ' + name + "=\"";
    auto const begin = element.find(opening);
    if (begin == std::string::npos) {
        return {};
    }
    auto const value = begin + opening.size();
    return element.substr(value, element.find('"', value) - value);
}

template <class T>
T number(std::string const& element, std::string const& name, T missing)
{
    try {
        return parseNumber<T>(attribute(element, name));
    } catch (UsageError const&) {
        return missing;
    }
}

} // namespace

TiffDescription parseOmeDescription(std::string const& tag, TiffPages const& pages)
{
    TiffDescription description;
    auto const begin = tag.find("<Pixels");
    if (begin == std::string::npos) {
        return description;
    }
    std::string const element = tag.substr(begin, tag.find('>', begin) - begin);
    for (char const axis : attribute(element, "DimensionOrder")) {
        switch (axis) {
        case 'Z':
            description.axes.push_back({mox::PLANS, number(element, "SizeZ", 1U)});
            break;
        case 'T':
            description.axes.push_back({mox::TIME_SERIES, number(element, "SizeT", 1U)});
            break;
        case 'C':
            description.axes.push_back({mox::SPECTRAL_SERIES, number(element, "SizeC", 1U) / pages.samples});
            break;
        default:
            break;
        }
    }
    description.step = {number(element, "PhysicalSizeX", 0.0), number(element, "PhysicalSizeY", 0.0),
                        number(element, "PhysicalSizeZ", 0.0), number(element, "TimeIncrement", 0.0), 0.0};
    if (description.step[mox::COLUMNS] != 0) {
        std::string const unit = attribute(element, "PhysicalSizeXUnit");
        description.unit = unit.empty() ? "µm" : unit; // the standard's default
    }
    return description;
}

} // namespace moxel
