#pragma once

#include <cstddef>
#include <vector>

namespace mox::math {

/// A matrix of any size, column by column in memory.
class DenseMatrix {
public:
    DenseMatrix(std::size_t rows, std::size_t columns)
        : rows_(rows)
        , columns_(columns)
        , components_(rows * columns)
    {
    }

    std::size_t rows() const { return rows_; }
    std::size_t columns() const { return columns_; }

    double& operator()(std::size_t row, std::size_t column) { return components_[column * rows_ + row]; }
    double operator()(std::size_t row, std::size_t column) const { return components_[column * rows_ + row]; }
    double* column(std::size_t index) { return components_.data() + index * rows_; }
    double const* column(std::size_t index) const { return components_.data() + index * rows_; }

private:
    std::size_t rows_;
    std::size_t columns_;
    std::vector<double> components_;
};

/// A = U S V^T with orthonormal columns in U and V and singular values in descending order, one for each column of A.
/// Where a singular value is 0, as the last ones of a matrix with fewer rows than columns, the column of U is 0.
///
/// By one-sided Jacobi rotations (Hestenes): pairs of columns are turned until all are orthogonal.
class SingularValueDecomposition {
public:
    /// Throws `RuntimeError` "no convergence in 30 Singular Value Decomposition iterations", which only components
    /// that are not finite bring about.
    explicit SingularValueDecomposition(DenseMatrix matrix);

    DenseMatrix const& u() const { return u_; }
    std::vector<double> const& values() const { return values_; }
    DenseMatrix const& v() const { return v_; }

    /// Whether a singular value is at most `ratio` times the largest, or all are 0.
    bool isRankDeficient(double ratio) const;
    /// The x of least |A x - b|. A must have full rank.
    std::vector<double> solve(std::vector<double> const& b) const;

private:
    void scale();
    bool sweep();
    void order();

    DenseMatrix u_;
    DenseMatrix v_;
    std::vector<double> values_;
    double scale_ = 1.0;
    double negligible_ = 0.0;
};

} // namespace mox::math
