#include "Math/private/SingularValueDecomposition.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "Core/private/Helper/raise.h"

namespace mox::math {

namespace {

[[noreturn]] void refuse()
{
    helper::raise<RuntimeError>("Math/src/SingularValueDecomposition",
                                "no convergence in 30 Singular Value Decomposition iterations");
}

constexpr double epsilon = std::numeric_limits<double>::epsilon();

double dot(double const* a, double const* b, std::size_t count)
{
    return std::inner_product(a, a + count, b, 0.0);
}

void turn(double* a, double* b, std::size_t count, double cosine, double sine)
{
    for (std::size_t i = 0; i < count; ++i) {
        double const before = a[i];
        a[i] = cosine * before - sine * b[i];
        b[i] = sine * before + cosine * b[i];
    }
}

} // namespace

SingularValueDecomposition::SingularValueDecomposition(DenseMatrix matrix)
    : u_(std::move(matrix))
    , v_(u_.columns(), u_.columns())
    , values_(u_.columns())
{
    for (std::size_t i = 0; i < v_.columns(); ++i) {
        v_(i, i) = 1.0;
    }
    scale();
    int sweepsLeft = 30;
    while (!sweep()) {
        if (--sweepsLeft == 0) {
            refuse();
        }
    }
    order();
}

/// By a power of two, so that squares neither overflow nor vanish.
void SingularValueDecomposition::scale()
{
    double const* const begin = u_.column(0);
    double const* const end = begin + u_.rows() * u_.columns();
    if (!std::all_of(begin, end, [](double component) { return std::isfinite(component); })) {
        refuse();
    }
    double largest = 0.0;
    std::for_each(begin, end, [&](double component) { largest = std::max(largest, std::abs(component)); });
    if (largest == 0.0) {
        return;
    }
    scale_ = std::ldexp(1.0, std::ilogb(largest));
    std::transform(begin, end, u_.column(0), [&](double component) { return component / scale_; });
    negligible_ = epsilon * epsilon * dot(begin, begin, u_.rows() * u_.columns());
}

/// Turns each pair of columns once. True when none needed it.
bool SingularValueDecomposition::sweep()
{
    bool orthogonal = true;
    std::size_t const rows = u_.rows();
    for (std::size_t p = 0; p + 1 < u_.columns(); ++p) {
        for (std::size_t q = p + 1; q < u_.columns(); ++q) {
            double const pp = dot(u_.column(p), u_.column(p), rows);
            double const qq = dot(u_.column(q), u_.column(q), rows);
            double const pq = dot(u_.column(p), u_.column(q), rows);
            if (std::abs(pq) <= epsilon * std::sqrt(pp * qq) || std::min(pp, qq) <= negligible_) {
                continue;
            }
            orthogonal = false;
            double const zeta = (qq - pp) / (2.0 * pq);
            double const tangent = std::copysign(1.0, zeta) / (std::abs(zeta) + std::hypot(1.0, zeta));
            double const cosine = 1.0 / std::hypot(1.0, tangent);
            turn(u_.column(p), u_.column(q), rows, cosine, cosine * tangent);
            turn(v_.column(p), v_.column(q), v_.rows(), cosine, cosine * tangent);
        }
    }
    return orthogonal;
}

/// Takes the singular values out of the columns and brings them in order.
void SingularValueDecomposition::order()
{
    std::vector<std::size_t> places(values_.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::vector<double> lengths(values_.size());
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        lengths[i] = std::sqrt(dot(u_.column(i), u_.column(i), u_.rows()));
    }
    std::stable_sort(places.begin(), places.end(), [&](auto a, auto b) { return lengths[a] > lengths[b]; });
    DenseMatrix const unsortedU = u_;
    DenseMatrix const unsortedV = v_;
    for (std::size_t i = 0; i < places.size(); ++i) {
        double const length = lengths[places[i]];
        double const inverse = length > 0.0 ? 1.0 / length : 0.0;
        values_[i] = length * scale_;
        for (std::size_t row = 0; row < u_.rows(); ++row) {
            u_(row, i) = unsortedU(row, places[i]) * inverse;
        }
        std::copy_n(unsortedV.column(places[i]), v_.rows(), v_.column(i));
    }
}

bool SingularValueDecomposition::isRankDeficient(double ratio) const
{
    return values_.empty() || values_.front() == 0.0 || values_.back() <= ratio * values_.front();
}

std::vector<double> SingularValueDecomposition::solve(std::vector<double> const& b) const
{
    std::vector<double> x(v_.rows());
    for (std::size_t i = 0; i < values_.size(); ++i) {
        double const factor = dot(u_.column(i), b.data(), u_.rows()) / values_[i];
        for (std::size_t row = 0; row < x.size(); ++row) {
            x[row] += factor * v_(row, i);
        }
    }
    return x;
}

} // namespace mox::math
