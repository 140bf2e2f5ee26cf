#include <Moxelcore/Core/access/Block3d.h>

#include "Core/private/access/relativeLength.h"

namespace mox::access {

Block3d::Block3d(GrainedRange plans, GrainedRange rows, GrainedRange columns, unsigned int timeSeries,
                 unsigned int spectralSeries)
    : plans_(plans)
    , rows_(rows)
    , columns_(columns)
    , timeSeries_(timeSeries)
    , spectralSeries_(spectralSeries)
{
}

Block3d::Block3d(Block3d& other, tbb::split)
    : Block3d(other)
{
    GrainedRange Block3d::*const outer = isRelativelyShorter(plans_, rows_) ? &Block3d::rows_ : &Block3d::plans_;
    GrainedRange Block3d::*const longest = isRelativelyShorter(this->*outer, columns_) ? &Block3d::columns_ : outer;
    this->*longest = (other.*longest).splitOff();
}

bool Block3d::empty() const
{
    return plans_.empty() || rows_.empty() || columns_.empty();
}

bool Block3d::is_divisible() const
{
    return plans_.isDivisible() || rows_.isDivisible() || columns_.isDivisible();
}

unsigned int Block3d::getNumOfRows() const
{
    return rows_.size();
}

unsigned int Block3d::getBeginRow() const
{
    return rows_.begin;
}

unsigned int Block3d::getEndRow() const
{
    return rows_.end;
}

unsigned int Block3d::getNumOfColumns() const
{
    return columns_.size();
}

unsigned int Block3d::getBeginColumn() const
{
    return columns_.begin;
}

unsigned int Block3d::getEndColumn() const
{
    return columns_.end;
}

unsigned int Block3d::getNumOfPlans() const
{
    return plans_.size();
}

unsigned int Block3d::getBeginPlan() const
{
    return plans_.begin;
}

unsigned int Block3d::getEndPlan() const
{
    return plans_.end;
}

unsigned int Block3d::getNumOfTimeSeries() const
{
    return 1;
}

unsigned int Block3d::getBeginTimeSeries() const
{
    return timeSeries_;
}

unsigned int Block3d::getEndTimeSeries() const
{
    return timeSeries_ + 1;
}

unsigned int Block3d::getNumOfSpectralSeries() const
{
    return 1;
}

unsigned int Block3d::getBeginSpectralSeries() const
{
    return spectralSeries_;
}

unsigned int Block3d::getEndSpectralSeries() const
{
    return spectralSeries_ + 1;
}

} // namespace mox::access
