#pragma once

#include <Moxelcore/Geometry/PolynomialTransformation2D.h>

namespace mox::geometry {

/// Maps points by polynomials of order 2: 12 parameters.
class MOXELCORE_API PolynomialOrder2Transformation2D final : public PolynomialTransformation2D<2> {
public:
    PolynomialOrder2Transformation2D();
    /// 12 coefficients in flat order.
    explicit PolynomialOrder2Transformation2D(double const* coefficients);
};

} // namespace mox::geometry
