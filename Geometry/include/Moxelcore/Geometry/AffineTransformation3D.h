#pragma once

#include <Moxelcore/Geometry/MatrixTransformation.h>

namespace mox::geometry {

/// Maps points linearly, then moves them: 12 parameters.
class MOXELCORE_API AffineTransformation3D final : public MatrixTransformation<3> {
public:
    AffineTransformation3D();

    math::Matrix3<double> getRotationMatrix() const { return matrix(); }
    void setRotationMatrix(math::Matrix3<double> const& rotation) { setMatrix(rotation); }
};

} // namespace mox::geometry
