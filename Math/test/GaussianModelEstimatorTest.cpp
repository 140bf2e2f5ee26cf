#include "Math/private/GaussianModelEstimator.h"

#include <gmock/gmock.h>

#include <Moxelcore/Core/Exception.h>

#include <cmath>
#include <random>
#include <string>

namespace mox::math {

namespace {

using Estimator = GaussianModelEstimator<double>;
using Sample = Estimator::VectorType;
using Covariance = Estimator::MatrixType;
using ::testing::HasSubstr;

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

std::vector<Sample> randomSamples(std::mt19937& random, int count, int dimension)
{
    std::normal_distribution<double> normal(3, 2);
    std::vector<Sample> samples;
    for (int i = 0; i < count; ++i) {
        Sample sample(dimension);
        for (double& value : sample) {
            value = normal(random);
        }
        samples.push_back(sample);
    }
    return samples;
}

Estimator modelOf(std::vector<Sample> const& samples, int dimension)
{
    Estimator model(dimension);
    for (Sample const& sample : samples) {
        model.update(sample);
    }
    model.finalize();
    return model;
}

struct Moments {
    Sample mean;
    Covariance covariance;
};

/// In two passes, centred.
Moments momentsOf(std::vector<Sample> const& samples)
{
    auto const dimension = samples.front().size();
    Moments moments{Sample::Zero(dimension), Covariance::Zero(dimension, dimension)};
    for (Sample const& sample : samples) {
        moments.mean += sample / static_cast<double>(samples.size());
    }
    for (Sample const& sample : samples) {
        Sample const d = sample - moments.mean;
        moments.covariance += d * d.transpose() / static_cast<double>(samples.size());
    }
    return moments;
}

TEST(GaussianModelEstimator, estimatesMeanAndBiasedCovariance)
{
    std::mt19937 random(1);
    for (int dimension = 1; dimension < 8; ++dimension) {
        auto const samples = randomSamples(random, 40, dimension);
        auto const model = modelOf(samples, dimension);
        auto const moments = momentsOf(samples);
        EXPECT_TRUE(model.getMean().isApprox(moments.mean, 1e-12));
        EXPECT_TRUE(model.getCov().isApprox(moments.covariance, 1e-12));
        EXPECT_EQ(model.getCov(), Covariance(model.getCov().transpose()));
        EXPECT_EQ(model.getNumSample(), 40U);
        EXPECT_EQ(model.getDimension(), dimension);
    }
}

TEST(GaussianModelEstimator, roundsAsTold)
{
    Estimator model(1);
    for (double const x : {0.1, 0.2, 0.4}) {
        model.update(Sample::Constant(1, x));
    }
    model.finalize();
    double const mean = (0.1 + 0.2 + 0.4) * (1.0 / 3.0);
    EXPECT_EQ(model.getMean()[0], mean);
    EXPECT_EQ(model.getCov()(0, 0), (0.1 * 0.1 + 0.2 * 0.2 + 0.4 * 0.4) / 3.0 - mean * mean);
}

TEST(GaussianModelEstimator, ofOneSampleHasNoSpread)
{
    auto const model = modelOf({Sample::Constant(2, 0.7)}, 2);
    EXPECT_NEAR(model.getCov().norm(), 0, 1e-15);
}

TEST(GaussianModelEstimator, finalizesOnce)
{
    std::mt19937 random(2);
    auto model = modelOf(randomSamples(random, 5, 3), 3);
    auto const mean = model.getMean();
    auto const covariance = model.getCov();
    model.finalize();
    EXPECT_EQ(model.getMean(), mean);
    EXPECT_EQ(model.getCov(), covariance);
}

TEST(GaussianModelEstimator, withoutSamplesBecomesNan)
{
    Estimator model(2);
    model.finalize();
    EXPECT_TRUE(model.getMean().array().isNaN().all());
    EXPECT_TRUE(model.getCov().array().isNaN().all());
}

TEST(GaussianModelEstimator, joinsWeightedWithoutTheDistanceOfTheMeans)
{
    std::mt19937 random(3);
    auto const first = modelOf(randomSamples(random, 10, 3), 3);
    auto const second = modelOf(randomSamples(random, 30, 3), 3);
    Estimator joined = first;
    joined.join(second);
    EXPECT_TRUE(joined.getMean().isApprox(first.getMean() * 0.25 + second.getMean() * 0.75, 1e-14));
    EXPECT_TRUE(joined.getCov().isApprox(first.getCov() * 0.25 + second.getCov() * 0.75, 1e-14));
    EXPECT_EQ(joined.getNumSample(), 40U);
}

TEST(GaussianModelEstimator, onceResetIsNeutralInAJoin)
{
    std::mt19937 random(4);
    auto const model = modelOf(randomSamples(random, 10, 2), 2);
    Estimator neutral(2);
    neutral.reset();
    neutral.join(model);
    EXPECT_TRUE(neutral.getMean().isApprox(model.getMean(), 1e-15));
    EXPECT_TRUE(neutral.getCov().isApprox(model.getCov(), 1e-15));
}

TEST(GaussianModelEstimator, reducesInAscendingOrder)
{
    std::mt19937 random(5);
    auto const model = modelOf(randomSamples(random, 20, 6), 6);
    auto const reduced = model.reduce({5, 2});
    EXPECT_EQ(reduced.getDimension(), 2);
    EXPECT_EQ(reduced.getNumSample(), 20U);
    EXPECT_EQ(reduced.getMean()[0], model.getMean()[2]);
    EXPECT_EQ(reduced.getMean()[1], model.getMean()[5]);
    EXPECT_EQ(reduced.getCov()(0, 1), model.getCov()(2, 5));
    EXPECT_EQ(reduced.getCov()(1, 1), model.getCov()(5, 5));
    EXPECT_EQ(model.reduce({}).getDimension(), 0);
}

TEST(GaussianModelEstimator, letsRepeatedIndicesCollapse)
{
    std::mt19937 random(6);
    auto const model = modelOf(randomSamples(random, 20, 3), 3);
    auto const reduced = model.reduce({1, 2, 1});
    EXPECT_EQ(reduced.getDimension(), 3);
    EXPECT_EQ(reduced.getMean()[0], model.getMean()[1]);
    EXPECT_EQ(reduced.getMean()[2], 0.0);
    EXPECT_EQ(reduced.getCov().row(2).norm(), 0.0);
    EXPECT_EQ(reduced.getCov().col(2).norm(), 0.0);
}

TEST(GaussianModelEstimator, normalizesLikeItsSamples)
{
    std::mt19937 random(7);
    auto samples = randomSamples(random, 20, 2);
    auto model = modelOf(samples, 2);
    Sample const offset = Sample::LinSpaced(2, -3, 5);
    Sample const factor = Sample::LinSpaced(2, 0.5, 4);
    model.normalize(offset, factor);
    for (Sample& sample : samples) {
        sample = (sample + offset).cwiseProduct(factor);
    }
    auto const moments = momentsOf(samples);
    EXPECT_TRUE(model.getMean().isApprox(moments.mean, 1e-12));
    EXPECT_TRUE(model.getCov().isApprox(moments.covariance, 1e-10));
}

TEST(GaussianModelEstimator, tellsWhatIsWrong)
{
    Estimator accumulating(2);
    Estimator finalized(2);
    finalized.reset();
    Sample const sample = Sample::Zero(2);
    std::string const stale = "The Gaussian Model is not up to date.";
    EXPECT_THAT(refusal<InvalidCall>([&] { accumulating.getMean(); }), HasSubstr(stale));
    EXPECT_THAT(refusal<InvalidCall>([&] { accumulating.getCov(); }), HasSubstr(stale));
    EXPECT_THAT(refusal<InvalidCall>([&] { accumulating.normalize(sample, sample); }), HasSubstr(stale));
    EXPECT_THAT(refusal<RuntimeError>([&] { finalized.update(sample); }),
                HasSubstr("Cannot update of model that has been finalized"));
    EXPECT_THAT(refusal<RuntimeError>([&] { accumulating.join(Estimator(3)); }),
                HasSubstr("The 2 models must have the same dimension"));
    std::string const notFinalized = "cannot join 2 models that have not been finalized";
    EXPECT_THAT(refusal<RuntimeError>([&] { accumulating.join(finalized); }), HasSubstr(notFinalized));
    EXPECT_THAT(refusal<RuntimeError>([&] { finalized.join(accumulating); }), HasSubstr(notFinalized));
    EXPECT_THAT(refusal<RuntimeError>([&] { accumulating.reduce({0}); }),
                HasSubstr("cannot reduce a model that has not been finalized"));
    EXPECT_THAT(refusal<RuntimeError>([&] {
                    finalized.reduce({1, 1});
                }),
                HasSubstr("Elements of the vector must be unique"));
    EXPECT_THAT(refusal<BadIndex>([&] { finalized.reduce({0, 2}); }), HasSubstr("The index does not exist"));
    EXPECT_THAT(refusal<BadIndex>([&] { finalized.reduce({-1}); }), HasSubstr("The index does not exist"));
}

} // namespace

} // namespace mox::math
