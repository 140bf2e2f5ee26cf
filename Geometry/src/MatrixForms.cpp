#include <Moxelcore/Geometry/AffineTransformation2D.h>
#include <Moxelcore/Geometry/AffineTransformation3D.h>
#include <Moxelcore/Geometry/ProjectiveTransformation2D.h>
#include <Moxelcore/Geometry/RigidTransformation2D.h>
#include <Moxelcore/Geometry/RigidTransformation3D.h>
#include <Moxelcore/Geometry/Translation2D.h>
#include <Moxelcore/Geometry/Translation3D.h>

#include <cmath>

namespace mox::geometry {

using math::Matrix2;
using math::Matrix3;
using math::Vector2;
using math::Vector3;

Translation2D::Translation2D()
    : MatrixTransformation(2)
{
}

Translation2D::Translation2D(Vector2<double> const& translation)
    : Translation2D()
{
    setTranslation(translation);
}

Translation3D::Translation3D()
    : MatrixTransformation(3)
{
}

Translation3D::Translation3D(Vector3<double> const& translation)
    : Translation3D()
{
    setTranslation(translation);
}

AffineTransformation2D::AffineTransformation2D()
    : MatrixTransformation(6)
{
}

AffineTransformation3D::AffineTransformation3D()
    : MatrixTransformation(12)
{
}

ProjectiveTransformation2D::ProjectiveTransformation2D()
    : MatrixTransformation(8)
{
}

Vector2<double> ProjectiveTransformation2D::getProjectionVector() const
{
    return {getParam(6), getParam(7)};
}

RigidTransformation2D::RigidTransformation2D()
    : MatrixTransformation(3)
{
}

RigidTransformation2D::RigidTransformation2D(double rotation, Vector2<double> const& translation)
    : RigidTransformation2D()
{
    setRotation(rotation);
    setTranslation(translation);
}

double RigidTransformation2D::getRotation() const
{
    Matrix2<double> const r = matrix();
    return std::atan2(r(1, 0), r(0, 0));
}

void RigidTransformation2D::setRotation(double angle)
{
    double const cosine = std::cos(angle);
    double const sine = std::sin(angle);
    setMatrix({cosine, -sine, sine, cosine});
}

double RigidTransformation2D::getParam(unsigned int index) const
{
    return index == 2 ? getRotation() : MatrixTransformation::getParam(index);
}

void RigidTransformation2D::setParam(unsigned int index, double value)
{
    if (index == 2) {
        setRotation(value);
    } else {
        MatrixTransformation::setParam(index, value);
    }
}

RigidTransformation3D::RigidTransformation3D()
    : MatrixTransformation(5)
{
}

void RigidTransformation3D::setRotations(double a, double b, double c)
{
    double const ca = std::cos(a);
    double const sa = std::sin(a);
    double const cb = std::cos(b);
    double const sb = std::sin(b);
    double const cc = std::cos(c);
    double const sc = std::sin(c);
    setMatrix({cc * cb, cc * sb * sa - sc * ca, cc * sb * ca + sc * sa, // Rz(c) Ry(b) Rx(a)
               sc * cb, sc * sb * sa + cc * ca, sc * sb * ca - cc * sa, //
               -sb, cb * sa, cb * ca});
}

Vector3<double> RigidTransformation3D::angles() const
{
    Matrix3<double> const r = matrix();
    double const cosine = std::hypot(r(0, 0), r(1, 0));
    double const b = std::atan2(-r(2, 0), cosine);
    if (cosine < 1e-8) {
        return {std::atan2(-r(1, 2), r(1, 1)), b, 0.0};
    }
    return {std::atan2(r(2, 1), r(2, 2)), b, std::atan2(r(1, 0), r(0, 0))};
}

double RigidTransformation3D::getParam(unsigned int index) const
{
    return index >= 3 && index <= 5 ? angles()[index - 3] : MatrixTransformation::getParam(index);
}

void RigidTransformation3D::setParam(unsigned int index, double value)
{
    if (index < 3 || index > 5) {
        MatrixTransformation::setParam(index, value);
        return;
    }
    Vector3<double> changed = angles();
    changed[index - 3] = value;
    setRotations(changed[0], changed[1], changed[2]);
}

} // namespace mox::geometry
