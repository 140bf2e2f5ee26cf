#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/Enum/ImageDimension.h>
#include <Moxelcore/Core/Enum/ImageInterpretation.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>
#include <Moxelcore/Core/String.h>

namespace mox {

/// A five-dimensional image: columns, rows, plans, time series, spectral series. A dimension that is not used has
/// size 1.
///
/// `memory::InMemoryImage` is the library's own; an application may bring others (tiled, compressed, mapped from a
/// file). Nothing in the library assumes that an image is contiguous in memory: voxels are read and written by rows.
///
/// Row operations of one image are called from many threads at once; concurrent writes go to disjoint voxels. The
/// setters and `allocate` are called only while nothing runs on the image.
class MOXELCORE_API ImageModel {
public:
    virtual ~ImageModel();

    /// Voxels along the dimension; 0 for a value that is no dimension.
    virtual unsigned int getSize(ImageDimension const& dimension) const = 0;
    virtual VoxelTypes getVoxelType() const = 0;

    /// Calibration is carried from image to image and compared, never computed with. Setters return false, getters
    /// 0.0, for a value that is no dimension.
    virtual bool setCalibrationOrigin(ImageDimension const& dimension, double origin) = 0;
    virtual double getCalibrationOrigin(ImageDimension const& dimension) const = 0;
    virtual bool setCalibrationStep(ImageDimension const& dimension, double step) = 0;
    virtual double getCalibrationStep(ImageDimension const& dimension) const = 0;
    virtual bool setDescription(String const& description) = 0;
    virtual String getDescription() const = 0;
    virtual bool setUnit(String const& unit) = 0;
    virtual String getUnit() const = 0;

    virtual ImageInterpretation getInterpretation() const = 0;
    virtual bool setInterpretation(ImageInterpretation const& interpretation) = 0;

    /// Hook for a caller that wants a range held. The library never depends on it.
    virtual bool lockRegion(int columns, int rows, int plans, int timeSeries, int spectralSeries) = 0;

    /// Copies `count` voxels from (x, y, z, t, s) onwards into the buffer. False when the row leaves the image.
    virtual bool readRowAt(unsigned int count, void* buffer, unsigned int x, unsigned int y, unsigned int z,
                           unsigned int t, unsigned int s) const = 0;
    /// Copies `count` voxels from the buffer to (x, y, z, t, s) onwards. False when the row leaves the image.
    virtual bool writeRowAt(unsigned int count, void const* buffer, unsigned int x, unsigned int y, unsigned int z,
                            unsigned int t, unsigned int s) = 0;
    /// Gives the memory of those voxels. An image that has none to give returns false and is accessed by copies; one
    /// that has none for its first voxel is not asked again during a run.
    virtual bool getRowPointerAt(unsigned int count, void*& pointer, unsigned int x, unsigned int y, unsigned int z,
                                 unsigned int t, unsigned int s) = 0;
    virtual bool getConstRowPointerAt(unsigned int count, void const*& pointer, unsigned int x, unsigned int y,
                                      unsigned int z, unsigned int t, unsigned int s) const = 0;

    /// Gives the image a new type and new sizes. An image that cannot change returns false.
    virtual bool allocate(VoxelTypes const& voxelType, unsigned int columns, unsigned int rows, unsigned int plans,
                          unsigned int timeSeries, unsigned int spectralSeries) = 0;
};

} // namespace mox
