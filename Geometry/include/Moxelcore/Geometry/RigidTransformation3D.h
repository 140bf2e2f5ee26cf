#pragma once

#include <Moxelcore/Geometry/MatrixTransformation.h>

namespace mox::geometry {

/// Turns points about the origin, then moves them.
///
/// The flat list has the translation, then the angles a, b, c in radians of the rotation Rz(c) Ry(b) Rx(a): a about the
/// first axis, applied first, then b about the second, then c about the third. `getNumOfParameter` is 5 although there
/// are six degrees of freedom; index 5 is served like the others, and the indices above lead to single elements of the
/// matrix.
///
/// Angles are taken from the matrix, b from -pi / 2 to pi / 2. Where b is at either end, only a sum or a difference of
/// the other two is determined: c is then 0.
class MOXELCORE_API RigidTransformation3D final : public MatrixTransformation<3> {
public:
    RigidTransformation3D();

    math::Matrix3<double> getRotationMatrix() const { return matrix(); }
    /// The matrix is taken as it is; nothing checks that it is a rotation.
    void setRotationMatrix(math::Matrix3<double> const& rotation) { setMatrix(rotation); }
    void setRotations(double a, double b, double c);

    double getParam(unsigned int index) const override;
    void setParam(unsigned int index, double value) override;

private:
    math::Vector3<double> angles() const;
};

} // namespace mox::geometry
