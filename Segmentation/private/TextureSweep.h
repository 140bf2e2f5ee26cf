#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <memory>
#include <vector>

#include "Segmentation/private/CooccurrenceSweep.h"
#include "Segmentation/private/GreyRowReader.h"
#include "Segmentation/private/HistogramSweep.h"

namespace mox::segmentation {

/// The texture features of a plan, row by row: the one computation behind extraction, training and classification. For
/// one thread.
class TextureSweep {
public:
    /// Both must outlive the sweep. Throws `std::runtime_error` for co-occurrence features without grey levels.
    TextureSweep(TexturePlan const& plan, ImageModel const& image);

    /// Starts a block of a plane; rows that were read before are forgotten.
    void begin(access::Block const& block);

    /// The features at `count` columns of row y, from column `first` on, both relative to the block. Rows may be left
    /// out.
    void compute(int y, std::size_t first, std::size_t count);

    /// What `compute` found, in the order of the plan.
    std::vector<double const*> const& rows() const { return rows_; }

private:
    template <class Class, class Read>
    void readRows(RowRing<Class>& ring, int y, Read&& read);
    void computeAcross(TextureFeature const& feature, std::size_t count, double* out);

    TexturePlan const& plan_;
    std::unique_ptr<GreyRowReader> reader_;
    std::vector<std::unique_ptr<CooccurrenceSweep>> directions_; ///< null where the plan wants nothing
    std::unique_ptr<HistogramSweep> histogram_;
    RowRing<std::uint16_t> levels_;
    RowRing<std::uint32_t> bins_;
    std::vector<std::vector<double>> across_; ///< by feature; empty for those that are rows of a part
    std::vector<double const*> acrossValues_; ///< of one measure, by direction
    std::vector<double const*> rows_;
    access::Position origin_;
    std::size_t width_ = 0;
};

} // namespace mox::segmentation
