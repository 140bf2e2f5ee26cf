#pragma once

#include <Moxelcore/Core/Enum/OptimLevelType.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mox::benchmarks {

struct Size {
    unsigned int columns, rows, plans;

    std::size_t numOfVoxels() const { return std::size_t{columns} * rows * plans; }
};

/// What an algorithm gives for voxels of the input's type, all as doubles: voxels, or numbers in the order of the
/// output properties. From its definition.
using Reference = std::function<std::vector<double>(std::vector<double> const& voxels, Size const& size)>;

/// One row of the table: an algorithm whose input images all hold the same voxels, each its own copy.
struct Case {
    std::string algorithm;
    VoxelTypes inputType;
    VoxelTypes outputType;
    Size size;
    std::vector<std::pair<std::string, std::string>> properties; ///< name and text
    Reference reference;
    std::optional<OptimLevelType> level = std::nullopt; ///< else the best
    unsigned int levels = 256;                          ///< the input's voxels are random numbers below

    std::string name() const;
};

std::vector<Case> morphologyCases();
std::vector<Case> allCases();
std::vector<Case> labelingCases();
std::vector<Case> pointOperationsCases();
std::vector<Case> registrationCases();
std::vector<Case> textureCases();

} // namespace mox::benchmarks
