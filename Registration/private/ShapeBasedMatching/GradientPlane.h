#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <cstddef>
#include <vector>

namespace mox::registration {

/// The voxels of the first plane of an image, as doubles. Throws `UnexpectedError` when a row cannot be read.
std::vector<double> readPlane(ImageModel const& image);

/// The gradients of a plane, made unit vectors where they are not 0. Beside each row lie `margin` zeros, so that a
/// stretch of up to as many voxels that begins anywhere from there on can be read.
class GradientPlane {
public:
    static constexpr int margin = 10;

    GradientPlane(ImageModel const& x, ImageModel const& y);

    int columns() const { return columns_; }
    int rows() const { return rows_; }

    /// Where row y holds its voxel x, which may lie in the margin.
    std::ptrdiff_t offset(int x, int y) const { return y * stride_ + x + margin; }
    double const* x() const { return x_.data(); }
    double const* y() const { return y_.data(); }

private:
    int columns_;
    int rows_;
    std::ptrdiff_t stride_;
    std::vector<double> x_;
    std::vector<double> y_;
};

} // namespace mox::registration
