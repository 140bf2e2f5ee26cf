#pragma once

#include <memory>

#include "Segmentation/private/RowRing.h"
#include "Segmentation/private/TexturePlan.h"

namespace mox::segmentation {

/// The co-occurrence measures of one direction along a row. All of them follow from exact integers that are kept up to
/// date as the window moves: sums over the pairs, and counts of pairs, of their ends, sums and differences.
class CooccurrenceSweep {
public:
    virtual ~CooccurrenceSweep() = default;

    /// Forgets all rows. Rows of levels are of that width from now on; they begin `radius` columns before the block.
    virtual void begin(std::size_t width) = 0;

    /// The measures at `count` columns of row y of a block, from column `first` on. The rows of levels must be those
    /// about y.
    virtual void compute(RowRing<std::uint16_t> const& levels, int y, std::size_t first, std::size_t count) = 0;

    /// What `compute` found of a measure that the plan wants.
    double const* row(std::size_t measure) const { return results_[measure].data(); }

protected:
    std::array<std::vector<double>, numOfCooccurrenceMeasures> results_;
};

/// Both plans must outlive the sweep. Throws `std::runtime_error` when there are no grey levels.
std::unique_ptr<CooccurrenceSweep> makeCooccurrenceSweep(TexturePlan const& plan, DirectionPlan const& direction);

} // namespace mox::segmentation
