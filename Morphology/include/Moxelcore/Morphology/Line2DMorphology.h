#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::morphology {

/// What the four algorithms with a line in the plane share.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes; each plan is an image of its own |
/// | "orientationAngle" | `double` | 10.0 | degrees; positive goes up the image |
/// | "elementSize" | `unsigned int` | 3 | number of voxels; 0 copies the input, as 1 does |
/// | "output" | `ImageModel*` | null | gets the input's sizes, calibration, type and interpretation; may be the input |
///
/// The line starts at the voxel and runs one way: it is not centred. It steps by one along the axis of its larger
/// component (rows, where both are equal), and the other component is rounded to the nearest integer.
///
/// The border influence is the bounding box of the line on each side: none to the left and "elementSize" - 1 to the
/// right for angle 0.
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
class MOXELCORE_API Line2DMorphology : public BaseAlgorithm {
public:
    AlgoBorderInfluence getAlgoBorderInfluence() const override;

    Property<ImageModel const*> input;
    Property<double> orientationAngle;
    Property<unsigned int> elementSize;
    Property<ImageModel*> output;

protected:
    void init();
    void applyAllRules() override;
};

/// Smallest voxel under the element.
class MOXELCORE_API ErosionLine2D final : public Line2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ErosionLine2D)
};

/// Largest voxel under the element.
class MOXELCORE_API DilationLine2D final : public Line2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(DilationLine2D)
};

/// Erosion, then dilation: removes what is bright and smaller than the element.
class MOXELCORE_API OpeningLine2D final : public Line2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(OpeningLine2D)
};

/// Dilation, then erosion: removes what is dark and smaller than the element.
class MOXELCORE_API ClosingLine2D final : public Line2DMorphology {
    MOX_DECLARE_FAMILY_MEMBER(ClosingLine2D)
};

} // namespace mox::morphology
