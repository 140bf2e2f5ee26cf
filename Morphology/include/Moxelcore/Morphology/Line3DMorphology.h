#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::morphology {

/// What the four algorithms with a line in space share.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes |
/// | "thetaAngle" | `double` | 0.0 | degrees |
/// | "phiAngle" | `double` | 0.0 | degrees |
/// | "elementSize" | `unsigned int` | 3 | number of voxels; 0 copies the input, as 1 does |
/// | "output" | `ImageModel*` | null | gets the input's sizes, calibration, type and interpretation; may be the input |
///
/// The line starts at the voxel and runs one way in the direction (cos theta sin phi, sin theta sin phi, cos phi): it
/// is not centred, and with both angles 0 it runs along Z. It steps by one along the axis of its largest component (Z
/// before Y before X where they are equal), and the others are rounded to the nearest integer.
///
/// The border influence is the bounding box of the line on each side.
///
/// Voxels outside the image read as the lowest value of the voxel type in a dilation and as the highest in an erosion
/// (of floating types the greatest finite value), so that the element is in effect cut at the image's edges. The
/// candidate replaces the running value when it is strictly larger (erosion: smaller), in the order of the element's
/// voxels: a NaN stays where it comes first, and is passed over elsewhere. An opening is an erosion and then a dilation
/// of its result with the line reflected, which makes it
/// idempotent and keeps it below the input; a closing is the reverse.
///
/// Throws `RuleException` for a null or complex input and a null or fixed output. Throws
/// `InvalidCall` for an angle that is not finite.
class MOXELCORE_API Line3DMorphology : public BaseAlgorithm {
public:
    AlgoBorderInfluence getAlgoBorderInfluence() const override;

    Property<ImageModel const*> input;
    Property<double> thetaAngle;
    Property<double> phiAngle;
    Property<unsigned int> elementSize;
    Property<ImageModel*> output;

protected:
    void init();
    void applyAllRules() override;
};

/// Smallest voxel under the element.
class MOXELCORE_API ErosionLine3D final : public Line3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ErosionLine3D)
};

/// Largest voxel under the element.
class MOXELCORE_API DilationLine3D final : public Line3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(DilationLine3D)
};

/// Erosion, then dilation: removes what is bright and smaller than the element.
class MOXELCORE_API OpeningLine3D final : public Line3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(OpeningLine3D)
};

/// Dilation, then erosion: removes what is dark and smaller than the element.
class MOXELCORE_API ClosingLine3D final : public Line3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ClosingLine3D)
};

} // namespace mox::morphology
