#pragma once

#include <Moxelcore/Geometry/Transformation.h>

namespace mox::geometry {

/// What the transformations by polynomials share. They map every point. A default one is the identity.
///
/// With x, y the input, order 2 is
///
///     x' = p[0]  + p[1] x  + p[2] y  + p[3] x^2  + p[4] y^2  + p[5] x y
///     y' = p[10] + p[11] x + p[12] y + p[13] x^2 + p[14] y^2 + p[15] x y
///
/// to which order 3 adds p[6] x^3 + p[7] y^3 + p[8] x^2 y + p[9] x y^2, and to y' the same with p[16] to p[19]. The
/// flat list of order 3 is p; that of order 2 leaves out the last four of either run of ten.
template <unsigned int order>
class MOXELCORE_API PolynomialTransformation2D : public Transformation<math::Vector2<double>> {
public:
    static constexpr unsigned int numOfTerms = (order + 1) * (order + 2) / 2;

    void map(math::Vector2<double>& point) const override;
    void map(math::Vector2<double>* points, std::size_t count) const override;

    unsigned int getNumOfParameter() const override;
    double getParam(unsigned int index) const override;
    void setParam(unsigned int index, double value) override;

protected:
    PolynomialTransformation2D();
    explicit PolynomialTransformation2D(double const* coefficients);

private:
    double p_[20] = {};
};

extern template class MOXELCORE_API PolynomialTransformation2D<2>;
extern template class MOXELCORE_API PolynomialTransformation2D<3>;

} // namespace mox::geometry
