#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mox::benchmarks {

/// The table has columns for "OpenCV" and for what bounds the work, a "bare loop" or a "copy"; a last one names the
/// others.
struct Contestant {
    std::string name;
    std::function<void()> work;
};

/// Prints the head of the table.
void beginTable();

/// Runs the contestants in turn, after a warm-up, and prints a row of the table: median rates in millions of voxels per
/// second, and how many times as long as the first, which is ours, the others take. The ratios are those of pairs, so
/// that a machine whose speed drifts does not favour one.
void contest(std::string const& title, double numOfVoxels, std::vector<Contestant> const& contestants);

} // namespace mox::benchmarks
