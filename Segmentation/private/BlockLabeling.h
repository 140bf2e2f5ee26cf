#pragma once

#include <iterator>
#include <list>
#include <memory>

#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/Reduction.h"
#include "Core/private/filters/ThreadStore.h"
#include "Segmentation/private/LabelNumbering.h"

namespace mox::segmentation {

/// The bands that a labeling has made so far, whatever the voxel type.
class LabeledBlocks : public filters::Reduction {
public:
    /// From top to bottom.
    LabelNumbering::Bands takeBands()
    {
        return {std::make_move_iterator(bands_.begin()), std::make_move_iterator(bands_.end())};
    }

    void join(Reduction& following) noexcept final
    {
        bands_.splice(bands_.end(), static_cast<LabeledBlocks&>(following).bands_);
    }

protected:
    std::list<LabelBand> bands_;
};

/// The body of the reduction that labels an image: reads the voxels of each leaf, a band of whole rows, as bits, and
/// finds the band's components. The seams between bands are left to `LabelNumbering`.
template <class In>
class BlockLabeling final : public LabeledBlocks {
public:
    /// What all bodies share.
    struct Context {
        access::View<In> const& input;
        filters::ThreadStore store;
    };

    explicit BlockLabeling(Context& context)
        : context_(context)
    {
    }

    void fold(access::Block const& leaf) override
    {
        filters::Borrowed<Scratch> const scratch(context_.store,
                                                 [this] { return std::make_unique<Scratch>(context_.input); });
        unsigned int const columns = leaf.getNumOfColumns();
        LabelBand& band = bands_.emplace_back(leaf.getBeginRow(), leaf.getNumOfRows(), numOfWords(columns));
        for (unsigned int y = 0; y < leaf.getNumOfRows(); ++y) {
            In const* const voxels = scratch->rows.getRow(0, columns, leaf, 0, static_cast<int>(y), 0, 0, 0).voxels();
            packRow(voxels, columns, band.row(y));
        }
        band.label(scratch->labels);
    }

    std::unique_ptr<Reduction> fresh() const override { return std::make_unique<BlockLabeling>(context_); }

private:
    struct Scratch final : filters::ThreadStore::Item {
        explicit Scratch(access::View<In> const& view)
            : rows(view)
        {
        }

        access::RowCacheRead<access::View<In>> rows;
        LabelBand::Scratch labels;
    };

    Context& context_;
};

} // namespace mox::segmentation
