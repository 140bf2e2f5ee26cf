#pragma once

#include <algorithm>
#include <iterator>
#include <set>
#include <vector>

#include "Morphology/private/RowProgram.h"
#include "testing/references/morphologyElements.h"

// What a program sees, followed through its taps without an image.

namespace mox::testing {

/// The image's voxels that a stage sees from the origin, in the order of comparison.
inline std::vector<Offset> seenBy(morphology::RowProgram const& program, std::size_t stage)
{
    if (stage == 0) {
        return {{0, 0, 0}};
    }
    std::vector<Offset> seen;
    for (morphology::Tap const& tap : program.stages()[stage].taps) {
        for (Offset const& o : seenBy(program, tap.stage)) {
            seen.push_back({o[0] + tap.offset.column, o[1] + tap.offset.row, o[2] + tap.offset.plan});
        }
    }
    return seen;
}

/// Without those that came before.
inline std::vector<Offset> firstOnes(std::vector<Offset> const& offsets)
{
    std::set<Offset> known;
    std::vector<Offset> first;
    std::copy_if(offsets.begin(), offsets.end(), std::back_inserter(first),
                 [&](Offset const& offset) { return known.insert(offset).second; });
    return first;
}

/// A run in registers reads each voxel once.
inline std::size_t reads(morphology::RowProgram const& program)
{
    std::size_t count = 0;
    for (morphology::Stage const& stage : program.stages()) {
        count += morphology::isRun(stage) ? 1 : stage.taps.size();
    }
    return count;
}

inline std::vector<kernel::Offset3D> inSpace(std::vector<Offset> const& offsets)
{
    std::vector<kernel::Offset3D> list;
    for (Offset const& o : offsets) {
        list.push_back({o[0], o[1], o[2]});
    }
    return list;
}

} // namespace mox::testing
