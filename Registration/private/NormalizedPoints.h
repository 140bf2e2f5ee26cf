#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace mox::registration {

/// Points less their mean, times a factor that makes the mean distance from it 1.
template <class Point>
class NormalizedPoints {
public:
    NormalizedPoints(Point const* points, std::size_t count)
        : points_(points, points + count)
    {
        // The mean is taken relative to a point: it is exact for points that are all the same.
        Point const origin = points[0];
        auto const n = static_cast<double>(count);
        for (Point& point : points_) {
            point -= origin;
            centre_ += point / n;
        }
        double distance = 0.0;
        for (Point& point : points_) {
            point -= centre_;
            distance += point.length() / n;
        }
        centre_ += origin;
        if (distance > 0.0) {
            factor_ = 1.0 / distance;
        }
        for (Point& point : points_) {
            point *= factor_;
        }
        isUsable_ = std::isfinite(distance) && std::isfinite(factor_) && std::isfinite(centre_.squaredLength());
        hasExtent_ = distance > 0.0;
    }

    Point const& operator[](std::size_t index) const { return points_[index]; }
    std::size_t size() const { return points_.size(); }
    Point const& centre() const { return centre_; }
    double factor() const { return factor_; }
    /// Whether all are finite and near enough for squares of distances.
    bool isUsable() const { return isUsable_; }
    /// Whether any two differ.
    bool hasExtent() const { return hasExtent_; }

private:
    std::vector<Point> points_;
    Point centre_;
    double factor_ = 1.0;
    bool isUsable_;
    bool hasExtent_;
};

} // namespace mox::registration
