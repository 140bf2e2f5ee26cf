#pragma once

#include <span>
#include <vector>

#include "Morphology/private/RowProgram.h"
#include "Morphology/private/passes.h"

namespace mox::morphology {

/// Iterations of small elements that one sweep over the image makes, again and again.
struct Chain {
    Steps steps;
    unsigned int repetitions = 1;
};

/// Squares and crosses in the plane follow each other in a chain, and so do cubes; other elements have one each. No
/// chain is longer than what the rows that it keeps can be.
std::vector<Chain> chainsOf(Steps const& steps);

/// Whether there are programs for a chain: several iterations of elements that follow each other.
bool isFoldable(Chain const& chain);

/// Whether the programs are faster than the iterations one by one: a few cubes on short rows are not.
bool foldingPays(Chain const& chain, unsigned int columns);

/// The iterations as they stand: square and cube by columns, rows and plans in the order of comparison.
RowProgram literalProgram(Steps const& steps);

/// The same element from fewer reads. n squares are a run of 2n + 1 voxels down and one across, made by doubling; n
/// crosses are a run along each diagonal and a cross, for which reads grow with the square root of n. Right where equal
/// values are the same bits and all compare: integers, and floating voxels without NaN and -0.
///
/// The intermediate stages need no reset outside the image: it is convex, so that what an iterated element reaches
/// within it, it reaches by a path within it.
RowProgram foldedProgram(Steps const& steps);

} // namespace mox::morphology
