#pragma once

#include <Moxelcore/Geometry/MatrixTransformation.h>

namespace mox::geometry {

/// Maps points as one plane is seen in another: 8 parameters.
class MOXELCORE_API ProjectiveTransformation2D final : public MatrixTransformation<2> {
public:
    ProjectiveTransformation2D();

    math::Matrix2<double> getRotationMatrix() const { return matrix(); }
    void setRotationMatrix(math::Matrix2<double> const& rotation) { setMatrix(rotation); }
    /// (M[2][0], M[2][1]).
    math::Vector2<double> getProjectionVector() const;
};

} // namespace mox::geometry
