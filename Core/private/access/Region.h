#pragma once

#include <Moxelcore/Core/access/Block.h>

#include "Core/private/access/Sizes.h"

namespace mox::access {

/// A box in all five dimensions that is not split: what remains when a block has been grown or moved.
class Region final : public Block {
public:
    struct Range {
        unsigned int begin = 0;
        unsigned int end = 0;
    };

    Region() = default;
    /// The whole of an image.
    Region(Sizes const& sizes)
        : Region({0, sizes.rows}, {0, sizes.columns}, {0, sizes.plans}, {0, sizes.timeSeries},
                 {0, sizes.spectralSeries})
    {
    }
    Region(Range rows, Range columns, Range plans, Range timeSeries, Range spectralSeries)
        : rows_(rows)
        , columns_(columns)
        , plans_(plans)
        , timeSeries_(timeSeries)
        , spectralSeries_(spectralSeries)
    {
    }

    unsigned int getNumOfRows() const override { return rows_.end - rows_.begin; }
    unsigned int getBeginRow() const override { return rows_.begin; }
    unsigned int getEndRow() const override { return rows_.end; }
    unsigned int getNumOfColumns() const override { return columns_.end - columns_.begin; }
    unsigned int getBeginColumn() const override { return columns_.begin; }
    unsigned int getEndColumn() const override { return columns_.end; }
    unsigned int getNumOfPlans() const override { return plans_.end - plans_.begin; }
    unsigned int getBeginPlan() const override { return plans_.begin; }
    unsigned int getEndPlan() const override { return plans_.end; }
    unsigned int getNumOfTimeSeries() const override { return timeSeries_.end - timeSeries_.begin; }
    unsigned int getBeginTimeSeries() const override { return timeSeries_.begin; }
    unsigned int getEndTimeSeries() const override { return timeSeries_.end; }
    unsigned int getNumOfSpectralSeries() const override { return spectralSeries_.end - spectralSeries_.begin; }
    unsigned int getBeginSpectralSeries() const override { return spectralSeries_.begin; }
    unsigned int getEndSpectralSeries() const override { return spectralSeries_.end; }

    uint64 numOfVoxels() const
    {
        return uint64{getNumOfColumns()} * getNumOfRows() * getNumOfPlans() * getNumOfTimeSeries() *
               getNumOfSpectralSeries();
    }

private:
    Range rows_;
    Range columns_;
    Range plans_;
    Range timeSeries_;
    Range spectralSeries_;
};

} // namespace mox::access
