#pragma once

#include <Eigen/Core>

#include <vector>

namespace boost::serialization {
class access;
}

namespace mox::math {

/// Mean and covariance of samples of one length, in one pass without keeping the samples. First it accumulates: `mean`
/// and the upper triangle of `cov` are sums. Once finalized they are moments, and there is no way back.
///
/// The covariance is E[x x^T] - m m^T with the number of samples as divisor, the maximum-likelihood estimate.
template <class T>
class GaussianModelEstimator {
public:
    using VectorType = Eigen::Matrix<T, Eigen::Dynamic, 1>;
    using MatrixType = Eigen::Matrix<T, Eigen::Dynamic, Eigen::Dynamic>;

    explicit GaussianModelEstimator(int dimension = 0);

    /// The length of the sample is the caller's duty. Throws `RuntimeError` once finalized.
    void update(VectorType sample);
    /// Without samples the moments become NaN. A second call does nothing.
    void finalize();
    /// Becomes the mean of both models weighted with their samples; of the covariances alike, without a term for the
    /// distance of the means. Throws `RuntimeError` unless both are finalized and of one dimension.
    void join(GaussianModelEstimator const& other);
    /// The model of a subset of the features, in ascending order whatever the order asked for. Throws `RuntimeError`
    /// before `finalize` or for equal neighbours among the indices, `BadIndex` for an index that does not exist.
    GaussianModelEstimator reduce(std::vector<int> indices) const;
    /// The moments of (x + offset) * factor. Throws `InvalidCall` before `finalize`.
    void normalize(VectorType const& offset, VectorType const& factor);
    /// Empty and finalized: neutral on the left of `join`.
    void reset();

    /// Throw `InvalidCall` before `finalize`.
    VectorType const& getMean() const;
    MatrixType const& getCov() const;

    unsigned int getNumSample() const { return numSample_; }
    int getDimension() const { return dimension_; }
    bool isUpToDate() const { return uptodate_; }
    /// Whether the fields fit together, which a file does not warrant.
    bool isConsistent() const;

private:
    friend class boost::serialization::access;
    template <class Archive>
    void serialize(Archive& archive, unsigned int version);

    void requireUpToDate() const;

    int dimension_;
    VectorType mean_;
    MatrixType cov_;
    unsigned int numSample_ = 0;
    bool uptodate_ = false;
};

extern template class GaussianModelEstimator<double>;

} // namespace mox::math
