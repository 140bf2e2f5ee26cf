#include "Math/private/GaussianModelEstimator.h"

#include <Moxelcore/Core/Exception.h>

#include <algorithm>

#include "Core/private/Helper/raise.h"

namespace mox::math {

namespace {

constexpr char const* source = "Math/private/GaussianModelEstimator";

} // namespace

template <class T>
GaussianModelEstimator<T>::GaussianModelEstimator(int dimension)
    : dimension_(dimension)
    , mean_(VectorType::Zero(dimension))
    , cov_(MatrixType::Zero(dimension, dimension))
{
}

template <class T>
void GaussianModelEstimator<T>::update(VectorType sample)
{
    if (uptodate_) {
        helper::raise<RuntimeError>(source, "Cannot update of model that has been finalized");
    }
    mean_ += sample;
    for (int i = 0; i < dimension_; ++i) {
        for (int j = i; j < dimension_; ++j) {
            cov_(i, j) += sample[j] * sample[i];
        }
    }
    ++numSample_;
}

template <class T>
void GaussianModelEstimator<T>::finalize()
{
    if (uptodate_) {
        return;
    }
    auto const n = static_cast<T>(numSample_);
    mean_ *= T(1) / n; // the mean is scaled by the reciprocal, the triangle divided: two roundings, on purpose
    for (int i = 0; i < dimension_; ++i) {
        for (int j = i; j < dimension_; ++j) {
            cov_(i, j) = cov_(i, j) / n;
        }
    }
    for (int c = 0; c < dimension_; ++c) {
        for (int r = 0; r < c; ++r) {
            cov_(c, r) = cov_(r, c);
        }
    }
    MatrixType const outer = mean_ * mean_.transpose();
    cov_ -= outer;
    uptodate_ = true;
}

template <class T>
void GaussianModelEstimator<T>::join(GaussianModelEstimator const& other)
{
    if (dimension_ != other.dimension_) {
        helper::raise<RuntimeError>(source, "The 2 models must have the same dimension");
    }
    if (!uptodate_ || !other.uptodate_) {
        helper::raise<RuntimeError>(source, "cannot join 2 models that have not been finalized");
    }
    auto const n1 = static_cast<T>(numSample_);
    auto const n2 = static_cast<T>(other.numSample_);
    T const n = n1 + n2;
    mean_ = (mean_ * n1 + other.mean_ * n2) / n;
    cov_ = (cov_ * n1 + other.cov_ * n2) / n;
    numSample_ += other.numSample_;
}

template <class T>
GaussianModelEstimator<T> GaussianModelEstimator<T>::reduce(std::vector<int> indices) const
{
    if (!uptodate_) {
        helper::raise<RuntimeError>(source, "cannot reduce a model that has not been finalized");
    }
    if (std::adjacent_find(indices.begin(), indices.end()) != indices.end()) {
        helper::raise<RuntimeError>(source, "Elements of the vector must be unique");
    }
    std::vector<bool> isKept(static_cast<std::size_t>(dimension_));
    for (int const index : indices) {
        if (index < 0 || index >= dimension_) {
            helper::raise<BadIndex>(source, "The index does not exist");
        }
        isKept[static_cast<std::size_t>(index)] = true;
    }
    std::vector<int> kept;
    for (int i = 0; i < dimension_; ++i) {
        if (isKept[static_cast<std::size_t>(i)]) {
            kept.push_back(i);
        }
    }
    // Repeated indices collapse; the model has their number of dimensions all the same, the last of them zero.
    GaussianModelEstimator result(static_cast<int>(indices.size()));
    result.uptodate_ = true;
    result.numSample_ = numSample_;
    for (int r = 0; r < static_cast<int>(kept.size()); ++r) {
        int const row = kept[static_cast<std::size_t>(r)];
        result.mean_[r] = mean_[row];
        for (int c = 0; c < static_cast<int>(kept.size()); ++c) {
            result.cov_(r, c) = cov_(row, kept[static_cast<std::size_t>(c)]);
        }
    }
    return result;
}

template <class T>
void GaussianModelEstimator<T>::normalize(VectorType const& offset, VectorType const& factor)
{
    requireUpToDate();
    for (int i = 0; i < dimension_; ++i) {
        for (int j = 0; j < dimension_; ++j) {
            cov_(i, j) = factor[j] * factor[i] * cov_(i, j);
        }
    }
    for (int i = 0; i < dimension_; ++i) {
        mean_[i] = (offset[i] + mean_[i]) * factor[i];
    }
}

template <class T>
void GaussianModelEstimator<T>::reset()
{
    mean_.setZero();
    cov_.setZero();
    numSample_ = 0;
    uptodate_ = true;
}

template <class T>
typename GaussianModelEstimator<T>::VectorType const& GaussianModelEstimator<T>::getMean() const
{
    requireUpToDate();
    return mean_;
}

template <class T>
typename GaussianModelEstimator<T>::MatrixType const& GaussianModelEstimator<T>::getCov() const
{
    requireUpToDate();
    return cov_;
}

template <class T>
bool GaussianModelEstimator<T>::isConsistent() const
{
    return dimension_ >= 0 && mean_.size() == dimension_ && cov_.rows() == dimension_ && cov_.cols() == dimension_;
}

template <class T>
void GaussianModelEstimator<T>::requireUpToDate() const
{
    if (!uptodate_) {
        helper::raise<InvalidCall>(source, "The Gaussian Model is not up to date.");
    }
}

template class GaussianModelEstimator<double>;

} // namespace mox::math
