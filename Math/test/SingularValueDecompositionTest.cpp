#include <gtest/gtest.h>

#include <Moxelcore/Core/Exception.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "Math/private/SingularValueDecomposition.h"

namespace mox::math {

namespace {

DenseMatrix randomMatrix(std::mt19937& random, std::size_t rows, std::size_t columns)
{
    std::normal_distribution<double> normal;
    DenseMatrix matrix(rows, columns);
    for (std::size_t i = 0; i < columns; ++i) {
        std::generate_n(matrix.column(i), rows, [&] { return normal(random); });
    }
    return matrix;
}

double dotOfColumns(DenseMatrix const& matrix, std::size_t a, std::size_t b)
{
    double sum = 0.0;
    for (std::size_t row = 0; row < matrix.rows(); ++row) {
        sum += matrix(row, a) * matrix(row, b);
    }
    return sum;
}

void expectOrthonormal(DenseMatrix const& matrix, std::size_t numOfColumns)
{
    for (std::size_t a = 0; a < numOfColumns; ++a) {
        for (std::size_t b = 0; b <= a; ++b) {
            EXPECT_NEAR(dotOfColumns(matrix, a, b), a == b ? 1.0 : 0.0, 1e-13) << a << ' ' << b;
        }
    }
}

void expectProduct(DenseMatrix const& matrix, SingularValueDecomposition const& svd, double tolerance)
{
    for (std::size_t row = 0; row < matrix.rows(); ++row) {
        for (std::size_t column = 0; column < matrix.columns(); ++column) {
            double sum = 0.0;
            for (std::size_t i = 0; i < matrix.columns(); ++i) {
                sum += svd.u()(row, i) * svd.values()[i] * svd.v()(column, i);
            }
            EXPECT_NEAR(sum, matrix(row, column), tolerance);
        }
    }
}

TEST(SingularValueDecomposition, takesRandomMatricesApart)
{
    std::mt19937 random(1);
    for (std::size_t columns : {1U, 2U, 3U, 5U, 9U}) {
        for (std::size_t rows : {1U, 2U, 3U, 8U, 40U}) {
            DenseMatrix const matrix = randomMatrix(random, rows, columns);
            SingularValueDecomposition const svd(matrix);
            std::size_t const rank = std::min(rows, columns);
            expectOrthonormal(svd.u(), rank);
            expectOrthonormal(svd.v(), columns);
            expectProduct(matrix, svd, 1e-12);
            for (std::size_t i = 0; i + 1 < columns; ++i) {
                EXPECT_GE(svd.values()[i], svd.values()[i + 1]);
            }
            for (std::size_t i = rank; i < columns; ++i) {
                EXPECT_LT(svd.values()[i], 1e-14 * svd.values()[0]) << "beyond the rank";
            }
        }
    }
}

TEST(SingularValueDecomposition, findsKnownValues)
{
    DenseMatrix matrix(2, 2); // A^T A = ((25, 20), (20, 25)), with the eigenvalues 45 and 5
    matrix(0, 0) = 3;
    matrix(0, 1) = 0;
    matrix(1, 0) = 4;
    matrix(1, 1) = 5;
    SingularValueDecomposition const svd(matrix);
    EXPECT_NEAR(svd.values()[0], std::sqrt(45.0), 1e-14);
    EXPECT_NEAR(svd.values()[1], std::sqrt(5.0), 1e-14);
}

TEST(SingularValueDecomposition, keepsToTheScaleOfTheMatrix)
{
    std::mt19937 random(2);
    for (double const scale : {1e-200, 1e200}) {
        DenseMatrix matrix = randomMatrix(random, 4, 3);
        for (std::size_t i = 0; i < 3; ++i) {
            std::for_each(matrix.column(i), matrix.column(i) + 4, [&](double& component) { component *= scale; });
        }
        SingularValueDecomposition const svd(matrix);
        expectOrthonormal(svd.u(), 3);
        expectProduct(matrix, svd, 1e-13 * scale);
    }
}

TEST(SingularValueDecomposition, takesZeros)
{
    SingularValueDecomposition const svd(DenseMatrix(3, 2));
    EXPECT_EQ(svd.values(), (std::vector<double>{0.0, 0.0}));
    expectOrthonormal(svd.v(), 2);
    EXPECT_TRUE(svd.isRankDeficient(0.0));
}

TEST(SingularValueDecomposition, tellsRankDeficiency)
{
    DenseMatrix matrix(3, 2);
    for (std::size_t row = 0; row < 3; ++row) {
        matrix(row, 0) = static_cast<double>(row + 1);
        matrix(row, 1) = 2.0 * matrix(row, 0);
    }
    EXPECT_TRUE(SingularValueDecomposition(matrix).isRankDeficient(1e-10));
    matrix(2, 1) += 1.0;
    EXPECT_FALSE(SingularValueDecomposition(matrix).isRankDeficient(1e-10));
    DenseMatrix diagonal(2, 2);
    diagonal(0, 0) = 1.0;
    diagonal(1, 1) = 0.25;
    EXPECT_TRUE(SingularValueDecomposition(diagonal).isRankDeficient(0.25));
    EXPECT_FALSE(SingularValueDecomposition(diagonal).isRankDeficient(0.2499));
}

TEST(SingularValueDecomposition, solvesInLeastSquares)
{
    DenseMatrix line(4, 2); // y = a + b x through (0, 1), (1, 3), (2, 5), (3, 9) has a = 0.6, b = 2.6
    for (std::size_t row = 0; row < 4; ++row) {
        line(row, 0) = 1.0;
        line(row, 1) = static_cast<double>(row);
    }
    auto const solution = SingularValueDecomposition(line).solve({1, 3, 5, 9});
    EXPECT_NEAR(solution[0], 0.6, 1e-14);
    EXPECT_NEAR(solution[1], 2.6, 1e-14);
}

TEST(SingularValueDecomposition, doesNotConvergeOnWhatIsNotFinite)
{
    for (double const component : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        DenseMatrix matrix(3, 2);
        matrix(1, 1) = component;
        try {
            SingularValueDecomposition const svd(matrix);
            FAIL() << "nothing thrown";
        } catch (RuntimeError const& error) {
            EXPECT_NE(std::string(error.getInfo().c_str())
                          .find("no convergence in 30 Singular Value Decomposition iterations"),
                      std::string::npos);
        }
    }
}

} // namespace

} // namespace mox::math
