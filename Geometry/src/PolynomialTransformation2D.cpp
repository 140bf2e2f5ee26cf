#include <Moxelcore/Geometry/PolynomialOrder2Transformation2D.h>
#include <Moxelcore/Geometry/PolynomialOrder3Transformation2D.h>

#include "Geometry/private/monomials.h"
#include "Geometry/private/refuseIndex.h"

namespace mox::geometry {

namespace {

constexpr unsigned int secondRun = 10;

template <unsigned int numOfTerms>
unsigned int placeOf(unsigned int index)
{
    if (index >= 2 * numOfTerms) {
        refuseIndex("Geometry/src/PolynomialTransformation2D", index, 2 * numOfTerms);
    }
    return index < numOfTerms ? index : index - numOfTerms + secondRun;
}

} // namespace

template <unsigned int order>
PolynomialTransformation2D<order>::PolynomialTransformation2D()
{
    p_[1] = 1.0;
    p_[secondRun + 2] = 1.0;
}

template <unsigned int order>
PolynomialTransformation2D<order>::PolynomialTransformation2D(double const* coefficients)
{
    for (unsigned int i = 0; i < 2 * numOfTerms; ++i) {
        p_[placeOf<numOfTerms>(i)] = coefficients[i];
    }
}

template <unsigned int order>
void PolynomialTransformation2D<order>::map(math::Vector2<double>& point) const
{
    double terms[numOfMonomials];
    evaluateMonomials(point[0], point[1], terms);
    double x = p_[0];
    double y = p_[secondRun];
    for (unsigned int i = 1; i < numOfTerms; ++i) {
        x += p_[i] * terms[i];
        y += p_[secondRun + i] * terms[i];
    }
    point.setValue(x, y);
}

template <unsigned int order>
void PolynomialTransformation2D<order>::map(math::Vector2<double>* points, std::size_t count) const
{
    for (std::size_t i = 0; i < count; ++i) {
        PolynomialTransformation2D::map(points[i]);
    }
}

template <unsigned int order>
unsigned int PolynomialTransformation2D<order>::getNumOfParameter() const
{
    return 2 * numOfTerms;
}

template <unsigned int order>
double PolynomialTransformation2D<order>::getParam(unsigned int index) const
{
    return p_[placeOf<numOfTerms>(index)];
}

template <unsigned int order>
void PolynomialTransformation2D<order>::setParam(unsigned int index, double value)
{
    p_[placeOf<numOfTerms>(index)] = value;
}

template class PolynomialTransformation2D<2>;
template class PolynomialTransformation2D<3>;

PolynomialOrder2Transformation2D::PolynomialOrder2Transformation2D() = default;
PolynomialOrder2Transformation2D::PolynomialOrder2Transformation2D(double const* coefficients)
    : PolynomialTransformation2D(coefficients)
{
}

PolynomialOrder3Transformation2D::PolynomialOrder3Transformation2D() = default;
PolynomialOrder3Transformation2D::PolynomialOrder3Transformation2D(double const* coefficients)
    : PolynomialTransformation2D(coefficients)
{
}

} // namespace mox::geometry
