#pragma once

#include <Moxelcore/Geometry/MatrixTransformation.h>

namespace mox::geometry {

/// Turns points about the origin, then moves them.
///
/// Its 3 parameters are the translation and the angle in radians: `getParam(2)` is atan2(M[1][0], M[0][0]), and
/// `setParam(2, a)` writes the four elements of the rotation. The indices above 2 lead to single elements of the
/// matrix.
class MOXELCORE_API RigidTransformation2D final : public MatrixTransformation<2> {
public:
    RigidTransformation2D();
    RigidTransformation2D(double rotation, math::Vector2<double> const& translation);

    double getRotation() const;
    void setRotation(double angle);

    double getParam(unsigned int index) const override;
    void setParam(unsigned int index, double value) override;
};

} // namespace mox::geometry
