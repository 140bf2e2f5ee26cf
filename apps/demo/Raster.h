#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace demo {

/// Grey values of a plane, for the demonstrations of registration.
class Raster {
public:
    Raster(unsigned int columns, unsigned int rows)
        : columns_(columns)
        , rows_(rows)
        , values_(std::size_t{columns} * rows)
    {
    }

    unsigned int columns() const { return columns_; }
    unsigned int rows() const { return rows_; }
    double& at(unsigned int x, unsigned int y) { return values_[std::size_t{y} * columns_ + x]; }
    double at(unsigned int x, unsigned int y) const { return values_[std::size_t{y} * columns_ + x]; }

    bool contains(double x, double y) const { return x >= 0 && y >= 0 && x <= columns_ - 1.0 && y <= rows_ - 1.0; }
    /// Bilinear; the place must lie inside.
    double between(double x, double y) const;

private:
    unsigned int columns_;
    unsigned int rows_;
    std::vector<double> values_;
};

/// The mean of the channels of an image file's first plane.
Raster readGrey(std::string const& path);

/// The same of each plan.
std::vector<Raster> readGreyPlans(std::string const& path);

/// Writes a float32 image.
void write(Raster const& raster, std::string const& path);

/// Writes a picture in uint8.
void writeColours(Raster const& red, Raster const& green, Raster const& blue, std::string const& path);

} // namespace demo
