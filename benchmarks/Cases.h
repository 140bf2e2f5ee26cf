#pragma once

#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <string>
#include <utility>
#include <vector>

namespace mox::benchmarks {

struct Size {
    unsigned int columns, rows, plans;

    std::size_t numOfVoxels() const { return std::size_t{columns} * rows * plans; }
};

/// What an algorithm gives for voxels of the input's type, all as doubles. From its definition.
using Reference = std::vector<double> (*)(std::vector<double> const& voxels, Size const& size);

/// One row of the table: an algorithm with an image "input" and an image "output".
struct Case {
    std::string algorithm;
    VoxelTypes inputType;
    VoxelTypes outputType;
    Size size;
    std::vector<std::pair<std::string, std::string>> properties; ///< name and text
    Reference reference;
    unsigned int levels = 256; ///< the input's voxels are random numbers below

    std::string name() const;
};

std::vector<Case> allCases();
std::vector<Case> labelingCases();

} // namespace mox::benchmarks
