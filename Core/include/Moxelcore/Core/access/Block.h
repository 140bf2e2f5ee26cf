#pragma once

#include <Moxelcore/Core/Api.h>

namespace mox::access {

/// An abstract box of voxel coordinates: a half-open range in each dimension of an image.
class MOXELCORE_API Block {
public:
    virtual ~Block();

    virtual unsigned int getNumOfRows() const = 0;
    virtual unsigned int getBeginRow() const = 0;
    virtual unsigned int getEndRow() const = 0;
    virtual unsigned int getNumOfColumns() const = 0;
    virtual unsigned int getBeginColumn() const = 0;
    virtual unsigned int getEndColumn() const = 0;
    virtual unsigned int getNumOfPlans() const = 0;
    virtual unsigned int getBeginPlan() const = 0;
    virtual unsigned int getEndPlan() const = 0;
    virtual unsigned int getNumOfTimeSeries() const = 0;
    virtual unsigned int getBeginTimeSeries() const = 0;
    virtual unsigned int getEndTimeSeries() const = 0;
    virtual unsigned int getNumOfSpectralSeries() const = 0;
    virtual unsigned int getBeginSpectralSeries() const = 0;
    virtual unsigned int getEndSpectralSeries() const = 0;
};

/// One dimension of a block that can be split: splits until no larger than its grain.
struct GrainedRange {
    unsigned int end = 0;
    unsigned int begin = 0;
    unsigned int grain = 1;

    unsigned int size() const { return end - begin; }
    bool empty() const { return begin >= end; }
    bool isDivisible() const { return size() > grain; }

    /// Keeps the lower half and returns the upper.
    GrainedRange splitOff();
};

} // namespace mox::access
