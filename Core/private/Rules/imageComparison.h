#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <array>

namespace mox::rules {

constexpr std::array<ImageDimension, 5> dimensions = {COLUMNS, ROWS, PLANS, TIME_SERIES, SPECTRAL_SERIES};

/// Origin and step of all five dimensions, compared bit for value.
inline bool haveSameCalibration(ImageModel const& a, ImageModel const& b)
{
    for (ImageDimension const dimension : dimensions) {
        if (a.getCalibrationOrigin(dimension) != b.getCalibrationOrigin(dimension) ||
            a.getCalibrationStep(dimension) != b.getCalibrationStep(dimension)) {
            return false;
        }
    }
    return true;
}

inline void copyCalibration(ImageModel const& from, ImageModel& to)
{
    for (ImageDimension const dimension : dimensions) {
        to.setCalibrationOrigin(dimension, from.getCalibrationOrigin(dimension));
        to.setCalibrationStep(dimension, from.getCalibrationStep(dimension));
    }
}

} // namespace mox::rules
