#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/AlgoPrecisionType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::morphology {

/// What the four algorithms with a disk in the plane share.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes; each plan is an image of its own |
/// | "elementSize" | `unsigned int` | 3 | radius in voxels; 0 copies the input |
/// | "precision" | enumeration `AlgoPrecisionType` | `MOX_ALGO_FAST` | how the disk is made |
/// | "output" | `ImageModel*` | null | gets the input's sizes, calibration, type and interpretation; may be the input |
///
/// `MOX_ALGO_PRECISE` is the digital disk, all (a, b) with a^2 + b^2 <= n^2 for n = "elementSize", in one pass; a is
/// the column and runs outermost in the order of comparison. `MOX_ALGO_FAST` is an octagon: n / 2 (rounded down)
/// iterations of the 3 x 3 square, then crosses for the rest of n. It is larger than the disk: 37 voxels instead of 29
/// for n = 3.
///
/// The border influence is "elementSize" voxels to both sides in X and Y.
///
/// Voxels outside the image read as the lowest value of the voxel type in a dilation and as the highest in an erosion
/// (of floating types the greatest finite value), so that the element is in effect cut at the image's edges. The
/// candidate replaces the running value when it is strictly larger (erosion: smaller), in the order of the element's
/// voxels: a NaN stays where it comes first, and is passed over elsewhere. An opening is an erosion and then a dilation
/// of its result; a closing is the reverse.
///
/// Throws `RuleException` for a null or complex input and a null or fixed output and for an unknown precision.
class MOXELCORE_API Disk2DMorphology : public BaseAlgorithm {
public:
    AlgoBorderInfluence getAlgoBorderInfluence() const override;

    Property<ImageModel const*> input;
    Property<unsigned int> elementSize;
    PropertyEnumeration precision;
    Property<ImageModel*> output;

protected:
    void init();
};

/// Smallest voxel under the element.
class MOXELCORE_API ErosionDisk2D final : public Disk2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ErosionDisk2D)
};

/// Largest voxel under the element.
class MOXELCORE_API DilationDisk2D final : public Disk2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(DilationDisk2D)
};

/// Erosion, then dilation: removes what is bright and smaller than the element.
class MOXELCORE_API OpeningDisk2D final : public Disk2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(OpeningDisk2D)
};

/// Dilation, then erosion: removes what is dark and smaller than the element.
class MOXELCORE_API ClosingDisk2D final : public Disk2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ClosingDisk2D)
};

} // namespace mox::morphology
