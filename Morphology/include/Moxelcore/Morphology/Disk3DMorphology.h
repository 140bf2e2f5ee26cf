#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::morphology {

/// What the four algorithms with a flat disk in space share.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes |
/// | "thetaAngle" | `double` | 0.0 | degrees |
/// | "phiAngle" | `double` | 0.0 | degrees |
/// | "elementSize" | `unsigned int` | 3 | radius in voxels; 0 copies the input |
/// | "output" | `ImageModel*` | null | gets the input's sizes, calibration, type and interpretation; may be the input |
///
/// The disk lies in the plane that is spanned by (cos phi cos theta, cos phi sin theta, -sin phi) and (-sin theta,
/// cos theta, 0): with both angles 0 the plane of rows and columns, phi tilts it and theta turns it about Z. Its voxels
/// are the points u, v with u^2 + v^2 <= "elementSize"^2 in that plane, u outermost, each rounded to the nearest voxel;
/// a tilted disk may have holes and may name a voxel twice.
///
/// The border influence is the bounding box of the disk on each side.
///
/// Voxels outside the image read as the lowest value of the voxel type in a dilation and as the highest in an erosion
/// (of floating types the greatest finite value), so that the element is in effect cut at the image's edges. The
/// candidate replaces the running value when it is strictly larger (erosion: smaller), in the order of the element's
/// voxels: a NaN stays where it comes first, and is passed over elsewhere. An opening is an erosion and then a dilation
/// of its result with the disk reflected, which makes it
/// idempotent and keeps it below the input; a closing is the reverse.
///
/// Throws `RuleException` for a null or complex input and a null or fixed output. Throws
/// `InvalidCall` for an angle that is not finite.
class MOXELCORE_API Disk3DMorphology : public BaseAlgorithm {
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
class MOXELCORE_API ErosionDisk3D final : public Disk3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ErosionDisk3D)
};

/// Largest voxel under the element.
class MOXELCORE_API DilationDisk3D final : public Disk3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(DilationDisk3D)
};

/// Erosion, then dilation: removes what is bright and smaller than the element.
class MOXELCORE_API OpeningDisk3D final : public Disk3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(OpeningDisk3D)
};

/// Dilation, then erosion: removes what is dark and smaller than the element.
class MOXELCORE_API ClosingDisk3D final : public Disk3DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ClosingDisk3D)
};

} // namespace mox::morphology
