#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/DecimationOp.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::miscellaneous {

/// Halves an image in columns and rows: each voxel of the output stands for a window of 2 x 2 voxels of the input.
///
/// | property       | type                | default | |
/// |----------------|---------------------|---------|-|
/// | "input"        | `ImageModel const*` | null    | any real voxel type, any sizes |
/// | "operatorType" | `DecimationOp`      | MEAN    | what stands for a window |
/// | "output"       | `ImageModel*`       | null    | gets half the input's columns and rows |
///
/// | operator | output voxel |
/// |---|-|
/// | MEAN | the mean of the four |
/// | MIN, MAX | the smallest, the largest: the first, row by row, is replaced by another that is smaller (larger) |
/// | FIRST | the voxel in the first column and first row |
///
/// The mean of integers is their exact sum divided by 4, truncated towards zero, that of floating voxels
/// ((a + b) + (c + d)) times 0.25 in their type, a and b being the upper row.
///
/// n columns or rows become n / 2, rounded up. The last window of an odd size reads the edge voxel twice. The other
/// sizes, the voxel type and the calibration are those of the input; an output that has them keeps its memory.
///
/// Throws `RuleException` for a null or complex input and a null output, "Image cannot be resized" for an output that
/// does not take its sizes and for one that is the input, unless that has at most one column and one row.
class MOXELCORE_API Decimate2D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(Decimate2D)

    Property<ImageModel const*> input;
    PropertyEnumeration operatorType;
    Property<ImageModel*> output;
};

} // namespace mox::miscellaneous
