#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Geometry/TransformationHandler.h>
#include <Moxelcore/Math/MathProperty.h>

namespace mox {
namespace registration {

/// Fits a transformation to pairs of points in space. All is as in `LandmarkRegistration2D`, with these types:
///
/// | type        | points | points, robust |
/// |-------------|--------|----------------|
/// | TRANSLATION | 1      | 3              |
/// | RIGID       | 3      | 4              |
/// | AFFINE      | 4      | 9              |
class MOXELCORE_API LandmarkRegistration3D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(LandmarkRegistration3D)

    enum TransformationType : int { TRANSLATION = 0, RIGID, AFFINE };

    Property<Vector<math::Vector3<double>> const*> data;
    Property<Vector<math::Vector3<double>> const*> model;
    PropertyEnumeration transformationType;
    Property<bool> robustEstimation;
    Property<double> outlierRatio;
    Property<double> confidence;
    Property<geometry::Transformation3DHandler*> outputTransformation;
};

} // namespace registration

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<registration::LandmarkRegistration3D::TransformationType>();

extern template class MOXELCORE_API Property<registration::LandmarkRegistration3D::TransformationType>;

} // namespace mox
