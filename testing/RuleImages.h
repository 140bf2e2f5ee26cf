#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <numeric>
#include <vector>

#include "testing/Images.h"
#include "testing/TestImage.h"

// Images for the tests of rules.

namespace mox::testing {

using ImagePointers = ::testing::Types<ImageModel*, ImageModel const*>;

constexpr Sizes smallSizes = {4, 3, 2, 1, 1};

inline std::unique_ptr<TestImage> imageOf(VoxelTypes type, Sizes const& sizes = smallSizes)
{
    auto image = std::make_unique<TestImage>();
    access::allocate(*image, type, sizes);
    return image;
}

/// Bytes that differ from each other and from 0, to tell whether an image has kept its memory.
inline std::vector<unsigned char> someBytes(Sizes const& sizes = smallSizes)
{
    std::vector<unsigned char> bytes(sizes.numOfVoxels());
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(1));
    return bytes;
}

constexpr ImageDimension allDimensions[] = {COLUMNS, ROWS, PLANS, TIME_SERIES, SPECTRAL_SERIES};

/// Origins and steps that differ in all dimensions and from a fresh image's.
inline void calibrate(ImageModel& image)
{
    for (ImageDimension const dimension : allDimensions) {
        image.setCalibrationOrigin(dimension, 10.0 + static_cast<int>(dimension));
        image.setCalibrationStep(dimension, 0.5 + static_cast<int>(dimension));
    }
}

inline void expectSameCalibration(ImageModel const& image, ImageModel const& other)
{
    for (ImageDimension const dimension : allDimensions) {
        EXPECT_EQ(image.getCalibrationOrigin(dimension), other.getCalibrationOrigin(dimension)) << dimension;
        EXPECT_EQ(image.getCalibrationStep(dimension), other.getCalibrationStep(dimension)) << dimension;
    }
}

/// Changes as it is asked and tells that it has not.
class UnderstatingImage final : public memory::InMemoryImage {
public:
    bool setCalibrationOrigin(ImageDimension const& dimension, double origin) override
    {
        InMemoryImage::setCalibrationOrigin(dimension, origin);
        return false;
    }
    bool setCalibrationStep(ImageDimension const& dimension, double step) override
    {
        InMemoryImage::setCalibrationStep(dimension, step);
        return false;
    }
    bool setInterpretation(ImageInterpretation const& interpretation) override
    {
        InMemoryImage::setInterpretation(interpretation);
        return false;
    }
    bool allocate(VoxelTypes const& voxelType, unsigned int columns, unsigned int rows, unsigned int plans,
                  unsigned int timeSeries, unsigned int spectralSeries) override
    {
        InMemoryImage::allocate(voxelType, columns, rows, plans, timeSeries, spectralSeries);
        return false;
    }
};

/// Never changes and tells that it has.
class OverstatingImage final : public memory::InMemoryImage {
public:
    bool setCalibrationOrigin(ImageDimension const&, double) override { return true; }
    bool setCalibrationStep(ImageDimension const&, double) override { return true; }
    bool setInterpretation(ImageInterpretation const&) override { return true; }
    bool allocate(VoxelTypes const&, unsigned int, unsigned int, unsigned int, unsigned int, unsigned int) override
    {
        return true;
    }
};

} // namespace mox::testing
