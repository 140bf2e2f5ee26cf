#pragma once

#include <Moxelcore/Core/Exception.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "Core/private/Helper/raise.h"
#include "Registration/private/RandomSample.h"
#include "Registration/private/SamplingEffort.h"
#include "Registration/private/fits.h"
#include "Registration/private/median.h"

namespace mox::registration {

/// Fits a transformation to pairs of which many may be wrong, by the least median of residuals (Rousseeuw 1984): of
/// many small samples that one counts whose fit leaves the smallest median distance over all pairs. The pairs that lie
/// near to it are then fitted together.
template <class T, class Point>
class RansacEstimator {
public:
    /// Throws `RuntimeError` when there are too few pairs.
    explicit RansacEstimator(PointPairs<Point> const& pairs)
        : pairs_(pairs)
        , mapped_(pairs.count)
        , residuals_(pairs.count)
    {
        std::size_t const numOfParameter = T().getNumOfParameter();
        std::size_t const dimension = Point().dim();
        if (pairs.count == 0) {
            helper::raise<RuntimeError>(source, "Bad points set the dimension is 0");
        }
        if (dimension * pairs.count < 2 * numOfParameter + 1) {
            helper::raise<RuntimeError>(source,
                                        " insufficient number of points. N=2*minNumOfPoint+1 points are needed.");
        }
    }

    /// Calls `proceeds` after each sample, with whether it had a good fit, and gives nothing once it is false. Throws
    /// `RuntimeError` "random sampling failed.".
    template <class Proceeds>
    std::optional<T> estimate(double confidence, double outlierRatio, Proceeds const& proceeds)
    {
        SamplingEffort const effort = samplingEffort(confidence, outlierRatio, minimumOfPoints<T>);
        RandomSample sample(minimumOfPoints<T>, pairs_.count);
        std::size_t numOfFits = 0;
        for (std::size_t draw = 0; draw < effort.numOfDraws && numOfFits < effort.numOfFits; ++draw) {
            bool const isGood = consider(sample.draw());
            numOfFits += isGood ? 1 : 0;
            if (!proceeds(isGood)) {
                return std::nullopt;
            }
        }
        if (numOfFits < effort.numOfFits) {
            fail();
        }
        return fitInliers();
    }

private:
    static constexpr char const* source = "Registration/private/RansacEstimator";

    [[noreturn]] static void fail() { helper::raise<RuntimeError>(source, "random sampling failed."); }

    /// False when the sample has no fit, or one that cannot map all points.
    bool consider(std::vector<std::size_t> const& indices)
    {
        auto const transformation = fitTo(indices);
        if (!transformation || !computeResiduals(*transformation)) {
            return false;
        }
        if (canHaveMedianBelow(bestMedian_, residuals_)) {
            selected_ = residuals_;
            double const found = median(selected_);
            if (found < bestMedian_) {
                bestMedian_ = found;
                bestResiduals_ = residuals_;
            }
        }
        return true;
    }

    std::optional<T> fitTo(std::vector<std::size_t> const& indices)
    {
        sampledData_.clear();
        sampledModel_.clear();
        for (std::size_t const index : indices) {
            sampledData_.push_back(pairs_.data[index]);
            sampledModel_.push_back(pairs_.model[index]);
        }
        return fit<T>(PointPairs<Point>{sampledData_.data(), sampledModel_.data(), indices.size()});
    }

    /// Distances between images and model. One that is no number is as far as can be.
    bool computeResiduals(T const& transformation)
    {
        try {
            mapped_.assign(pairs_.data, pairs_.data + pairs_.count);
            transformation.map(mapped_.data(), mapped_.size());
        } catch (RuntimeError const&) {
            return false;
        }
        for (std::size_t i = 0; i < pairs_.count; ++i) {
            double const residual = (mapped_[i] - pairs_.model[i]).length();
            residuals_[i] = residual >= 0.0 ? residual : std::numeric_limits<double>::infinity();
        }
        return true;
    }

    /// Three standard deviations, estimated by the median absolute deviation as if the residuals were normal.
    double inlierThreshold()
    {
        for (std::size_t i = 0; i < pairs_.count; ++i) {
            selected_[i] = std::abs(bestResiduals_[i] - bestMedian_);
        }
        double const leastThreshold = std::sqrt(std::numeric_limits<double>::epsilon());
        return std::max(median(selected_) * 1.4826 * 3.0, leastThreshold);
    }

    T fitInliers()
    {
        if (bestResiduals_.empty()) {
            fail();
        }
        double const threshold = inlierThreshold();
        std::vector<std::size_t> inliers;
        for (std::size_t i = 0; i < pairs_.count; ++i) {
            if (bestResiduals_[i] < threshold) {
                inliers.push_back(i);
            }
        }
        auto const transformation = inliers.size() >= minimumOfPoints<T> ? fitTo(inliers) : std::nullopt;
        if (!transformation) {
            fail();
        }
        return *transformation;
    }

    PointPairs<Point> pairs_;
    std::vector<Point> sampledData_;
    std::vector<Point> sampledModel_;
    std::vector<Point> mapped_;
    std::vector<double> residuals_;
    std::vector<double> selected_;
    std::vector<double> bestResiduals_;
    double bestMedian_ = std::numeric_limits<double>::max();
};

} // namespace mox::registration
