#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "Segmentation/private/TexturePlan.h"

// What the measures of pairs of levels are made of.

namespace mox::segmentation::cooccurrence {

/// In the order of `TextureFeatureTypes`.
enum Measure : std::size_t {
    angularSecondMoment,
    contrast,
    correlation,
    sumOfSquares,
    inverseDifferenceMoment,
    sumAverage,
    sumVariance,
    sumEntropy,
    entropy,
    differenceVariance,
    differenceEntropy,
    informationMeasure1,
    informationMeasure2
};

/// Sums over the pairs (a, b) of a window.
enum PairSum : std::size_t { squaredDifferences, products, sums, differences, equals, weights, numOfPairSums };

/// The cells of a symmetric matrix of levels: the diagonal first, then the triangle below it row by row.
class PairCells {
public:
    explicit PairCells(std::size_t numOfLevels)
        : numOfLevels_(numOfLevels)
    {
    }

    std::size_t count() const { return numOfLevels_ * (numOfLevels_ + 1) / 2; }

    std::size_t operator()(std::size_t a, std::size_t b) const
    {
        std::size_t const high = std::max(a, b);
        return a == b ? a : numOfLevels_ + high * (high - 1) / 2 + std::min(a, b);
    }

private:
    std::size_t numOfLevels_;
};

/// Which sums and counts the wanted measures need.
struct Needs {
    explicit Needs(std::array<bool, numOfCooccurrenceMeasures> const& w)
        : pairFunctions(w[entropy] || w[informationMeasure1] || w[informationMeasure2])
        , pairCounts(w[angularSecondMoment])
        , endFunctions(w[informationMeasure1] || w[informationMeasure2])
        , sumFunctions(w[sumEntropy])
        , differenceFunctions(w[differenceEntropy])
    {
        bool const variances = w[correlation] || w[sumOfSquares] || w[sumVariance];
        pairSums[squaredDifferences] = variances || w[contrast] || w[differenceVariance];
        pairSums[products] = variances;
        pairSums[sums] = variances || w[sumAverage];
        pairSums[differences] = w[differenceVariance];
        pairSums[equals] = w[inverseDifferenceMoment] || pairFunctions || pairCounts;
        pairSums[weights] = w[inverseDifferenceMoment];
    }

    std::array<bool, numOfPairSums> pairSums = {};
    bool pairFunctions;
    bool pairCounts;
    bool endFunctions;
    bool sumFunctions;
    bool differenceFunctions;
};

} // namespace mox::segmentation::cooccurrence
