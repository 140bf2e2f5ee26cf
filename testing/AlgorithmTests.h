#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <cstddef>
#include <string>
#include <vector>

// What tests of algorithms ask of every class.

namespace mox::testing {

inline std::vector<BaseProperty*> inputsOf(BaseAlgorithm const& algorithm)
{
    std::vector<BaseProperty*> properties;
    for (unsigned int i = 0; i < algorithm.getNumOfInputProperties(); ++i) {
        properties.push_back(algorithm.getInputProperty(i));
    }
    return properties;
}

inline std::vector<BaseProperty*> outputsOf(BaseAlgorithm const& algorithm)
{
    std::vector<BaseProperty*> properties;
    for (unsigned int i = 0; i < algorithm.getNumOfOutputProperties(); ++i) {
        properties.push_back(algorithm.getOutputProperty(i));
    }
    return properties;
}

/// The inputs, then the outputs.
inline std::vector<BaseProperty*> propertiesOf(BaseAlgorithm const& algorithm)
{
    std::vector<BaseProperty*> properties = inputsOf(algorithm);
    std::vector<BaseProperty*> const outputs = outputsOf(algorithm);
    properties.insert(properties.end(), outputs.begin(), outputs.end());
    return properties;
}

inline std::vector<std::string> propertyNames(BaseAlgorithm const& algorithm)
{
    std::vector<std::string> names;
    for (BaseProperty const* property : propertiesOf(algorithm)) {
        names.emplace_back(property->getName().c_str());
    }
    return names;
}

/// The names of all classes of the library.
inline std::vector<std::string> namesOfClasses()
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < AlgoInfo::count(); ++i) {
        names.emplace_back(AlgoInfo::at(i).getName());
    }
    return names;
}

/// The levels of the exception that a run throws.
inline std::string refusal(BaseAlgorithm& algorithm)
{
    try {
        algorithm.run();
    } catch (Exception const& exception) {
        return exception.getInfo().c_str();
    }
    return "nothing thrown";
}

} // namespace mox::testing
