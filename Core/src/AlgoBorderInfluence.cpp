#include <Moxelcore/Core/AlgoBorderInfluence.h>

#include "Core/private/Helper/raise.h"

namespace mox {

unsigned int const AlgoBorderInfluence::infinity = 0xFFFFFFFFU;

AlgoBorderInfluence::AlgoBorderInfluence(unsigned int columns, unsigned int rows, unsigned int plans,
                                         unsigned int timeSeries, unsigned int spectralSeries)
    : AlgoBorderInfluence(columns, columns, rows, rows, plans, plans, timeSeries, timeSeries, spectralSeries,
                          spectralSeries)
{
}

AlgoBorderInfluence::AlgoBorderInfluence(unsigned int columnsBegin, unsigned int columnsEnd, unsigned int rowsBegin,
                                         unsigned int rowsEnd, unsigned int plansBegin, unsigned int plansEnd,
                                         unsigned int timeSeriesBegin, unsigned int timeSeriesEnd,
                                         unsigned int spectralSeriesBegin, unsigned int spectralSeriesEnd)
    : counts_{columnsBegin,    columnsEnd,    rowsBegin,           rowsEnd,           plansBegin, plansEnd,
              timeSeriesBegin, timeSeriesEnd, spectralSeriesBegin, spectralSeriesEnd, 0}
{
}

unsigned int AlgoBorderInfluence::getNumOfVoxels(DirectionTypes direction) const
{
    return counts_[direction];
}

void AlgoBorderInfluence::setNumOfVoxels(DirectionTypes direction, unsigned int numOfVoxels)
{
    if (static_cast<unsigned int>(direction) > 10) {
        helper::raise<InvalidCall>({"Core/src/AlgoBorderInfluence", 74}, "Invalid direction.");
    }
    counts_[direction] = numOfVoxels;
}

} // namespace mox
