#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "Registration/private/ShapeBasedMatching/GradientPlane.h"
#include "Registration/private/ShapeBasedMatching/Shape.h"

namespace mox::registration {

/// The position with the highest score; of several the topmost, of these the leftmost.
struct BestPosition {
    double score = std::numeric_limits<double>::lowest();
    int x = 0;
    int y = 0;

    void join(BestPosition const& other)
    {
        bool const isBefore = other.y < y || (other.y == y && other.x < x);
        if (other.score > score || (other.score == score && isBefore)) {
            *this = other;
        }
    }
};

/// Finds the best position of a shape in a leaf. The score is the sum over the points, in their order, of the scalar
/// product of the point's direction and the gradient there, both of unit length; outside of the image that is 0.
class ShapeMatcher {
public:
    using Value = BestPosition;
    enum class Sign { kept, dropped };

    ShapeMatcher(GradientPlane const& plane, std::vector<PlacedPoint> const& points, Sign sign)
        : plane_(plane)
        , points_(points)
        , sign_(sign)
    {
    }

    void operator()(access::Block const& leaf, BestPosition& best) const
    {
        auto const begin = static_cast<int>(leaf.getBeginColumn());
        auto const end = static_cast<int>(leaf.getEndColumn());
        for (auto y = static_cast<int>(leaf.getBeginRow()); y < static_cast<int>(leaf.getEndRow()); ++y) {
            for (int x = begin; x < end; x += stretch) {
                double scores[stretch] = {};
                addScores(x, y, scores);
                take(scores, std::min(stretch, end - x), x, y, best);
            }
        }
    }

private:
    /// As many positions side by side as sums fit in registers; the window of the finer levels is as wide.
    static constexpr int stretch = 10;
    static_assert(stretch <= GradientPlane::margin);

    void addScores(int x, int y, double (&scores)[stretch]) const
    {
        double const* const gradientX = plane_.x();
        double const* const gradientY = plane_.y();
        for (PlacedPoint const& point : points_) {
            int const column = x + point.x;
            int const row = y + point.y;
            if (row < 0 || row >= plane_.rows() || column <= -stretch || column >= plane_.columns()) {
                continue;
            }
            std::ptrdiff_t const offset = plane_.offset(column, row);
            for (int i = 0; i < stretch; ++i) {
                scores[i] += point.dx * gradientX[offset + i] + point.dy * gradientY[offset + i];
            }
        }
    }

    void take(double const* scores, int count, int x, int y, BestPosition& best) const
    {
        for (int i = 0; i < count; ++i) {
            double const score = sign_ == Sign::dropped ? std::abs(scores[i]) : scores[i];
            if (score > best.score) {
                best = {score, x + i, y};
            }
        }
    }

    GradientPlane const& plane_;
    std::vector<PlacedPoint> const& points_;
    Sign sign_;
};

} // namespace mox::registration
