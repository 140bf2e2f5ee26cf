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

/// Scores the positions of a leaf. The score is the sum over the points, in their order, of the scalar product of the
/// point's direction, of unit length, and the gradient there, divided by the gradient's length; outside of the image
/// that is 0. To divide beforehand is much faster and rounds otherwise, so that it only tells which positions may be
/// the best: those are scored as defined.
class ShapeScore {
public:
    enum class Sign { kept, dropped };

    ShapeScore(GradientPlane const& plane, std::vector<PlacedPoint> const& points, Sign sign)
        : plane_(plane)
        , points_(points)
        , sign_(sign)
        , tolerance_(mostError(static_cast<double>(points.size())))
    {
    }

    void operator()(access::Block const& leaf, BestPosition& best) const
    {
        for (Candidate const& candidate : candidatesOf(leaf)) {
            double const score = scoreAt(candidate.x, candidate.y);
            if (score > best.score) {
                best = {score, candidate.x, candidate.y};
            }
        }
    }

private:
    struct Candidate {
        double estimate;
        int x;
        int y;
    };

    /// As many positions side by side as sums fit in registers; the window of the finer levels is as wide.
    static constexpr int stretch = 10;
    static_assert(stretch <= GradientPlane::margin);

    using Scores = std::array<double, stretch>;

    /// The sums are local, and the function is one of its own, so that they stay in registers.
    [[gnu::noinline]] Scores sumsFrom(int x, int y) const
    {
        Scores scores = {};
        double const* const unitX = plane_.unitX();
        double const* const unitY = plane_.unitY();
        for (PlacedPoint const& point : points_) {
            int const column = x + point.x;
            int const row = y + point.y;
            if (row < 0 || row >= plane_.rows() || column <= -stretch || column >= plane_.columns()) {
                continue;
            }
            std::ptrdiff_t const offset = plane_.offset(column, row);
            for (unsigned int i = 0; i < stretch; ++i) {
                scores[i] += point.dx * unitX[offset + i] + point.dy * unitY[offset + i];
            }
        }
        return scores;
    }

    /// The score of one position as it is defined.
    double scoreAt(int x, int y) const
    {
        double sum = 0.0;
        for (PlacedPoint const& point : points_) {
            int const column = x + point.x;
            int const row = y + point.y;
            if (row >= 0 && row < plane_.rows() && column >= 0 && column < plane_.columns()) {
                std::ptrdiff_t const i = plane_.offset(column, row);
                sum += (point.dx * plane_.x()[i] + point.dy * plane_.y()[i]) / plane_.length()[i];
            }
        }
        return signedScore(sum);
    }

    /// The positions that may be the best of a leaf, row by row.
    std::vector<Candidate> candidatesOf(access::Block const& leaf) const
    {
        std::vector<Candidate> candidates;
        double highest = std::numeric_limits<double>::lowest();
        auto const end = static_cast<int>(leaf.getEndColumn());
        for (auto y = static_cast<int>(leaf.getBeginRow()); y < static_cast<int>(leaf.getEndRow()); ++y) {
            for (auto x = static_cast<int>(leaf.getBeginColumn()); x < end; x += stretch) {
                Scores const sums = sumsFrom(x, y);
                for (int i = 0; i < std::min(stretch, end - x); ++i) {
                    double const estimate = signedScore(sums[static_cast<unsigned int>(i)]);
                    if (estimate >= highest - tolerance_) {
                        highest = std::max(highest, estimate);
                        candidates.push_back({estimate, x + i, y});
                    }
                }
            }
        }
        std::erase_if(candidates, [&](Candidate const& c) { return c.estimate < highest - tolerance_; });
        return candidates;
    }

    double signedScore(double sum) const { return sign_ == Sign::dropped ? std::abs(sum) : sum; }

    /// How far two sums of that many terms between -1 and 1 can be apart when each term and each sum is rounded in its
    /// own way: a few units in the last place of a term, and one of the sum for each term.
    static double mostError(double numOfPoints)
    {
        return 2.0 * numOfPoints * (numOfPoints + 8.0) * std::numeric_limits<double>::epsilon();
    }

    GradientPlane const& plane_;
    std::vector<PlacedPoint> const& points_;
    Sign sign_;
    double tolerance_;
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
