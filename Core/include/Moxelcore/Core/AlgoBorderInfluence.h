#pragma once

#include <Moxelcore/Core/Api.h>

namespace mox {

/// The two sides of each dimension.
enum DirectionTypes : int {
    COLUMNS_BEGIN = 0,
    COLUMNS_END,
    ROWS_BEGIN,
    ROWS_END,
    PLANS_BEGIN,
    PLANS_END,
    TIME_SERIES_BEGIN,
    TIME_SERIES_END,
    SPECTRAL_SERIES_BEGIN,
    SPECTRAL_SERIES_END
};

/// How far, in voxels, an algorithm reads beyond any voxel that it writes, for each side of each dimension.
class MOXELCORE_API AlgoBorderInfluence {
public:
    /// The algorithm depends on the whole of the image in that direction.
    static unsigned int const infinity;

    /// Each count holds for both sides of its dimension.
    AlgoBorderInfluence(unsigned int columns, unsigned int rows, unsigned int plans, unsigned int timeSeries,
                        unsigned int spectralSeries);
    /// The ten counts in the order of `DirectionTypes`.
    AlgoBorderInfluence(unsigned int columnsBegin, unsigned int columnsEnd, unsigned int rowsBegin,
                        unsigned int rowsEnd, unsigned int plansBegin, unsigned int plansEnd,
                        unsigned int timeSeriesBegin, unsigned int timeSeriesEnd, unsigned int spectralSeriesBegin,
                        unsigned int spectralSeriesEnd);

    /// The direction is not checked.
    unsigned int getNumOfVoxels(DirectionTypes direction) const;
    /// Throws `InvalidCall` "Invalid direction." for a direction above 10. The value 10 is accepted without effect.
    void setNumOfVoxels(DirectionTypes direction, unsigned int numOfVoxels);

private:
    unsigned int counts_[SPECTRAL_SERIES_END + 2]; // the last takes what is set for direction 10
};

} // namespace mox
