#include "Registration/private/ShapeBasedMatching/GradientPlane.h"

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <algorithm>
#include <cmath>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/rowExtent.h"

namespace mox::registration {

namespace {

template <class T>
void readRows(ImageModel const& image, std::vector<double>& voxels)
{
    unsigned int const columns = image.getSize(COLUMNS);
    unsigned int const rows = image.getSize(ROWS);
    std::vector<T> buffer(columns);
    double* out = voxels.data();
    for (unsigned int y = 0; y < rows; ++y) {
        if (!image.readRowAt(columns, buffer.data(), 0, y, 0, 0, 0)) {
            helper::raise<UnexpectedError>("Registration/src/ShapeBasedMatching/GradientPlane", access::readFailure);
        }
        out = std::transform(buffer.begin(), buffer.end(), out, [](T voxel) { return static_cast<double>(voxel); });
    }
}

} // namespace

std::vector<double> readPlane(ImageModel const& image)
{
    bool const isEmpty = image.getSize(PLANS) == 0 || image.getSize(TIME_SERIES) == 0 ||
                         image.getSize(SPECTRAL_SERIES) == 0 || image.getSize(COLUMNS) == 0;
    std::vector<double> voxels(isEmpty ? 0 : std::size_t{image.getSize(COLUMNS)} * image.getSize(ROWS));
    if (!voxels.empty()) {
        dispatch(RealVoxels(), image.getVoxelType(), [&]<class T>() { readRows<T>(image, voxels); });
    }
    return voxels;
}

GradientPlane::GradientPlane(ImageModel const& x, ImageModel const& y)
    : columns_(static_cast<int>(x.getSize(COLUMNS)))
    , rows_(static_cast<int>(x.getSize(ROWS)))
    , stride_(std::ptrdiff_t{margin} + columns_ + margin)
    , x_(static_cast<std::size_t>(rows_ * stride_))
    , y_(x_.size())
    , length_(x_.size(), 1.0)
    , unitX_(x_.size())
    , unitY_(x_.size())
{
    std::vector<double> const gradientX = readPlane(x);
    std::vector<double> const gradientY = readPlane(y);
    for (std::size_t i = 0; i < gradientX.size(); ++i) {
        auto const column = static_cast<int>(i % static_cast<std::size_t>(columns_));
        auto const row = static_cast<int>(i / static_cast<std::size_t>(columns_));
        auto const place = static_cast<std::size_t>(offset(column, row));
        double const length = std::sqrt(gradientX[i] * gradientX[i] + gradientY[i] * gradientY[i]);
        x_[place] = gradientX[i];
        y_[place] = gradientY[i];
        length_[place] = length > 0.0 ? length : 1.0;
        unitX_[place] = gradientX[i] / length_[place];
        unitY_[place] = gradientY[i] / length_[place];
    }
}

} // namespace mox::registration
