#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/SIMILARITY_MEASURE.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::registration {

/// Finds the translation, rotation and scale that best lay the gradients of a template on those of an image, from
/// coarse to fine.
///
/// | property                                                  | type                 | default     | |
/// |-----------------------------------------------------------|----------------------|-------------|-|
/// | "inputGradientX", "inputGradientY"                        | `ImageModel const*`  | null        | any real type |
/// | "templateGradientX", "templateGradientY"                  | `ImageModel const*`  | null        | any real type |
/// | "numOfLevel"                                              | `unsigned int`       | 4           | from 1 |
/// | "similarityMeasure"                                       | `SIMILARITY_MEASURE` | NORMALIZED  | |
/// | "mask"                                                    | `ImageModel const*`  | null        | of the template |
/// | "rotationBegin", "rotationEnd", "rotationStep"            | `double`             | 0, 360, 10  | degrees |
/// | "scaleBegin", "scaleEnd", "scaleStep"                     | `double`             | 0.5, 1.8, 0.1 | |
/// | "outputTx", "outputTy", "outputScale", "outputRotation"   | `double`             | 0, 0, 1, 0  | results |
///
/// A point p of the template lies at outputScale R p + (outputTx, outputTy) in the image, with R the rotation
/// x' = x cos - y sin, y' = x sin + y cos; rows count downwards, so that positive angles turn clockwise on a screen.
/// Both gradient images of a pair have one type, size and calibration, as the mask has the template's sizes and
/// calibration. Of images with several planes the first counts.
///
/// The shape is made of the template's voxels where the mask is not 0 (of all, without a mask) and the gradient is not
/// (0, 0), relative to column and row at half the template's sizes, rounded down. For every scale and rotation its
/// positions are turned, scaled and rounded to whole voxels, halves upwards, and its gradients are turned and made unit
/// vectors. The score of a position in the image is the sum over the shape's points of the scalar product with the
/// image's gradient there, itself a unit vector unless it is (0, 0); outside of the image it is (0, 0). NORMALIZED_ABS
/// takes the absolute value of the sum, which finds shapes of inverse contrast too. The first best of scale, then
/// rotation, then row, then column counts, whatever the number of threads.
///
/// This is done on the coarsest of "numOfLevel" levels, each half as large as the one before (gradients by their mean,
/// the mask by its maximum), over the whole image, then level by level in a window of 10 x 10 voxels about the place
/// found, with all scales and rotations again. Levels beyond one of a single voxel are not needed and left out. With no
/// point in the shape all positions have a score of 0.
///
/// Values are begin + i step, up to the end with a tolerance of 1e-9 steps. A step of 0, a negative one, NaN or one too
/// small to change begin leaves begin alone; where end is below begin nothing is tried, and the position (0, 0) without
/// rotation is the result. Sines and cosines within 1e-12 of 0 and of +-1 are taken for these.
///
/// Throws `RuleException` for images that are null, of complex type or unlike their partner; `BadIndex` "invalid level
/// of pyramid" when "numOfLevel" is 0. A cancelled run leaves the results as they were.
class MOXELCORE_API ShapeBasedMatching2D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(ShapeBasedMatching2D)

    Property<ImageModel const*> inputGradientX;
    Property<ImageModel const*> inputGradientY;
    Property<ImageModel const*> templateGradientX;
    Property<ImageModel const*> templateGradientY;
    Property<unsigned int> numOfLevel;
    PropertyEnumeration similarityMeasure;
    Property<ImageModel const*> mask;
    Property<double> rotationBegin;
    Property<double> rotationEnd;
    Property<double> rotationStep;
    Property<double> scaleBegin;
    Property<double> scaleEnd;
    Property<double> scaleStep;
    Property<double> outputTx;
    Property<double> outputTy;
    Property<double> outputScale;
    Property<double> outputRotation;
};

} // namespace mox::registration
