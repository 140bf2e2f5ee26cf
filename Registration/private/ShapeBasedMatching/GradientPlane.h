#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <cstddef>
#include <vector>

namespace mox::registration {

/// The voxels of the first plane of an image, as doubles. Throws `UnexpectedError` when a row cannot be read.
std::vector<double> readPlane(ImageModel const& image);

/// The gradients of a plane, their lengths (1 where they are 0), and the unit vectors that follow, rounded. Beside each
/// row lie `margin` gradients of 0, so that a stretch of up to as many voxels that begins anywhere from there on can be
/// read.
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
    double const* length() const { return length_.data(); }
    double const* unitX() const { return unitX_.data(); }
    double const* unitY() const { return unitY_.data(); }

private:
    int columns_;
    int rows_;
    std::ptrdiff_t stride_;
    std::vector<double> x_;
    std::vector<double> y_;
    std::vector<double> length_;
    std::vector<double> unitX_;
    std::vector<double> unitY_;
};

} // namespace mox::registration
