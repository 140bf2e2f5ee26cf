#include "apps/moxel/DescribeCommand.h"

#include <Moxelcore/Core/ImageModel.h>

#include <ostream>
#include <vector>

#include "apps/moxel/Algorithms.h"
#include "apps/moxel/ImageReader.h"
#include "apps/moxel/Json.h"
#include "apps/moxel/NumberText.h"
#include "apps/moxel/PropertyKind.h"

namespace moxel {

namespace {

/// Null for a property that takes no names.
EnumInfo const* enumerationOf(mox::BaseProperty const& property)
{
    PropertyKind const& kind = kindOf(property);
    return kind.enumerators != nullptr ? kind.enumerators(property) : nullptr;
}

struct Reach {
    mox::ImageDimension dimension;
    unsigned int begin;
    unsigned int end;
};

std::vector<Reach> reachOf(mox::BaseAlgorithm const& algorithm)
{
    mox::AlgoBorderInfluence const influence = algorithm.getAlgoBorderInfluence();
    std::vector<Reach> reach;
    reach.reserve(numOfDimensions);
    for (int i = 0; i < static_cast<int>(numOfDimensions); ++i) {
        reach.push_back({static_cast<mox::ImageDimension>(i),
                         influence.getNumOfVoxels(static_cast<mox::DirectionTypes>(2 * i)),
                         influence.getNumOfVoxels(static_cast<mox::DirectionTypes>(2 * i + 1))});
    }
    return reach;
}

Json countJson(unsigned int count)
{
    return count == mox::AlgoBorderInfluence::infinity ? Json("infinity") : Json(count);
}

std::string countText(unsigned int count)
{
    return count == mox::AlgoBorderInfluence::infinity ? "infinity" : numberText(count);
}

Json jsonOf(mox::BaseProperty const& property, char const* direction)
{
    PropertyKind const& kind = kindOf(property);
    Json json = {{"name", property.getName().c_str()}, {"direction", direction}, {"type", kind.typeName(property)}};
    json["default"] = kind.json != nullptr ? kind.json(property) : Json();
    if (EnumInfo const* const info = enumerationOf(property)) {
        json["enumerators"] = Json::array();
        for (int i = 0; i < info->size(); ++i) {
            json["enumerators"].push_back(
                {{"name", info->getNameByIndex(i).c_str()}, {"value", info->getEnumByIndex(i)}});
        }
    }
    return json;
}

Json jsonOf(mox::BaseAlgorithm const& algorithm)
{
    Json json = {{"name", algorithm.getInfo()->getName()},
                 {"library", algorithm.getInfo()->getLibName()},
                 {"module", moduleOf(algorithm)},
                 {"levels", levelsOf(algorithm)}};
    json["borderInfluence"] = Json::object();
    for (Reach const& reach : reachOf(algorithm)) {
        json["borderInfluence"][dimensionKeys[reach.dimension]] = {countJson(reach.begin), countJson(reach.end)};
    }
    json["properties"] = Json::array();
    for (auto const* property : inputsOf(algorithm)) {
        json["properties"].push_back(jsonOf(*property, "input"));
    }
    for (auto const* property : outputsOf(algorithm)) {
        json["properties"].push_back(jsonOf(*property, "output"));
    }
    return json;
}

void printProperty(mox::BaseProperty const& property, std::ostream& out)
{
    PropertyKind const& kind = kindOf(property);
    out << "    " << property.getName().c_str() << ": " << kind.typeName(property);
    if (kind.text != nullptr) {
        out << ", default " << kind.text(property);
    }
    out << '\n';
    if (EnumInfo const* const info = enumerationOf(property)) {
        for (int i = 0; i < info->size(); ++i) {
            out << "        " << info->getNameByIndex(i).c_str() << " = " << info->getEnumByIndex(i) << '\n';
        }
    }
}

void printText(mox::BaseAlgorithm const& algorithm, std::ostream& out)
{
    out << algorithm.getInfo()->getName() << " of " << algorithm.getInfo()->getLibName() << ", module "
        << moduleOf(algorithm) << "\nlevels:";
    for (std::string const& level : levelsOf(algorithm)) {
        out << ' ' << level;
    }
    out << "\nborder influence, begin and end:\n";
    for (Reach const& reach : reachOf(algorithm)) {
        out << "    " << mox::helper::getText(reach.dimension).c_str() << ": " << countText(reach.begin) << ", "
            << countText(reach.end) << '\n';
    }
    out << "inputs:\n";
    for (auto const* property : inputsOf(algorithm)) {
        printProperty(*property, out);
    }
    out << "outputs:\n";
    for (auto const* property : outputsOf(algorithm)) {
        printProperty(*property, out);
    }
}

} // namespace

void printDescription(mox::BaseAlgorithm const& algorithm, OutputForm form, std::ostream& out)
{
    if (form == OutputForm::json) {
        out << textOf(jsonOf(algorithm)) << '\n';
    } else {
        printText(algorithm, out);
    }
}

} // namespace moxel
