#include <Moxelcore/Core/access/Block2d.h>

#include "Core/private/access/relativeLength.h"

namespace mox::access {

Block2d::Block2d(GrainedRange rows, GrainedRange columns, unsigned int plan, unsigned int timeSeries,
                 unsigned int spectralSeries)
    : rows_(rows)
    , columns_(columns)
    , plan_(plan)
    , timeSeries_(timeSeries)
    , spectralSeries_(spectralSeries)
{
}

Block2d::Block2d(Block2d& other, tbb::split)
    : Block2d(other)
{
    if (isRelativelyShorter(other.rows_, other.columns_)) {
        columns_ = other.columns_.splitOff();
    } else {
        rows_ = other.rows_.splitOff();
    }
}

bool Block2d::empty() const
{
    return rows_.empty() || columns_.empty();
}

bool Block2d::is_divisible() const
{
    return rows_.isDivisible() || columns_.isDivisible();
}

unsigned int Block2d::getNumOfRows() const
{
    return rows_.size();
}

unsigned int Block2d::getBeginRow() const
{
    return rows_.begin;
}

unsigned int Block2d::getEndRow() const
{
    return rows_.end;
}

unsigned int Block2d::getNumOfColumns() const
{
    return columns_.size();
}

unsigned int Block2d::getBeginColumn() const
{
    return columns_.begin;
}

unsigned int Block2d::getEndColumn() const
{
    return columns_.end;
}

unsigned int Block2d::getNumOfPlans() const
{
    return 1;
}

unsigned int Block2d::getBeginPlan() const
{
    return plan_;
}

unsigned int Block2d::getEndPlan() const
{
    return plan_ + 1;
}

unsigned int Block2d::getNumOfTimeSeries() const
{
    return 1;
}

unsigned int Block2d::getBeginTimeSeries() const
{
    return timeSeries_;
}

unsigned int Block2d::getEndTimeSeries() const
{
    return timeSeries_ + 1;
}

unsigned int Block2d::getNumOfSpectralSeries() const
{
    return 1;
}

unsigned int Block2d::getBeginSpectralSeries() const
{
    return spectralSeries_;
}

unsigned int Block2d::getEndSpectralSeries() const
{
    return spectralSeries_ + 1;
}

} // namespace mox::access
