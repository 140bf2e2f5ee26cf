#pragma once

#include <Moxelcore/Geometry/PolynomialTransformation2D.h>

namespace mox::geometry {

/// Maps points by polynomials of order 3: 20 parameters.
class MOXELCORE_API PolynomialOrder3Transformation2D final : public PolynomialTransformation2D<3> {
public:
    PolynomialOrder3Transformation2D();
    /// 20 coefficients in flat order.
    explicit PolynomialOrder3Transformation2D(double const* coefficients);
};

} // namespace mox::geometry
