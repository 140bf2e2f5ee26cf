#pragma once

#include <Moxelcore/Geometry/MatrixTransformation.h>

namespace mox::geometry {

/// Moves points. Its 3 parameters are the translation.
class MOXELCORE_API Translation3D final : public MatrixTransformation<3> {
public:
    Translation3D();
    explicit Translation3D(math::Vector3<double> const& translation);
};

} // namespace mox::geometry
