#pragma once

namespace mox::geometry {

/// The terms of polynomials in two variables, as exponents of x and of y, in the order of their coefficients. The
/// first 1, 3, 6, 10 are those up to order 0, 1, 2, 3.
struct Monomial {
    unsigned int x, y;
};

constexpr Monomial monomials[] = {{0, 0}, {1, 0}, {0, 1}, {2, 0}, {0, 2}, {1, 1}, {3, 0}, {0, 3}, {2, 1}, {1, 2}};
constexpr unsigned int numOfMonomials = 10;

inline void evaluateMonomials(double x, double y, double (&values)[numOfMonomials])
{
    double const xx = x * x;
    double const yy = y * y;
    double const all[numOfMonomials] = {1, x, y, xx, yy, x * y, xx * x, yy * y, xx * y, x * yy};
    for (unsigned int i = 0; i < numOfMonomials; ++i) {
        values[i] = all[i];
    }
}

} // namespace mox::geometry
