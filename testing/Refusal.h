#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <string>

namespace mox::testing {

/// The text of the failure with which an algorithm refuses to run; all its levels.
inline std::string refusalOf(BaseAlgorithm& algorithm)
{
    try {
        algorithm.run();
    } catch (Exception const& exception) {
        return exception.getInfo().c_str();
    }
    return "nothing thrown";
}

} // namespace mox::testing
