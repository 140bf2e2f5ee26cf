#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/Neighborhood2DType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::morphology {

/// What the four algorithms with a small element in the plane, applied several times, share.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes; each plan is an image of its own |
/// | "nbIter" | `unsigned int` | 3 | iterations, at least 1 |
/// | "neighborhood2D" | enumeration `Neighborhood2DType` | `MOX_NEIGHBORHOOD2D_8` | the small element |
/// | "output" | `ImageModel*` | null | gets the input's sizes, calibration, type and interpretation; may be the input |
///
/// `MOX_NEIGHBORHOOD2D_4` is the voxel and its 4 neighbours, `MOX_NEIGHBORHOOD2D_8` the square of 3 x 3 voxels.
///
/// Each pass is "nbIter" iterations of the small element, each on the result of the one before: n squares make a square
/// of 2n + 1 voxels a side, n crosses a diamond. Read order: the cross up, left, centre, right, down; the square column
/// by column from left to right, in a column from top to bottom.
///
/// The border influence is "nbIter" voxels to both sides in X and Y, of an opening and a closing too.
///
/// Voxels outside the image read as the lowest value of the voxel type in a dilation and as the highest in an erosion
/// (of floating types the greatest finite value), so that the element is in effect cut at the image's edges. The
/// candidate replaces the running value when it is strictly larger (erosion: smaller), in the order of the element's
/// voxels: a NaN stays where it comes first, and is passed over elsewhere. An opening is an erosion and then a dilation
/// of its result; a closing is the reverse.
///
/// Throws `RuleException` for a null or complex input and a null or fixed output, for "nbIter" 0 and for an unknown
/// neighbourhood.
class MOXELCORE_API Neighborhood2DMorphology : public BaseAlgorithm {
public:
    AlgoBorderInfluence getAlgoBorderInfluence() const override;

    Property<ImageModel const*> input;
    Property<unsigned int> nbIter;
    PropertyEnumeration neighborhood2D;
    Property<ImageModel*> output;

protected:
    void init();
};

/// Smallest voxel under the element.
class MOXELCORE_API Erosion2D final : public Neighborhood2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Erosion2D)
};

/// Largest voxel under the element.
class MOXELCORE_API Dilation2D final : public Neighborhood2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Dilation2D)
};

/// Erosion, then dilation: removes what is bright and smaller than the element.
class MOXELCORE_API Opening2D final : public Neighborhood2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Opening2D)
};

/// Dilation, then erosion: removes what is dark and smaller than the element.
class MOXELCORE_API Closing2D final : public Neighborhood2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(Closing2D)
};

} // namespace mox::morphology
