#pragma once

#include <Moxelcore/Geometry/Transformation.h>
#include <Moxelcore/Math/Matrix2.h>
#include <Moxelcore/Math/Matrix3.h>

#include <type_traits>

namespace mox::geometry {

/// What the transformations by a matrix M in homogeneous coordinates share. A default one is the identity.
///
/// In 2D the point (x, y, 1) times M gives (u, v, w) and the result is (u / w, v / w); a w below 1e-8 in absolute
/// value is refused with "bad precision.". 3D is the same with a 4 by 4 matrix, whose last row is always (0, 0, 0, 1).
///
/// | flat index, 2D | element          | flat index, 3D | element    |
/// |----------------|------------------|----------------|------------|
/// | 0, 1           | M[0][2], M[1][2] | 0, 1, 2        | M[0..2][3] |
/// | 2, 3           | M[0][0], M[0][1] | 3, 4, 5        | M[0][0..2] |
/// | 4, 5           | M[1][0], M[1][1] | 6, 7, 8        | M[1][0..2] |
/// | 6, 7           | M[2][0], M[2][1] | 9, 10, 11      | M[2][0..2] |
///
/// M[2][2], in 3D M[3][3], is 1. Every class serves all of these indices, whatever its number of parameters.
template <unsigned int D>
class MOXELCORE_API MatrixTransformation
    : public Transformation<std::conditional_t<D == 2, math::Vector2<double>, math::Vector3<double>>> {
public:
    using Point = std::conditional_t<D == 2, math::Vector2<double>, math::Vector3<double>>;
    using RotationMatrix = std::conditional_t<D == 2, math::Matrix2<double>, math::Matrix3<double>>;

    void map(Point& point) const override;
    void map(Point* points, std::size_t count) const override;

    unsigned int getNumOfParameter() const override;
    double getParam(unsigned int index) const override;
    void setParam(unsigned int index, double value) override;

    Point getTranslation() const;
    void setTranslation(Point const& translation);

protected:
    explicit MatrixTransformation(unsigned int numOfParameter);

    /// The linear part.
    RotationMatrix matrix() const;
    void setMatrix(RotationMatrix const& matrix);

private:
    unsigned int numOfParameter_;
    double m_[D + 1][D + 1] = {};
};

extern template class MOXELCORE_API MatrixTransformation<2>;
extern template class MOXELCORE_API MatrixTransformation<3>;

} // namespace mox::geometry
