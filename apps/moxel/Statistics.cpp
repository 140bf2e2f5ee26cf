#include "apps/moxel/Statistics.h"

#include <Moxelcore/Segmentation/IntensityExtrema.h>

#include <algorithm>

namespace moxel {

namespace {

double numOfVoxels(mox::ImageModel const& image)
{
    double count = 1;
    for (auto const dimension : {mox::COLUMNS, mox::ROWS, mox::PLANS, mox::TIME_SERIES, mox::SPECTRAL_SERIES}) {
        count *= image.getSize(dimension);
    }
    return count;
}

} // namespace

void Statistics::add(mox::ImageModel const& page)
{
    double const count = numOfVoxels(page);
    if (count == 0) {
        return;
    }
    auto const extrema = mox::analysis::IntensityExtrema::New();
    extrema->input = &page;
    extrema->run();
    sum_ += extrema->outputMean * count;
    numOfVoxels_ += count;
    if (extrema->outputMinimum > extrema->outputMaximum) { // of voxels that are all NaN
        return;
    }
    bool const isFirst = !minimum();
    minimum_ = isFirst ? extrema->outputMinimum.get() : std::min(minimum_, extrema->outputMinimum.get());
    maximum_ = isFirst ? extrema->outputMaximum.get() : std::max(maximum_, extrema->outputMaximum.get());
}

std::optional<double> Statistics::mean() const
{
    return numOfVoxels_ > 0 ? std::optional(sum_ / numOfVoxels_) : std::nullopt;
}

} // namespace moxel
