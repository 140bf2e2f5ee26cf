#include "apps/moxel/RunValues.h"

#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <type_traits>
#include <utility>

#include "apps/moxel/Algorithms.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/NearestNames.h"
#include "apps/moxel/PropertyKind.h"
#include "apps/moxel/TemporaryFile.h"
#include "apps/moxel/TiffVoxelType.h"

namespace moxel {

namespace {

using Pair = std::pair<std::string, std::string>;

Pair splitPair(std::string const& word)
{
    auto const equals = word.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError(quoted(word) + " is not of the form name=value");
    }
    return {word.substr(0, equals), word.substr(equals + 1)};
}

/// The value that a text names; throws `UsageError` with the nearest of all names.
template <class T>
T named(std::string const& kind, std::string const& text, std::map<std::string, T> const& names)
{
    auto const found = names.find(text);
    if (found != names.end()) {
        return found->second;
    }
    std::vector<std::string> known;
    known.reserve(names.size());
    for (auto const& [name, value] : names) {
        known.push_back(name);
    }
    throw UsageError(unknownName(kind, text, known));
}

mox::VoxelTypes parseVoxelType(std::string const& text)
{
    std::map<std::string, mox::VoxelTypes> names;
    for (TiffVoxelType const& type : tiffVoxelTypes) {
        names[mox::helper::getText(type.voxelType).c_str()] = type.voxelType;
    }
    return named("voxel type", text, names);
}

mox::ImageInterpretation parseInterpretation(std::string const& text)
{
    return named<mox::ImageInterpretation>("interpretation", text,
                                           {{"binary", mox::INTERPRETATION_BINARY},
                                            {"label", mox::INTERPRETATION_LABEL},
                                            {"value", mox::INTERPRETATION_VALUE}});
}

mox::BaseProperty& findProperty(mox::BaseAlgorithm const& algorithm, std::string const& name)
{
    mox::BaseProperty* const property = algorithm.getPropertyfromName(name.c_str());
    if (property != nullptr) {
        return *property;
    }
    std::vector<std::string> names;
    for (auto const& properties : {inputsOf(algorithm), outputsOf(algorithm)}) {
        for (mox::BaseProperty const* known : properties) {
            names.emplace_back(known->getName().c_str());
        }
    }
    throw UsageError(unknownName(std::string(algorithm.getInfo()->getName()) + " property", name, names));
}

void requireSettable(mox::BaseAlgorithm const& algorithm, mox::BaseProperty const& property)
{
    PropertyKind const& kind = kindOf(property);
    auto const outputs = outputsOf(algorithm);
    bool const isResult = std::find(outputs.begin(), outputs.end(), &property) != outputs.end();
    std::string const name = property.getName().c_str();
    if (isResult && !kind.isFile) {
        throw UsageError(quoted(name) + " is a result; it is printed, not given");
    }
    if (kind.bind == nullptr) {
        throw UsageError(quoted(name) + " cannot be given: a " + kind.typeName(property) + " has no text form");
    }
}

std::vector<RunValue> readValues(mox::BaseAlgorithm const& algorithm, RunOptions const& options)
{
    std::vector<RunValue> values;
    std::set<std::string> given;
    for (std::string const& word : options.values) {
        auto const [name, text] = splitPair(word);
        mox::BaseProperty& property = findProperty(algorithm, name);
        requireSettable(algorithm, property);
        if (!given.insert(name).second) {
            throw UsageError(quoted(name) + " is given twice");
        }
        if (text.empty() && kindOf(property).isFile) {
            throw UsageError(name + ": the name of a file is missing");
        }
        values.push_back({&property, text, {}});
        values.back().options.compression = options.compression;
    }
    return values;
}

/// The options of a property that is given and holds an image of the kind that the option is for.
template <class Image>
BindingOptions& optionsOf(std::vector<RunValue>& values, std::string const& option, std::string const& name)
{
    for (RunValue& value : values) {
        if (value.property->getName() == name.c_str() &&
            dynamic_cast<mox::Property<Image>*>(value.property) != nullptr) {
            return value.options;
        }
    }
    throw UsageError(option + ": no " + std::string(std::is_same_v<Image, mox::ImageModel*> ? "output" : "input") +
                     " image " + quoted(name) + " is given");
}

void requireDistinctOutputs(mox::BaseAlgorithm const& algorithm, std::vector<RunValue> const& values)
{
    std::set<std::filesystem::path> paths;
    auto const outputs = outputsOf(algorithm);
    for (RunValue const& value : values) {
        bool const isOutput = std::find(outputs.begin(), outputs.end(), value.property) != outputs.end();
        if (isOutput && !paths.insert(resolved(value.text)).second) {
            throw UsageError(quoted(value.text) + " is to take two results");
        }
    }
}

} // namespace

mox::ImageDimension parsePages(std::string const& text)
{
    return named<mox::ImageDimension>(
        "dimension", text, {{"plans", mox::PLANS}, {"time", mox::TIME_SERIES}, {"spectral", mox::SPECTRAL_SERIES}});
}

std::vector<RunValue> readRunValues(mox::BaseAlgorithm const& algorithm, RunOptions const& options)
{
    std::vector<RunValue> values = readValues(algorithm, options);
    for (std::string const& word : options.voxelTypes) {
        auto const [name, text] = splitPair(word);
        optionsOf<mox::ImageModel*>(values, "--type", name).voxelType = parseVoxelType(text);
    }
    for (std::string const& word : options.interpretations) {
        auto const [name, text] = splitPair(word);
        optionsOf<mox::ImageModel const*>(values, "--interpretation", name).interpretation = parseInterpretation(text);
    }
    for (std::string const& word : options.pages) {
        auto const [name, text] = splitPair(word);
        optionsOf<mox::ImageModel const*>(values, "--pages", name).pages = parsePages(text);
    }
    for (std::string const& name : options.coloured) {
        optionsOf<mox::ImageModel*>(values, "--colours", name).inColours = true;
    }
    requireDistinctOutputs(algorithm, values);
    return values;
}

} // namespace moxel
