#pragma once

#include <Moxelcore/Math/Vector2.h>

#include <Eigen/Core>
#include <boost/serialization/array_wrapper.hpp>
#include <boost/serialization/nvp.hpp>

#include "Math/private/GaussianModelEstimator.h"

// How math values stand in an archive.

namespace mox::math {

template <class Archive, class T>
void serialize(Archive& archive, Vector2<T>& vector, unsigned int)
{
    archive& boost::serialization::make_nvp("val1", vector[0]);
    archive& boost::serialization::make_nvp("val2", vector[1]);
}

template <class T>
template <class Archive>
void GaussianModelEstimator<T>::serialize(Archive& archive, unsigned int)
{
    using boost::serialization::make_nvp;
    archive& make_nvp("dimension", dimension_) & make_nvp("mean", mean_) & make_nvp("cov", cov_) &
        make_nvp("numSample", numSample_) & make_nvp("uptodate", uptodate_);
}

/// Sizes an empty array for the numbers that an archive announces.
template <class Archive, class Dense>
void resizeForLoad(Archive& archive, Dense& dense, Eigen::Index rows, Eigen::Index columns)
{
    if constexpr (Archive::is_loading::value) {
        if constexpr (requires { archive.requireNumbers(rows, columns); }) {
            archive.requireNumbers(rows, columns);
        }
        dense.resize(rows, columns);
    }
}

} // namespace mox::math

namespace boost::serialization {

template <class Archive>
void serialize(Archive& archive, Eigen::VectorXd& vector, unsigned int)
{
    Eigen::Index size = vector.size();
    archive& make_nvp("size", size);
    mox::math::resizeForLoad(archive, vector, size, 1);
    auto data = make_array(vector.data(), static_cast<std::size_t>(size));
    archive& make_nvp("data", data);
}

template <class Archive>
void serialize(Archive& archive, Eigen::MatrixXd& matrix, unsigned int)
{
    Eigen::Index rows = matrix.rows();
    Eigen::Index cols = matrix.cols();
    archive& make_nvp("rows", rows);
    archive& make_nvp("cols", cols);
    mox::math::resizeForLoad(archive, matrix, rows, cols);
    auto data = make_array(matrix.data(), static_cast<std::size_t>(rows * cols));
    archive& make_nvp("data", data);
}

} // namespace boost::serialization
