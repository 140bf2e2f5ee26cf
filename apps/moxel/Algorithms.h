#pragma once

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/OptimLevelType.h>

#include <string>
#include <vector>

// The library's algorithms, as the registry and the objects themselves tell of them.

namespace moxel {

/// Throws `UsageError` with the nearest names.
mox::AlgoInfo const& findAlgorithm(std::string const& name);

/// The namespace of the class, below that of the library: "segmentation".
std::string moduleOf(mox::BaseAlgorithm const& algorithm);

std::vector<mox::BaseProperty*> inputsOf(mox::BaseAlgorithm const& algorithm);
std::vector<mox::BaseProperty*> outputsOf(mox::BaseAlgorithm const& algorithm);

/// "scalar", "sse", ... from the plainest to the fastest.
std::vector<std::string> levelNames();

/// Throws `UsageError` for a name that no level has.
mox::OptimLevelType levelNamed(std::string const& name);

/// The names of the levels of which the class has a runner.
std::vector<std::string> levelsOf(mox::BaseAlgorithm const& algorithm);

} // namespace moxel
