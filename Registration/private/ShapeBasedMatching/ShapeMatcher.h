#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "Core/private/filters/Filter.h"
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

/// Scores the positions of a leaf. The score is the sum over the points, in their order, of the scalar
/// product of the point's direction and the gradient there, both of unit length; outside of the image that is 0.
class ShapeScore {
public:
    enum class Sign { kept, dropped };

    ShapeScore(GradientPlane const& plane, std::vector<PlacedPoint> const& points, Sign sign)
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
                take(scoresFrom(x, y), std::min(stretch, end - x), x, y, best);
            }
        }
    }

private:
    /// As many positions side by side as sums fit in registers; the window of the finer levels is as wide.
    static constexpr int stretch = 10;
    static_assert(stretch <= GradientPlane::margin);

    using Scores = std::array<double, stretch>;

    /// The sums are local, so that they stay in registers.
    Scores scoresFrom(int x, int y) const
    {
        Scores scores = {};
        double const* const gradientX = plane_.x();
        double const* const gradientY = plane_.y();
        for (PlacedPoint const& point : points_) {
            int const column = x + point.x;
            int const row = y + point.y;
            if (row < 0 || row >= plane_.rows() || column <= -stretch || column >= plane_.columns()) {
                continue;
            }
            std::ptrdiff_t const offset = plane_.offset(column, row);
            for (unsigned int i = 0; i < stretch; ++i) {
                scores[i] += point.dx * gradientX[offset + i] + point.dy * gradientY[offset + i];
            }
        }
        return scores;
    }

    void take(Scores const& scores, int count, int x, int y, BestPosition& best) const
    {
        for (int i = 0; i < count; ++i) {
            double const sum = scores[static_cast<unsigned int>(i)];
            double const score = sign_ == Sign::dropped ? std::abs(sum) : sum;
            if (score > best.score) {
                best = {score, x + i, y};
            }
        }
    }

    GradientPlane const& plane_;
    std::vector<PlacedPoint> const& points_;
    Sign sign_;
};

/// The best position of the leaves that it is given.
class BestOfLeaves final : public filters::Reduction {
public:
    explicit BestOfLeaves(ShapeScore const& score)
        : score_(score)
    {
    }

    void fold(access::Block const& leaf) override { score_(leaf, best_); }
    std::unique_ptr<Reduction> fresh() const override { return std::make_unique<BestOfLeaves>(score_); }
    void join(Reduction& following) noexcept override { best_.join(static_cast<BestOfLeaves&>(following).best_); }

    BestPosition const& best() const { return best_; }

private:
    ShapeScore const& score_;
    BestPosition best_;
};

/// Finds the best position of a shape in a region of the plane, as one pass of a run.
class ShapeMatcher final : public filters::Filter {
public:
    explicit ShapeMatcher(filters::PassSequence& run)
        : Filter(run)
    {
    }
    ~ShapeMatcher() override { detach(); }

    BestPosition run(ShapeScore const& score, access::Region const& region)
    {
        constexpr unsigned int bandRows = 2; // a position is much work, and there are only ten rows at most levels
        BestOfLeaves found(score);
        reduceBands(region, filters::Slice(), bandRows, found);
        return found.best();
    }
};

} // namespace mox::registration
