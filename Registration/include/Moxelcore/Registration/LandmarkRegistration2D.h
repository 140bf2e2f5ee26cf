#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/TransformationType.h>
#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Geometry/TransformationHandler.h>
#include <Moxelcore/Math/MathProperty.h>

namespace mox::registration {

/// Fits a transformation to pairs of points: it takes `data` as near to `model` as it can.
///
/// | property               | type                                   | default     | |
/// |------------------------|----------------------------------------|-------------|-|
/// | "data"                 | `Vector<math::Vector2<double>> const*` | null        | the points to be mapped |
/// | "model"                | the same                               | null        | where each should come to lie |
/// | "transformationType"   | `TransformationType`                   | TRANSLATION | the class of the result |
/// | "robustEstimation"     | `bool`                                 | false       | whether pairs may be wrong |
/// | "outlierRatio"         | `double`                               | 0.2         | 0 to 1: the share of wrong ones |
/// | "confidence"           | `double`                               | 0.99        | 0 to 1: that one sample has none |
/// | "outputTransformation" | `geometry::Transformation2DHandler*`   | null        | gets the result |
///
/// All pairs are fitted in least squares: translation by the difference of the means, rigid by a singular value
/// decomposition with determinant +1 and no scale, affine and polynomial as a linear system on points that are centred
/// and scaled, projective by the direct linear transformation on such points. A system with a ratio of smallest to
/// largest singular value of 1e-10 or less has no fit.
///
/// | type         | points | points, robust |
/// |--------------|--------|----------------|
/// | TRANSLATION  | 1      | 3              |
/// | RIGID        | 2      | 4              |
/// | AFFINE       | 3      | 7              |
/// | PROJECTIVE   | 4      | 9              |
/// | POLYNOMIAL_2 | 6      | 13             |
/// | POLYNOMIAL_3 | 10     | 21             |
///
/// The robust fit takes the least median of residuals (Rousseeuw 1984). With s points per sample, as many as determine
/// the transformation, T is log10(1 - confidence) / log10(1 - (1 - outlierRatio)^s) rounded, at least 1 and at most
/// 100000. Of 10 T samples that have a fit that maps every point, from at most 100 T draws, the first whose median
/// distance between mapped data and model is the smallest counts. With m the median of the deviations of its residuals
/// from that median, the pairs with a residual below 3 * 1.4826 m, and not below the square root of 2^-52, are the
/// inliers, and the result is the fit to these. Some of the right pairs are left out too, about one in eight when their
/// noise is normal.
///
/// The samples are drawn with mt19937, seeded with 5489 in each run, by a mapping that is the library's own: results
/// are the same in each run and on each platform. Pairs that are not finite are outliers.
///
/// Throws `RuleException` for null pointers and rates out of range; `RuntimeError` for lists of different lengths, too
/// few points, points that do not determine the transformation, and "random sampling failed." when there are not enough
/// good samples or inliers. The handler then keeps what it has, as it does when the run is cancelled.
class MOXELCORE_API LandmarkRegistration2D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(LandmarkRegistration2D)

    Property<Vector<math::Vector2<double>> const*> data;
    Property<Vector<math::Vector2<double>> const*> model;
    PropertyEnumeration transformationType;
    Property<bool> robustEstimation;
    Property<double> outlierRatio;
    Property<double> confidence;
    Property<geometry::Transformation2DHandler*> outputTransformation;
};

} // namespace mox::registration
