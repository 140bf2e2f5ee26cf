#include "Math/private/Histogram.h"

#include <gmock/gmock.h>

#include <Moxelcore/Core/Exception.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace mox::math {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

template <class E, class Call>
std::string refusal(Call&& call)
{
    try {
        call();
    } catch (E const& exception) {
        return exception.getInfo().c_str();
    }
    return "nothing thrown";
}

std::vector<uint64> counts(Histogram const& histogram)
{
    return {histogram.begin(), histogram.end()};
}

TEST(Histogram, countsIntensitiesByBin)
{
    Histogram histogram(0, 10, 5);
    for (double const v : {0.0, 4.999, 5.0, 9.0, 10.0}) {
        histogram.add(v);
    }
    EXPECT_THAT(counts(histogram), ElementsAre(2, 2, 1)); // trunc(10 / 5 + 1.5) bins
    EXPECT_EQ(histogram.getTotal(), 5U);
    histogram.decrement(9);
    EXPECT_THAT(counts(histogram), ElementsAre(2, 1, 1));
}

TEST(Histogram, putsItsMaximumIntoTheLastBinOfItsRange)
{
    Histogram histogram(0, 9.9, 1); // 11 bins, of which the range fills 10
    EXPECT_EQ(histogram.getNumberOfClasses(), 11U);
    histogram.add(9.9);
    EXPECT_THAT(counts(histogram), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0));
    Histogram narrow(0, 3.4, 1);
    narrow.add(3.4);
    EXPECT_THAT(counts(narrow), ElementsAre(0, 0, 0, 1));
    Histogram clamped(0, 1.4, 1);
    clamped.add(1.4);
    EXPECT_THAT(counts(clamped), ElementsAre(0, 1));
}

TEST(Histogram, takesItsEndsInEitherOrder)
{
    Histogram histogram(255, 0, 1);
    histogram.add(3);
    EXPECT_EQ(histogram.getNumberOfClasses(), 256U);
    EXPECT_EQ(histogram.getMean(), 3.5);
}

TEST(Histogram, ignoresWhatLiesOutside)
{
    Histogram histogram(0, 255, 1);
    for (double const v : {-0.001, 255.001, nan, std::numeric_limits<double>::infinity()}) {
        histogram.add(v);
        histogram.decrement(v);
    }
    EXPECT_EQ(histogram.getTotal(), 0U);
}

TEST(Histogram, fallsStaleWithEachChange)
{
    Histogram histogram(0, 255, 1);
    histogram.add(10);
    EXPECT_EQ(histogram.getMean(), 10.5);
    EXPECT_EQ(histogram.getPeak(), 10.5);
    histogram.add(20);
    histogram.add(20);
    EXPECT_NEAR(histogram.getMean(), 17 + 1.0 / 6, 1e-12);
    EXPECT_EQ(histogram.getPeak(), 20.5);
    histogram.decrement(20);
    EXPECT_EQ(histogram.getMean(), 15.5);
    EXPECT_EQ(histogram.getPeak(), 10.5) << "the lowest of equals";
    histogram.clear();
    histogram.add(7);
    EXPECT_EQ(histogram.getMean(), 7.5);
}

TEST(Histogram, agreesWithTheDefinitionsOfTheMoments)
{
    std::mt19937 random(5);
    for (int round = 0; round < 50; ++round) {
        double const binSize = std::uniform_real_distribution<double>(0.5, 20)(random);
        Histogram histogram(-50, 200, binSize);
        std::vector<long double> values;
        for (int i = 0; i < 80; ++i) {
            double const v = std::uniform_real_distribution<double>(-50, 200)(random);
            histogram.add(v);
            values.push_back(std::trunc((v + 50) / binSize) * binSize - 50.0L + binSize * 0.5L);
        }
        long double mean = 0;
        for (long double const v : values) {
            mean += v / 80;
        }
        long double m[5] = {};
        for (long double const v : values) {
            for (int k = 2; k <= 4; ++k) {
                m[k] += std::pow(v - mean, k) / 80;
            }
        }
        EXPECT_NEAR(histogram.getMean(), static_cast<double>(mean), 1e-10);
        EXPECT_NEAR(histogram.getVariance(), static_cast<double>(m[2]), 1e-8);
        EXPECT_NEAR(histogram.getStddev(), static_cast<double>(std::sqrt(m[2])), 1e-8);
        EXPECT_NEAR(histogram.getSkewness(), static_cast<double>(m[3] / std::pow(m[2], 1.5L)), 1e-9);
        EXPECT_NEAR(histogram.getKurtosis(), static_cast<double>(m[4] / (m[2] * m[2]) - 3), 1e-9);
    }
}

TEST(Histogram, ofOneFilledBinHasNoSpread)
{
    for (double const binSize : {0.1, 1.0, 3.7, 16.0}) {
        Histogram histogram(0, 255, binSize);
        for (int i = 0; i < 9; ++i) { // ninths of a sum that do not add up to it
            histogram.add(123.4);
        }
        EXPECT_EQ(histogram.getVariance(), 0.0);
        EXPECT_EQ(histogram.getStddev(), 0.0);
        EXPECT_EQ(histogram.getSkewness(), 0.0);
        EXPECT_EQ(histogram.getKurtosis(), 0.0);
    }
}

/// Word for word, with the array of its own.
double quantileReference(Histogram const& histogram, double ratio)
{
    std::vector<uint64> c(histogram.size());
    for (std::size_t i = 0; i < c.size(); ++i) {
        c[i] = i == 0 ? histogram[0] >> 1U : (histogram[i] >> 1U) + histogram[i - 1];
    }
    double const t = static_cast<double>(histogram.getTotal()) * ratio;
    auto const x = [&](std::size_t i) { return histogram.getClassValue(static_cast<unsigned int>(i)); };
    for (std::size_t i = 0; i < c.size(); ++i) {
        if (t < static_cast<double>(c[i])) {
            std::ptrdiff_t j = static_cast<std::ptrdiff_t>(i) - 1;
            while (j >= 0 && c[static_cast<std::size_t>(j)] == c[i]) {
                --j;
            }
            if (j < 0) {
                return x(i);
            }
            uint64 const below = c[static_cast<std::size_t>(j)];
            double const w = (static_cast<double>(c[i]) - t) / static_cast<double>(c[i] - below);
            return x(i) * (1.0 - w) + x(static_cast<std::size_t>(j)) * w;
        }
    }
    return x(c.size() - 1);
}

TEST(Histogram, hasQuantilesOfItsOwnKind)
{
    std::mt19937 random(6);
    for (int round = 0; round < 200; ++round) {
        Histogram histogram(0, 20, 1);
        for (unsigned int i = 0; i < 1 + random() % 40; ++i) {
            histogram.add(static_cast<double>(random() % (1 + random() % 21)));
        }
        for (double const ratio : {-1.0, 0.0, 0.05, 0.1, 0.25, 0.5, 0.75, 0.9, 1.0, 2.0}) {
            ASSERT_EQ(histogram.getQuantile(ratio), quantileReference(histogram, ratio)) << ratio;
        }
    }
}

TEST(Histogram, quantileIsNotThatOfACumulativeHistogram)
{
    Histogram histogram(0, 3, 1);
    for (double const v : {0.0, 0.0, 1.0, 1.0, 2.0, 2.0, 3.0, 3.0}) {
        histogram.add(v);
    }
    // Counts 2 2 2 2, halves with left neighbours 1 3 3 3: half of the intensities, 4, is never reached.
    EXPECT_EQ(histogram.getQuantile(0.5), 3.5);
    EXPECT_EQ(histogram.getQuantile(1.0), 3.5);
    EXPECT_EQ(histogram.getQuantile(0.25), 1.5 * 0.5 + 0.5 * 0.5);
    EXPECT_EQ(histogram.getQuantile(-1.0), 0.5);
}

TEST(Histogram, refusesABinWidthThatIsNone)
{
    for (double const binSize : {0.0, -1.0, nan, 1e-310}) {
        Histogram histogram(0, 255, binSize);
        std::string const text = "The histogram isn't correctly initialized.";
        EXPECT_THAT(refusal<InvalidCall>([&] { histogram.add(1); }), HasSubstr(text));
        EXPECT_THAT(refusal<InvalidCall>([&] { histogram.decrement(1); }), HasSubstr(text));
        EXPECT_THAT(refusal<InvalidCall>([&] { histogram.clear(); }), HasSubstr(text));
        EXPECT_THAT(refusal<InvalidCall>([&] { histogram.getClassValue(0); }), HasSubstr(text));
        EXPECT_THAT(refusal<InvalidCall>([&] { histogram.getMean(); }), HasSubstr(text));
        EXPECT_THAT(refusal<InvalidCall>([&] { histogram.getQuantile(0.5); }), HasSubstr(text));
    }
}

TEST(Histogram, tellsWhatIsWrong)
{
    Histogram histogram(0, 255, 1);
    std::string const empty = "The histogram is empty: impossible to compute a measure.";
    EXPECT_THAT(refusal<InvalidCall>([&] { histogram.getMean(); }), HasSubstr(empty));
    EXPECT_THAT(refusal<InvalidCall>([&] { histogram.getPeak(); }), HasSubstr(empty));
    EXPECT_THAT(refusal<InvalidCall>([&] { histogram.getQuantile(0.5); }), HasSubstr(empty));
    EXPECT_THAT(refusal<InvalidCall>([&] { histogram.decrement(1); }),
                HasSubstr("The histogram is empty: impossible to decrement an intensity."));
    EXPECT_THAT(refusal<BadIndex>([&] { histogram.getClassValue(256); }),
                HasSubstr("The class index must be less than the number of classes256"));
    EXPECT_THAT(refusal<InvalidCall>([&] { Histogram(0, 1e300, 1e-300); }),
                HasSubstr("The histogram has too many classes."));
}

} // namespace

} // namespace mox::math
