#pragma once

#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Math/Vector2.h>

#include <vector>

namespace mox::registration {

/// A point of a shape that has been put on an image: its offset in voxels, and the unit vector that a gradient there
/// is compared with.
struct PlacedPoint {
    int x, y;
    double dx, dy;
};

/// A rotation by an angle in degrees. Sines and cosines that are a rounding away from 0 and from 1 are just these, so
/// that a full turn is none.
class Rotation {
public:
    explicit Rotation(double degrees);

    math::Vector2<double> turned(math::Vector2<double> const& v) const
    {
        return {v[0] * cosine_ - v[1] * sine_, v[0] * sine_ + v[1] * cosine_};
    }

private:
    double cosine_;
    double sine_;
};

/// Points of a template relative to its centre, column and row of which are half its sizes, rounded down, and the
/// gradients there.
class Shape {
public:
    std::vector<math::Vector2<double>> positions;
    std::vector<math::Vector2<double>> directions;

    /// The shape turned and scaled, for an image of these sizes: points that lie outside wherever the centre is are
    /// left out. Replaces what `placed` holds.
    void place(Rotation const& rotation, double scale, int columns, int rows, std::vector<PlacedPoint>& placed) const;
};

/// The centre to which the points of a shape are relative.
math::Vector2<double> centreOf(ImageModel const& image);

/// The shape of the voxels whose mask is not 0 (all, without a mask) and whose gradient is not (0, 0), row by row.
Shape maskToShape(ImageModel const& gradientX, ImageModel const& gradientY, ImageModel const* mask);

} // namespace mox::registration
