#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <string>
#include <vector>

// What tests of algorithms ask of every class.

namespace mox::testing {

/// The names of the inputs, then those of the outputs.
inline std::vector<std::string> propertyNames(BaseAlgorithm const& algorithm)
{
    std::vector<std::string> names;
    for (unsigned int i = 0; i < algorithm.getNumOfInputProperties(); ++i) {
        names.emplace_back(algorithm.getInputProperty(i)->getName().c_str());
    }
    for (unsigned int i = 0; i < algorithm.getNumOfOutputProperties(); ++i) {
        names.emplace_back(algorithm.getOutputProperty(i)->getName().c_str());
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
