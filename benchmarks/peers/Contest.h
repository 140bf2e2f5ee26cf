#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mox::benchmarks {

struct Contestant {
    std::string name;
    std::function<void()> work;
};

/// Runs the contestants in turn, after a warm-up, and prints the median rate of each in voxels per second and its
/// ratio to the first: pair by pair, so that a machine whose speed drifts does not favour one.
void contest(std::string const& title, double numOfVoxels, std::vector<Contestant> const& contestants);

} // namespace mox::benchmarks
