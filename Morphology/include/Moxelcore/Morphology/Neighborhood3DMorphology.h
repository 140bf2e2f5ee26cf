#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/Neighborhood3DType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::morphology {

/// What the four algorithms with a small element in space, applied several times, share.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes |
/// | "nbIter" | `unsigned int` | 3 | iterations, at least 1 |
/// | "neighborhood3D" | enumeration `Neighborhood3DType` | `MOX_NEIGHBORHOOD3D_26` | the small element |
/// | "output" | `ImageModel*` | null | gets the input's sizes, calibration, type and interpretation; may be the input |
///
/// `MOX_NEIGHBORHOOD3D_6` is the voxel and its 6 neighbours, `MOX_NEIGHBORHOOD3D_18` those with at most two differing
/// coordinates, `MOX_NEIGHBORHOOD3D_26` the cube of 3 x 3 x 3 voxels.
///
/// Each pass is "nbIter" iterations of the small element, each on the result of the one before. Read order: plans from
/// front to back; within a plan the 6-neighbourhood up, left, centre, right, down, the 18-neighbourhood row by row, the
/// 26-neighbourhood column by column.
///
/// The border influence is "nbIter" voxels to both sides in X, Y and Z, of an opening and a closing too.
///
/// Voxels outside the image read as the lowest value of the voxel type in a dilation and as the highest in an erosion
/// (of floating types the greatest finite value), so that the element is in effect cut at the image's edges. The
/// candidate replaces the running value when it is strictly larger (erosion: smaller), in the order of the element's
/// voxels: a NaN stays where it comes first, and is passed over elsewhere. An opening is an erosion and then a dilation
/// of its result; a closing is the reverse.
///
/// Throws `RuleException` for a null or complex input and a null or fixed output, for "nbIter" 0 and for an unknown
/// neighbourhood.
class MOXELCORE_API Neighborhood3DMorphology : public BaseAlgorithm {
public:
    AlgoBorderInfluence getAlgoBorderInfluence() const override;

    Property<ImageModel const*> input;
    Property<unsigned int> nbIter;
    PropertyEnumeration neighborhood3D;
    Property<ImageModel*> output;

protected:
    void init();
};

/// Smallest voxel under the element.
class MOXELCORE_API Erosion3D final : public Neighborhood3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Erosion3D)
};

/// Largest voxel under the element.
class MOXELCORE_API Dilation3D final : public Neighborhood3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Dilation3D)
};

/// Erosion, then dilation: removes what is bright and smaller than the element.
class MOXELCORE_API Opening3D final : public Neighborhood3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Opening3D)
};

/// Dilation, then erosion: removes what is dark and smaller than the element.
class MOXELCORE_API Closing3D final : public Neighborhood3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Closing3D)
};

} // namespace mox::morphology
