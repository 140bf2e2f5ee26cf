#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/ImageModel.h>

#include <cstddef>

namespace mox::memory {

/// An image in one contiguous array: columns fastest, then rows, plans, time series, spectral series; no padding.
///
/// A new image is empty, of type `MOX_UINT8`, interpreted as values. It becomes usable with `allocate`.
class MOXELCORE_API InMemoryImage : public ImageModel {
public:
    InMemoryImage();
    InMemoryImage(InMemoryImage const&) = delete;
    InMemoryImage& operator=(InMemoryImage const&) = delete;
    ~InMemoryImage() override;

    unsigned int getSize(ImageDimension const& dimension) const override;
    VoxelTypes getVoxelType() const override;
    bool setCalibrationOrigin(ImageDimension const& dimension, double origin) override;
    double getCalibrationOrigin(ImageDimension const& dimension) const override;
    bool setCalibrationStep(ImageDimension const& dimension, double step) override;
    double getCalibrationStep(ImageDimension const& dimension) const override;
    bool setDescription(String const& description) override;
    String getDescription() const override;
    bool setUnit(String const& unit) override;
    String getUnit() const override;
    ImageInterpretation getInterpretation() const override;
    /// False, without a change, for a value that is no interpretation.
    bool setInterpretation(ImageInterpretation const& interpretation) override;
    /// Does nothing and returns false.
    bool lockRegion(int columns, int rows, int plans, int timeSeries, int spectralSeries) override;
    bool readRowAt(unsigned int count, void* buffer, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                   unsigned int s) const override;
    bool writeRowAt(unsigned int count, void const* buffer, unsigned int x, unsigned int y, unsigned int z,
                    unsigned int t, unsigned int s) override;
    bool getRowPointerAt(unsigned int count, void*& pointer, unsigned int x, unsigned int y, unsigned int z,
                         unsigned int t, unsigned int s) override;
    bool getConstRowPointerAt(unsigned int count, void const*& pointer, unsigned int x, unsigned int y, unsigned int z,
                              unsigned int t, unsigned int s) const override;
    /// The old voxels are gone, the new ones are not cleared; calibration, texts and interpretation stay. When there
    /// is not enough memory the allocator's exception passes through and the image is empty.
    bool allocate(VoxelTypes const& voxelType, unsigned int columns, unsigned int rows, unsigned int plans,
                  unsigned int timeSeries, unsigned int spectralSeries) override;

private:
    static constexpr int numOfDimensions = 5;

    bool contains(unsigned int count, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                  unsigned int s) const;
    std::size_t offset(unsigned int x, unsigned int y, unsigned int z, unsigned int t, unsigned int s) const;
    void release();

    VoxelTypes voxelType_ = MOX_UINT8;
    unsigned int sizes_[numOfDimensions] = {};
    double origin_[numOfDimensions] = {};
    double step_[numOfDimensions] = {};
    String description_;
    String unit_;
    ImageInterpretation interpretation_ = INTERPRETATION_VALUE;
    unsigned char* data_ = nullptr;
};

} // namespace mox::memory
