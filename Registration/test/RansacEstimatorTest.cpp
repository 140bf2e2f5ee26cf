#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "Registration/private/RandomSample.h"
#include "Registration/private/SamplingEffort.h"
#include "Registration/private/median.h"

namespace mox::registration {

namespace {

TEST(Median, isTheMiddleOrTheMeanOfTheTwoThere)
{
    auto const of = [](std::vector<double> values) { return median(values); };
    EXPECT_EQ(of({3}), 3);
    EXPECT_EQ(of({3, 8}), 5.5);
    EXPECT_EQ(of({9, 1, 5}), 5);
    EXPECT_EQ(of({9, 1, 5, 2}), 3.5);
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(of({infinity, 1, 5}), 5);
    EXPECT_EQ(of({infinity, 1, infinity, 2}), infinity);
}

TEST(Median, isOnlyBelowALimitWhenTheCountSaysSo)
{
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        std::vector<double> values(1 + random() % 12);
        std::generate(values.begin(), values.end(), [&] { return static_cast<double>(random() % 8); });
        auto const limit = static_cast<double>(random() % 9);
        bool const possible = canHaveMedianBelow(limit, values);
        EXPECT_TRUE(possible || !(median(values) < limit));
        if (values.size() % 2 != 0) {
            EXPECT_EQ(possible, median(values) < limit);
        }
    }
}

TEST(SamplingEffort, followsTheRates)
{
    auto const fits = [](double confidence, double outlierRatio, std::size_t size) {
        SamplingEffort const effort = samplingEffort(confidence, outlierRatio, size);
        EXPECT_EQ(effort.numOfDraws, 10 * effort.numOfFits);
        return effort.numOfFits;
    };
    EXPECT_EQ(fits(0.99, 0.2, 1), 30U);   // log 0.01 / log 0.2 = 2.86
    EXPECT_EQ(fits(0.99, 0.2, 2), 50U);   // log 0.01 / log 0.36 = 4.51
    EXPECT_EQ(fits(0.99, 0.2, 3), 60U);   // log 0.01 / log 0.488 = 6.42
    EXPECT_EQ(fits(0.99, 0.5, 4), 710U);  // log 0.01 / log 0.9375 = 71.36
    EXPECT_EQ(fits(0.99, 0.2, 10), 410U); // log 0.01 / log 0.8926 = 40.55
}

TEST(SamplingEffort, staysWithinLimits)
{
    EXPECT_EQ(samplingEffort(0.99, 0.0, 3).numOfFits, 10U);
    EXPECT_EQ(samplingEffort(0.0, 0.2, 3).numOfFits, 10U);
    EXPECT_EQ(samplingEffort(0.0, 0.0, 3).numOfFits, 10U);
    EXPECT_EQ(samplingEffort(1.0, 0.2, 3).numOfFits, 1000000U);
    EXPECT_EQ(samplingEffort(0.99, 1.0, 3).numOfFits, 1000000U);
    EXPECT_EQ(samplingEffort(0.0, 1.0, 3).numOfFits, 1000000U);
    EXPECT_EQ(samplingEffort(1.0, 0.0, 3).numOfFits, 1000000U);
    EXPECT_EQ(samplingEffort(0.99, 0.9, 10).numOfFits, 1000000U);
}

TEST(RandomSample, drawsDistinctIndicesInOrder)
{
    for (std::size_t const numOfIndices : {3U, 4U, 7U, 1000U}) {
        RandomSample sample(3, numOfIndices);
        std::set<std::size_t> seen;
        for (int i = 0; i < 300; ++i) {
            auto const& indices = sample.draw();
            ASSERT_EQ(indices.size(), 3U);
            EXPECT_LT(indices[0], indices[1]);
            EXPECT_LT(indices[1], indices[2]);
            EXPECT_LT(indices[2], numOfIndices);
            seen.insert(indices.begin(), indices.end());
        }
        EXPECT_GT(seen.size(), std::min<std::size_t>(numOfIndices, 500) - 1);
    }
}

/// The first outputs of the generator with its default seed are 3499211612, 581869302, 3890346734, 3586334585.
TEST(RandomSample, isTheGeneratorModuloTheNumberOfIndices)
{
    RandomSample sample(3, 100);
    EXPECT_EQ(sample.draw(), (std::vector<std::size_t>{2, 12, 34}));
    RandomSample rejecting(1, 2500000000U); // draws from 2500000000 on are rejected
    EXPECT_EQ(rejecting.draw(), (std::vector<std::size_t>{581869302}));
}

TEST(RandomSample, repeatsItself)
{
    RandomSample a(4, 50);
    RandomSample b(4, 50);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(a.draw(), b.draw());
    }
}

} // namespace

} // namespace mox::registration
