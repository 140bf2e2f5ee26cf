#pragma once

#include <Moxelcore/Geometry/MatrixTransformation.h>

namespace mox::geometry {

/// Maps points linearly, then moves them: 6 parameters.
class MOXELCORE_API AffineTransformation2D final : public MatrixTransformation<2> {
public:
    AffineTransformation2D();

    math::Matrix2<double> getRotationMatrix() const { return matrix(); }
    void setRotationMatrix(math::Matrix2<double> const& rotation) { setMatrix(rotation); }
};

} // namespace mox::geometry
