#include "Registration/private/fits.h"

#include <array>
#include <cmath>

#include "Geometry/private/monomials.h"
#include "Math/private/SingularValueDecomposition.h"
#include "Registration/private/NormalizedPoints.h"

namespace mox::registration {

using math::DenseMatrix;
using math::SingularValueDecomposition;

namespace {

using namespace geometry;
using Point2D = math::Vector2<double>;
using Point3D = math::Vector3<double>;

constexpr double deficientRatio = 1e-10;

template <class Point>
constexpr unsigned int dimensionOf = std::is_same_v<Point, Point2D> ? 2 : 3;

/// Both sides of all pairs, normalised.
template <class Point>
struct NormalizedPairs {
    explicit NormalizedPairs(PointPairs<Point> const& pairs)
        : data(pairs.data, pairs.count)
        , model(pairs.model, pairs.count)
    {
    }

    bool areUsable() const { return data.isUsable() && model.isUsable() && data.hasExtent(); }

    NormalizedPoints<Point> data;
    NormalizedPoints<Point> model;
};

/// For each coordinate of the model, the coefficients of the terms of the data that give it in least squares. A row of
/// `terms` stands for a pair.
template <class Point>
std::optional<std::array<std::vector<double>, dimensionOf<Point>>> fitLinear(DenseMatrix terms,
                                                                             NormalizedPoints<Point> const& model)
{
    SingularValueDecomposition const system(std::move(terms));
    if (system.isRankDeficient(deficientRatio)) {
        return std::nullopt;
    }
    std::array<std::vector<double>, dimensionOf<Point>> coefficients;
    std::vector<double> wanted(model.size());
    for (unsigned int d = 0; d < coefficients.size(); ++d) {
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            wanted[i] = model[i][d];
        }
        coefficients[d] = system.solve(wanted);
    }
    return coefficients;
}

template <class T, class Point>
std::optional<T> fitTranslation(PointPairs<Point> const& pairs)
{
    NormalizedPoints<Point> const data(pairs.data, pairs.count);
    NormalizedPoints<Point> const model(pairs.model, pairs.count);
    if (!data.isUsable() || !model.isUsable()) {
        return std::nullopt;
    }
    return T(model.centre() - data.centre());
}

/// The translation after a linear part that takes centre to centre.
template <class Point, class Matrix>
Point centredTranslation(NormalizedPairs<Point> const& pairs, Matrix const& linear)
{
    Point translation = pairs.model.centre();
    for (unsigned int row = 0; row < dimensionOf<Point>; ++row) {
        for (unsigned int column = 0; column < dimensionOf<Point>; ++column) {
            translation[row] -= linear(row, column) * pairs.data.centre()[column];
        }
    }
    return translation;
}

template <class T, class Point, class Matrix>
T centred(NormalizedPairs<Point> const& pairs, Matrix const& linear)
{
    T transformation;
    transformation.setRotationMatrix(linear);
    transformation.setTranslation(centredTranslation(pairs, linear));
    return transformation;
}

/// The data are centred, so that the constant term vanishes.
template <class T, class Matrix, class Point>
std::optional<T> fitAffine(PointPairs<Point> const& points)
{
    constexpr unsigned int dimension = dimensionOf<Point>;
    NormalizedPairs<Point> const pairs(points);
    if (!pairs.areUsable()) {
        return std::nullopt;
    }
    DenseMatrix terms(points.count, dimension);
    for (std::size_t i = 0; i < points.count; ++i) {
        for (unsigned int d = 0; d < dimension; ++d) {
            terms(i, d) = pairs.data[i][d];
        }
    }
    auto const coefficients = fitLinear(std::move(terms), pairs.model);
    if (!coefficients) {
        return std::nullopt;
    }
    Matrix linear;
    double const factor = pairs.data.factor() / pairs.model.factor();
    for (unsigned int row = 0; row < dimension; ++row) {
        for (unsigned int column = 0; column < dimension; ++column) {
            linear(row, column) = (*coefficients)[row][column] * factor;
        }
    }
    return centred<T>(pairs, linear);
}

/// The sum over all pairs of model times data transposed.
template <class Point>
DenseMatrix crossCovariance(NormalizedPairs<Point> const& pairs)
{
    constexpr unsigned int dimension = dimensionOf<Point>;
    DenseMatrix covariance(dimension, dimension);
    for (std::size_t i = 0; i < pairs.data.size(); ++i) {
        for (unsigned int row = 0; row < dimension; ++row) {
            for (unsigned int column = 0; column < dimension; ++column) {
                covariance(row, column) += pairs.model[i][row] * pairs.data[i][column];
            }
        }
    }
    return covariance;
}

/// Replaces the last of orthonormal columns, so that they are right-handed.
DenseMatrix rightHanded(DenseMatrix columns)
{
    double const* const a = columns.column(0);
    double const* const b = columns.column(1);
    if (columns.rows() == 2) {
        columns(0, 1) = -a[1];
        columns(1, 1) = a[0];
        return columns;
    }
    columns(0, 2) = a[1] * b[2] - a[2] * b[1];
    columns(1, 2) = a[2] * b[0] - a[0] * b[2];
    columns(2, 2) = a[0] * b[1] - a[1] * b[0];
    return columns;
}

/// The rotation that takes the data nearest to the model. It is determined when turning about any axis makes the
/// distance grow: the two smallest singular values, the last with the sign of the determinant, have a sum above 0.
template <class Matrix, class Point>
std::optional<Matrix> fitRotation(NormalizedPairs<Point> const& pairs)
{
    constexpr unsigned int last = dimensionOf<Point> - 1;
    DenseMatrix const covariance = crossCovariance(pairs);
    SingularValueDecomposition const svd(covariance);
    DenseMatrix const u = rightHanded(svd.u());
    DenseMatrix const v = rightHanded(svd.v());
    double signedLast = 0.0;
    for (unsigned int row = 0; row <= last; ++row) {
        for (unsigned int column = 0; column <= last; ++column) {
            signedLast += u(row, last) * covariance(row, column) * v(column, last);
        }
    }
    double const largest = svd.values().front();
    double const noise = deficientRatio * static_cast<double>(pairs.data.size());
    if (largest <= noise || svd.values()[last - 1] + signedLast <= deficientRatio * largest) {
        return std::nullopt;
    }
    Matrix rotation;
    for (unsigned int row = 0; row <= last; ++row) {
        for (unsigned int column = 0; column <= last; ++column) {
            for (unsigned int i = 0; i <= last; ++i) {
                rotation(row, column) += u(row, i) * v(column, i);
            }
        }
    }
    return rotation;
}

std::array<double, 9> product(std::array<double, 9> const& a, std::array<double, 9> const& b)
{
    std::array<double, 9> result = {};
    for (unsigned int i = 0; i < 9; ++i) {
        for (unsigned int k = 0; k < 3; ++k) {
            result[i] += a[i / 3 * 3 + k] * b[k * 3 + i % 3];
        }
    }
    return result;
}

/// Two equations for each pair: the image of the data point is parallel to the model point, both homogeneous.
DenseMatrix projectiveSystem(NormalizedPairs<Point2D> const& pairs)
{
    std::size_t const count = pairs.data.size();
    DenseMatrix system(2 * count, 9);
    for (std::size_t i = 0; i < count; ++i) {
        double const from[] = {pairs.data[i][0], pairs.data[i][1], 1.0};
        for (unsigned int k = 0; k < 3; ++k) {
            system(2 * i, k) = from[k];
            system(2 * i, 6 + k) = -pairs.model[i][0] * from[k];
            system(2 * i + 1, 3 + k) = from[k];
            system(2 * i + 1, 6 + k) = -pairs.model[i][1] * from[k];
        }
    }
    return system;
}

/// The matrix up to a factor, row first, in normalised coordinates.
std::optional<std::array<double, 9>> solveProjective(NormalizedPairs<Point2D> const& pairs)
{
    SingularValueDecomposition const system(projectiveSystem(pairs));
    if (system.values()[7] <= deficientRatio * system.values().front()) {
        return std::nullopt;
    }
    std::array<double, 9> solution;
    DenseMatrix square(3, 3);
    for (unsigned int i = 0; i < 9; ++i) {
        solution[i] = system.v()(i, 8);
        square(i / 3, i % 3) = solution[i];
    }
    // Three data points on a line and their images not: all is collapsed onto a point.
    if (SingularValueDecomposition(square).isRankDeficient(deficientRatio)) {
        return std::nullopt;
    }
    return solution;
}

std::optional<ProjectiveTransformation2D> fitProjective(PointPairs2D const& points)
{
    NormalizedPairs<Point2D> const pairs(points);
    if (!pairs.areUsable() || !pairs.model.hasExtent()) {
        return std::nullopt;
    }
    auto const solution = solveProjective(pairs);
    if (!solution) {
        return std::nullopt;
    }
    double const data = pairs.data.factor();
    double const model = pairs.model.factor();
    Point2D const from = pairs.data.centre();
    Point2D const to = pairs.model.centre();
    std::array<double, 9> const normalize = {data, 0, -data * from[0], 0, data, -data * from[1], 0, 0, 1};
    std::array<double, 9> const restore = {1 / model, 0, to[0], 0, 1 / model, to[1], 0, 0, 1};
    std::array<double, 9> const m = product(restore, product(*solution, normalize));
    // The origin of the data goes to infinity: a matrix with a last element of 1 cannot say that.
    if (std::abs(m[8]) <= deficientRatio * (std::abs(m[6] * from[0]) + std::abs(m[7] * from[1]) + std::abs(m[8]))) {
        return std::nullopt;
    }
    ProjectiveTransformation2D transformation;
    unsigned int const elements[] = {2, 5, 0, 1, 3, 4, 6, 7};
    for (unsigned int i = 0; i < 8; ++i) {
        transformation.setParam(i, m[elements[i]] / m[8]);
    }
    return transformation;
}

double binomial(unsigned int n, unsigned int k)
{
    constexpr double table[4][4] = {{1, 0, 0, 0}, {1, 1, 0, 0}, {1, 2, 1, 0}, {1, 3, 3, 1}};
    return table[n][k];
}

/// The coefficients of x^i y^j in the powers of a polynomial in (x - cx) f and (y - cy) f.
std::array<double, numOfMonomials> expanded(std::vector<double> const& coefficients, Point2D const& centre, double f)
{
    std::array<double, numOfMonomials> result = {};
    for (unsigned int to = 0; to < coefficients.size(); ++to) {
        Monomial const power = monomials[to];
        for (unsigned int from = 0; from < coefficients.size(); ++from) {
            Monomial const whole = monomials[from];
            if (whole.x < power.x || whole.y < power.y) {
                continue;
            }
            result[to] += coefficients[from] * std::pow(f, whole.x + whole.y) * binomial(whole.x, power.x) *
                          binomial(whole.y, power.y) * std::pow(-centre[0], whole.x - power.x) *
                          std::pow(-centre[1], whole.y - power.y);
        }
    }
    return result;
}

template <class T>
std::optional<T> fitPolynomial(PointPairs2D const& points)
{
    NormalizedPairs<Point2D> const pairs(points);
    if (!pairs.areUsable()) {
        return std::nullopt;
    }
    DenseMatrix terms(points.count, T::numOfTerms);
    for (std::size_t i = 0; i < points.count; ++i) {
        double values[numOfMonomials];
        evaluateMonomials(pairs.data[i][0], pairs.data[i][1], values);
        for (unsigned int term = 0; term < T::numOfTerms; ++term) {
            terms(i, term) = values[term];
        }
    }
    auto const coefficients = fitLinear(std::move(terms), pairs.model);
    if (!coefficients) {
        return std::nullopt;
    }
    T transformation;
    for (unsigned int d = 0; d < 2; ++d) {
        auto const powers = expanded((*coefficients)[d], pairs.data.centre(), pairs.data.factor());
        for (unsigned int term = 0; term < T::numOfTerms; ++term) {
            double const offset = term == 0 ? pairs.model.centre()[d] : 0.0;
            transformation.setParam(d * T::numOfTerms + term, powers[term] / pairs.model.factor() + offset);
        }
    }
    return transformation;
}

} // namespace

template <>
std::optional<Translation2D> fit(PointPairs2D const& pairs)
{
    return fitTranslation<Translation2D>(pairs);
}

template <>
std::optional<Translation3D> fit(PointPairs3D const& pairs)
{
    return fitTranslation<Translation3D>(pairs);
}

template <>
std::optional<RigidTransformation2D> fit(PointPairs2D const& points)
{
    NormalizedPairs<Point2D> const pairs(points);
    if (!pairs.areUsable()) {
        return std::nullopt;
    }
    auto const rotation = fitRotation<math::Matrix2<double>>(pairs);
    if (!rotation) {
        return std::nullopt;
    }
    double const angle = std::atan2((*rotation)(1, 0), (*rotation)(0, 0));
    return RigidTransformation2D(angle, centredTranslation(pairs, *rotation));
}

template <>
std::optional<RigidTransformation3D> fit(PointPairs3D const& points)
{
    NormalizedPairs<Point3D> const pairs(points);
    if (!pairs.areUsable()) {
        return std::nullopt;
    }
    auto const rotation = fitRotation<math::Matrix3<double>>(pairs);
    return rotation ? std::optional(centred<RigidTransformation3D>(pairs, *rotation)) : std::nullopt;
}

template <>
std::optional<AffineTransformation2D> fit(PointPairs2D const& pairs)
{
    return fitAffine<AffineTransformation2D, math::Matrix2<double>>(pairs);
}

template <>
std::optional<AffineTransformation3D> fit(PointPairs3D const& pairs)
{
    return fitAffine<AffineTransformation3D, math::Matrix3<double>>(pairs);
}

template <>
std::optional<ProjectiveTransformation2D> fit(PointPairs2D const& pairs)
{
    return fitProjective(pairs);
}

template <>
std::optional<PolynomialOrder2Transformation2D> fit(PointPairs2D const& pairs)
{
    return fitPolynomial<PolynomialOrder2Transformation2D>(pairs);
}

template <>
std::optional<PolynomialOrder3Transformation2D> fit(PointPairs2D const& pairs)
{
    return fitPolynomial<PolynomialOrder3Transformation2D>(pairs);
}

} // namespace mox::registration
