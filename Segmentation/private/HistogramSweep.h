#pragma once

#include <memory>

#include "Segmentation/private/RowRing.h"
#include "Segmentation/private/TexturePlan.h"

namespace mox::segmentation {

/// The histogram features along a row.
class HistogramSweep {
public:
    virtual ~HistogramSweep() = default;

    /// Forgets all rows. Rows of bins are of that width from now on; they begin `radius` columns before the block.
    virtual void begin(std::size_t width) = 0;

    /// The features at `count` columns of row y of a block, from column `first` on. The rows of bins must be those
    /// about y. Throws `InvalidCall` for a window without any intensity in the histogram's range.
    virtual void compute(RowRing<std::uint32_t> const& bins, int y, std::size_t first, std::size_t count) = 0;

    /// What `compute` found of a feature that the plan wants.
    double const* row(TextureFeatureTypes type) const { return results_[type - HISTO_Mean].data(); }

protected:
    std::array<std::vector<double>, HISTO_QuantileR6 + 1 - HISTO_Mean> results_;
};

/// The plan must outlive the sweep.
std::unique_ptr<HistogramSweep> makeHistogramSweep(TexturePlan const& plan);

} // namespace mox::segmentation
