#pragma once

#include <optional>

#include "Core/private/filters/Filter.h"
#include "Registration/private/RansacEstimator.h"

namespace mox::registration {

template <class T, class Point>
T fitAll(PointPairs<Point> const& pairs)
{
    constexpr char const* source = "Registration/private/registerLandmarks";
    if (pairs.count == 0) {
        helper::raise<RuntimeError>(source, "Bad points set the dimension is 0");
    }
    if (pairs.count < minimumOfPoints<T>) {
        helper::raise<RuntimeError>(source, "At least ", minimumOfPoints<T>, " points are needed, there are ",
                                    pairs.count);
    }
    auto const transformation = fit<T>(pairs);
    if (!transformation) {
        helper::raise<RuntimeError>(source, "The points do not determine the transformation");
    }
    return *transformation;
}

/// Nothing when the run is cancelled.
template <class T, class Algorithm, class Point>
std::optional<T> fitRobustly(Algorithm& algorithm, PointPairs<Point> const& pairs)
{
    RansacEstimator<T, Point> estimator(pairs);
    double const confidence = algorithm.confidence;
    double const outlierRatio = algorithm.outlierRatio;
    filters::PassSequence run(&algorithm, samplingEffort(confidence, outlierRatio, minimumOfPoints<T>).numOfFits);
    return estimator.estimate(confidence, outlierRatio, [&](bool isGood) {
        run.incrementProgress(isGood ? 1 : 0);
        return !run.isStopped();
    });
}

/// Fits a T to the points of the algorithm and gives it to the handler. A cancelled run leaves that as it was.
template <class T, class Algorithm>
void registerLandmarks(Algorithm& algorithm)
{
    auto const& data = *algorithm.data.get();
    auto const& model = *algorithm.model.get();
    if (data.size() != model.size()) {
        helper::raise<RuntimeError>("Registration/private/registerLandmarks", "There are ", data.size(),
                                    " data points and ", model.size(), " model points");
    }
    PointPairs const pairs{data.data(), model.data(), data.size()};
    auto const result = algorithm.robustEstimation ? fitRobustly<T>(algorithm, pairs) : std::optional(fitAll<T>(pairs));
    if (result) {
        algorithm.outputTransformation.get()->set(new T(*result));
    }
}

} // namespace mox::registration
