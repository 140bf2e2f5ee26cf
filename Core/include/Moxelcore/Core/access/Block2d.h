#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <tbb/blocked_range.h>

namespace mox::access {

/// The unit of parallel work in the plane; a range in the sense of oneTBB. Plan, time and spectral index are fixed.
class MOXELCORE_API Block2d final : public Block {
public:
    Block2d() = default;
    Block2d(GrainedRange rows, GrainedRange columns, unsigned int plan, unsigned int timeSeries,
            unsigned int spectralSeries);
    /// Takes the upper half of the relatively longer range and leaves the lower.
    Block2d(Block2d& other, tbb::split);

    bool empty() const;
    bool is_divisible() const;

    unsigned int getNumOfRows() const override;
    unsigned int getBeginRow() const override;
    unsigned int getEndRow() const override;
    unsigned int getNumOfColumns() const override;
    unsigned int getBeginColumn() const override;
    unsigned int getEndColumn() const override;
    unsigned int getNumOfPlans() const override;
    unsigned int getBeginPlan() const override;
    unsigned int getEndPlan() const override;
    unsigned int getNumOfTimeSeries() const override;
    unsigned int getBeginTimeSeries() const override;
    unsigned int getEndTimeSeries() const override;
    unsigned int getNumOfSpectralSeries() const override;
    unsigned int getBeginSpectralSeries() const override;
    unsigned int getEndSpectralSeries() const override;

private:
    GrainedRange rows_;
    GrainedRange columns_;
    unsigned int plan_ = 0;
    unsigned int timeSeries_ = 0;
    unsigned int spectralSeries_ = 0;
};

} // namespace mox::access
