#pragma once

#include <Moxelcore/Moxelcore.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

// Pictures as the demonstrations of registration draw them.

namespace demo {

/// One channel of the first plane of an image, read between voxels.
class Raster {
public:
    Raster(unsigned int columns, unsigned int rows)
        : columns_(columns)
        , rows_(rows)
        , values_(std::size_t{columns} * rows)
    {
    }

    Raster(mox::ImageModel const& image, unsigned int channel)
        : Raster(image.getSize(mox::COLUMNS), image.getSize(mox::ROWS))
    {
        mox::dispatch(mox::RealVoxels(), image.getVoxelType(), [&]<class T>() {
            std::vector<T> row(columns_);
            for (unsigned int y = 0; y < rows_; ++y) {
                image.readRowAt(columns_, row.data(), 0, y, 0, 0, channel);
                std::transform(row.begin(), row.end(), &at(0, y), [](T voxel) { return static_cast<double>(voxel); });
            }
        });
    }

    unsigned int columns() const { return columns_; }
    unsigned int rows() const { return rows_; }
    double& at(unsigned int x, unsigned int y) { return values_[std::size_t{y} * columns_ + x]; }
    double at(unsigned int x, unsigned int y) const { return values_[std::size_t{y} * columns_ + x]; }

    bool contains(double x, double y) const { return x >= 0 && y >= 0 && x <= columns_ - 1.0 && y <= rows_ - 1.0; }

    /// Bilinear; the place must lie inside.
    double between(double x, double y) const
    {
        auto const left = static_cast<unsigned int>(x);
        auto const top = static_cast<unsigned int>(y);
        unsigned int const right = std::min(left + 1, columns_ - 1);
        unsigned int const bottom = std::min(top + 1, rows_ - 1);
        return std::lerp(std::lerp(at(left, top), at(right, top), x - left),
                         std::lerp(at(left, bottom), at(right, bottom), x - left), y - top);
    }

private:
    unsigned int columns_;
    unsigned int rows_;
    std::vector<double> values_;
};

template <class T>
void writeChannel(Raster const& raster, mox::ImageModel& image, unsigned int channel)
{
    std::vector<T> row(raster.columns());
    for (unsigned int y = 0; y < raster.rows(); ++y) {
        for (unsigned int x = 0; x < raster.columns(); ++x) {
            row[x] = static_cast<T>(raster.at(x, y));
        }
        image.writeRowAt(raster.columns(), row.data(), 0, y, 0, 0, channel);
    }
}

} // namespace demo
