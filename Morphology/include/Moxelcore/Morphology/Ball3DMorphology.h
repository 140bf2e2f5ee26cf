#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/AlgoPrecisionType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::morphology {

/// What the four algorithms with a ball share.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes |
/// | "elementSize" | `unsigned int` | 3 | radius in voxels; 0 copies the input |
/// | "precision" | enumeration `AlgoPrecisionType` | `MOX_ALGO_FAST` | how the ball is made |
/// | "output" | `ImageModel*` | null | gets the input's sizes, calibration, type and interpretation; may be the input |
///
/// `MOX_ALGO_PRECISE` is the digital ball, all (a, b, c) with a^2 + b^2 + c^2 <= n^2 for n = "elementSize", in one
/// pass; a is the column and runs outermost in the order of comparison, c the plan and innermost. `MOX_ALGO_FAST` is
/// 0.6 n (truncated) iterations of the 6-neighbourhood, 0.3 n (truncated) of the 18-neighbourhood, and for the rest of
/// n of the 26-neighbourhood.
///
/// The border influence is "elementSize" voxels to both sides in X, Y and Z.
///
/// Voxels outside the image read as the lowest value of the voxel type in a dilation and as the highest in an erosion
/// (of floating types the greatest finite value), so that the element is in effect cut at the image's edges. The
/// candidate replaces the running value when it is strictly larger (erosion: smaller), in the order of the element's
/// voxels: a NaN stays where it comes first, and is passed over elsewhere. An opening is an erosion and then a dilation
/// of its result; a closing is the reverse.
///
/// Throws `RuleException` for a null or complex input and a null or fixed output and for an unknown precision.
class MOXELCORE_API Ball3DMorphology : public BaseAlgorithm {
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
class MOXELCORE_API ErosionBall3D final : public Ball3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ErosionBall3D)
};

/// Largest voxel under the element.
class MOXELCORE_API DilationBall3D final : public Ball3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(DilationBall3D)
};

/// Erosion, then dilation: removes what is bright and smaller than the element.
class MOXELCORE_API OpeningBall3D final : public Ball3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(OpeningBall3D)
};

/// Dilation, then erosion: removes what is dark and smaller than the element.
class MOXELCORE_API ClosingBall3D final : public Ball3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ClosingBall3D)
};

} // namespace mox::morphology
