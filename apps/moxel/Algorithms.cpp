#include "apps/moxel/Algorithms.h"

#include <boost/core/demangle.hpp>

#include <algorithm>
#include <cctype>
#include <typeinfo>

#include "apps/moxel/Enumerators.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/NearestNames.h"

namespace moxel {

namespace {

std::string levelName(std::string name)
{
    std::string const vector = "VEC_";
    if (name.starts_with(vector)) {
        name.erase(0, vector.size());
    }
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

} // namespace

mox::AlgoInfo const& findAlgorithm(std::string const& name)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < mox::AlgoInfo::count(); ++i) {
        names.emplace_back(mox::AlgoInfo::at(i).getName());
    }
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        throw UsageError(unknownName("algorithm", name, names));
    }
    return mox::AlgoInfo::fromName(name.c_str());
}

std::string moduleOf(mox::BaseAlgorithm const& algorithm)
{
    std::string const library = "mox::";
    std::string name = boost::core::demangle(typeid(algorithm).name());
    if (name.starts_with(library)) {
        name.erase(0, library.size());
    }
    auto const end = name.rfind("::");
    return end == std::string::npos ? std::string() : name.substr(0, end);
}

std::vector<mox::BaseProperty*> inputsOf(mox::BaseAlgorithm const& algorithm)
{
    std::vector<mox::BaseProperty*> properties;
    for (unsigned int i = 0; i < algorithm.getNumOfInputProperties(); ++i) {
        properties.push_back(algorithm.getInputProperty(i));
    }
    return properties;
}

std::vector<mox::BaseProperty*> outputsOf(mox::BaseAlgorithm const& algorithm)
{
    std::vector<mox::BaseProperty*> properties;
    for (unsigned int i = 0; i < algorithm.getNumOfOutputProperties(); ++i) {
        properties.push_back(algorithm.getOutputProperty(i));
    }
    return properties;
}

std::vector<std::string> levelNames()
{
    std::vector<std::string> names = enumeratorNames(mox::getEnumInfo<mox::OptimLevelType>());
    std::transform(names.begin(), names.end(), names.begin(), levelName);
    return names;
}

mox::OptimLevelType levelNamed(std::string const& name)
{
    EnumInfo const& info = mox::getEnumInfo<mox::OptimLevelType>();
    for (int i = 0; i < info.size(); ++i) {
        if (levelName(info.getNameByIndex(i).c_str()) == name) {
            return static_cast<mox::OptimLevelType::Value>(info.getEnumByIndex(i));
        }
    }
    throw UsageError(unknownName("level", name, levelNames()));
}

std::vector<std::string> levelsOf(mox::BaseAlgorithm const& algorithm)
{
    std::vector<std::string> levels;
    for (std::string const& name : levelNames()) {
        if (algorithm.isOptimLevelSupported(levelNamed(name))) {
            levels.push_back(name);
        }
    }
    return levels;
}

} // namespace moxel
