#include "Classification/private/LDAClassifier.h"

#include <gmock/gmock.h>

#include <Moxelcore/Core/Exception.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <random>
#include <string>

#include "Classification/private/modelFile.h"

namespace mox::classification {

namespace {

using Sample = LDAClassifier::Sample;
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

/// Samples by class.
using Training = std::vector<std::vector<Sample>>;

Sample sampleOf(std::vector<double> const& values)
{
    return Eigen::Map<Eigen::VectorXd const>(values.data(), static_cast<Eigen::Index>(values.size()));
}

/// Feature f of class c is normally distributed about `centres[c][f]`.
Training randomTraining(std::mt19937& random, std::vector<std::vector<double>> const& centres, int count)
{
    std::normal_distribution<double> normal;
    Training training;
    for (auto const& centre : centres) {
        training.emplace_back();
        for (int i = 0; i < count; ++i) {
            Sample sample = sampleOf(centre);
            for (double& value : sample) {
                value += normal(random);
            }
            training.back().push_back(sample);
        }
    }
    return training;
}

void train(LDAClassifier& classifier, Training const& training)
{
    for (std::size_t c = 0; c < training.size(); ++c) {
        for (Sample const& sample : training[c]) {
            classifier.update(sample, static_cast<int>(c));
        }
    }
    classifier.finalize();
}

/// By class and feature, within 3 of a value.
std::vector<std::vector<double>> randomCentres(std::mt19937& random, int numOfClasses, int dimension, double middle)
{
    std::uniform_real_distribution<double> centre(middle - 3, middle + 3);
    std::vector<std::vector<double>> centres(static_cast<std::size_t>(numOfClasses));
    for (auto& values : centres) {
        std::generate_n(std::back_inserter(values), dimension, [&] { return centre(random); });
    }
    return centres;
}

boost::shared_ptr<LDAClassifier> trainedOn(Training const& training, int dimension)
{
    auto const classifier = boost::make_shared<LDAClassifier>();
    classifier->init(dimension, static_cast<int>(training.size()));
    train(*classifier, training);
    return classifier;
}

/// The same with a setting that only a file can change.
boost::shared_ptr<LDAClassifier> trainedOn(Training const& training, int dimension, std::string const& setting,
                                           std::string const& value)
{
    TextureClassificationModelPrivate model;
    model.numOfClasses = static_cast<unsigned int>(training.size());
    model.userQuantileRatioHistogram.resize(6);
    for (int i = 0; i < dimension; ++i) {
        model.textureFeaturesGroup.push_back(segmentation::HISTO_Mean);
    }
    model.classifier = boost::make_shared<LDAClassifier>();
    model.classifier->init(dimension, static_cast<int>(training.size()));
    std::string text = modelFile::compose(model, WRITE_MODE_XML);
    std::size_t const begin = text.find("<" + setting + ">") + setting.size() + 2;
    text.replace(begin, text.find('<', begin) - begin, value);
    auto const classifier = modelFile::parse("model.xml", text)->classifier;
    train(*classifier, training);
    return classifier;
}

std::vector<int> usedFeatures(LDAClassifier const& classifier)
{
    std::vector<int> used;
    for (int i = 0; i < classifier.getLearningSpaceDimension(); ++i) {
        if (classifier.isUsedFeature(i)) {
            used.push_back(i);
        }
    }
    return used;
}

Sample restricted(Sample const& sample, std::vector<int> const& features)
{
    Sample result(static_cast<Eigen::Index>(features.size()));
    for (std::size_t i = 0; i < features.size(); ++i) {
        result[static_cast<Eigen::Index>(i)] = sample[features[i]];
    }
    return result;
}

/// The normalised class means, and the weighted joint mean and pooled covariance, by two passes over the samples.
struct Reference {
    enum class Normalization { byVariance, byRange };

    std::vector<Sample> means;
    Sample jointMean;
    Eigen::MatrixXd covariance;
    Sample offset;
    Sample factor;

    Reference(Training const& training, int dimension, Normalization normalization = Normalization::byVariance)
        : jointMean(Sample::Zero(dimension))
        , covariance(Eigen::MatrixXd::Zero(dimension, dimension))
    {
        double total = 0;
        for (auto const& samples : training) {
            Sample mean = Sample::Zero(dimension);
            for (Sample const& sample : samples) {
                mean += sample / static_cast<double>(samples.size());
            }
            for (Sample const& sample : samples) {
                covariance += (sample - mean) * (sample - mean).transpose();
                jointMean += sample;
            }
            means.push_back(mean);
            total += static_cast<double>(samples.size());
        }
        jointMean /= total;
        covariance /= total;
        offset = -jointMean;
        factor = covariance.diagonal().cwiseInverse().cwiseSqrt();
        if (normalization == Normalization::byRange) {
            Sample least = training[0][0];
            Sample most = least;
            for (auto const& samples : training) {
                for (Sample const& sample : samples) {
                    least = least.cwiseMin(sample);
                    most = most.cwiseMax(sample);
                }
            }
            offset = -(least + most) / 2;
            factor = 2 * (most - least).cwiseInverse();
        }
        for (Sample& mean : means) {
            mean = (mean + offset).cwiseProduct(factor);
        }
        jointMean = (jointMean + offset).cwiseProduct(factor);
    }

    double separation(std::vector<int> const& subset) const
    {
        double sum = 0;
        for (Sample const& mean : means) {
            sum += restricted(mean - jointMean, subset).norm();
        }
        return sum;
    }

    std::vector<int> selection(double increaseRatio) const
    {
        std::vector<int> order;
        for (int i = 0; i < jointMean.size(); ++i) {
            order.push_back(i);
        }
        std::sort(order.begin(), order.end(), [&](int a, int b) { return separation({a}) > separation({b}); });
        std::vector<int> subset = {order[0]};
        for (std::size_t k = 1; k < order.size(); ++k) {
            auto larger = subset;
            larger.push_back(order[k]);
            if (separation(larger) >= separation(subset) * (1 + increaseRatio)) {
                subset = larger;
            }
        }
        std::sort(subset.begin(), subset.end());
        return subset;
    }

    unsigned int classify(Sample const& sample, std::vector<int> const& features) const
    {
        Sample const y = restricted((sample + offset).cwiseProduct(factor), features);
        unsigned int best = 0;
        for (unsigned int c = 1; c < means.size(); ++c) {
            if ((restricted(means[c], features) - y).norm() < (restricted(means[best], features) - y).norm()) {
                best = c;
            }
        }
        return best;
    }
};

void expectSameClasses(LDAClassifier const& classifier, Reference const& reference, Training const& training)
{
    auto const used = usedFeatures(classifier);
    for (auto const& samples : training) {
        for (Sample const& sample : samples) {
            ASSERT_EQ(classifier.classify(restricted(sample, used)), reference.classify(sample, used));
        }
    }
}

TEST(LDAClassifier, selectsAndClassifiesAsDefined)
{
    std::mt19937 random(1);
    for (int round = 0; round < 30; ++round) {
        int const dimension = 1 + round % 9;
        auto const training = randomTraining(random, randomCentres(random, 2 + round % 4, dimension, 0), 30);
        auto const classifier = trainedOn(training, dimension);
        Reference const reference(training, dimension);
        auto const used = usedFeatures(*classifier);
        ASSERT_EQ(used, reference.selection(0.05));
        ASSERT_EQ(classifier->getClassicationSpaceDimension(), static_cast<int>(used.size()));
        expectSameClasses(*classifier, reference, training);
    }
}

TEST(LDAClassifier, normalizesByRangeWhenAFileSaysSo)
{
    std::mt19937 random(8);
    for (int round = 0; round < 20; ++round) {
        int const dimension = 1 + round % 6;
        auto training = randomTraining(random, randomCentres(random, 2 + round % 3, dimension, 100), 30);
        training.back().resize(10); // so that the joint mean is not that of the classes
        auto const classifier = trainedOn(training, dimension, "normalization_method", "0");
        Reference const reference(training, dimension, Reference::Normalization::byRange);
        auto const used = usedFeatures(*classifier);
        ASSERT_EQ(used, reference.selection(0.05));
        expectSameClasses(*classifier, reference, training);
    }
}

TEST(LDAClassifier, keepsTheFirstOfConstantFeaturesNormalizedByRange)
{
    Training const training(2, {sampleOf({5, 4}), sampleOf({5, 4})});
    auto const classifier = trainedOn(training, 2, "normalization_method", "0");
    EXPECT_THAT(usedFeatures(*classifier), ElementsAre(0)) << "all scores are -1";
    EXPECT_EQ(classifier->classify(sampleOf({5})), 0U);
}

TEST(LDAClassifier, classifiesRowsLikeSingleSamples)
{
    std::mt19937 random(2);
    auto const training = randomTraining(random, {{0, 0, 3}, {3, 0, 0}, {0, 3, 1}}, 200);
    auto const classifier = trainedOn(training, 3);
    ASSERT_THAT(usedFeatures(*classifier), ElementsAre(0, 1, 2));
    std::vector<std::vector<double>> columns(3);
    for (auto const& samples : training) {
        for (Sample const& sample : samples) {
            for (std::size_t f = 0; f < 3; ++f) {
                columns[f].push_back(sample[static_cast<Eigen::Index>(f)]);
            }
        }
    }
    columns[1][5] = nan;
    std::vector<unsigned int> classes(600);
    std::vector<double> work;
    classifier->classifyRow({columns[0].data(), columns[1].data(), columns[2].data()}, 600, classes.data(), work);
    EXPECT_EQ(classes[5], 0U);
    for (std::size_t i = 0; i < 600; ++i) {
        ASSERT_EQ(classes[i], classifier->classify(sampleOf({columns[0][i], columns[1][i], columns[2][i]})));
    }
}

TEST(LDAClassifier, givesTiesAndNanToTheLowerClass)
{
    Training const training = {{sampleOf({-1.0}), sampleOf({-3.0})}, {sampleOf({1.0}), sampleOf({3.0})}};
    auto const classifier = trainedOn(training, 1);
    EXPECT_EQ(classifier->classify(sampleOf({0.0})), 0U);
    EXPECT_EQ(classifier->classify(sampleOf({0.001})), 1U);
    EXPECT_EQ(classifier->classify(sampleOf({nan})), 0U);
}

TEST(LDAClassifier, leavesOutConstantFeatures)
{
    std::mt19937 random(3);
    auto training = randomTraining(random, {{0, 7, 0}, {4, 7, 4}}, 50);
    for (auto& samples : training) {
        for (Sample& sample : samples) {
            sample[1] = 7;
        }
    }
    EXPECT_THAT(usedFeatures(*trainedOn(training, 3)), ElementsAre(0, 2));
}

TEST(LDAClassifier, leavesOutCopies)
{
    std::mt19937 random(4);
    auto training = randomTraining(random, {{0, 0}, {4, 0}}, 50);
    for (auto& samples : training) {
        for (Sample& sample : samples) {
            sample[1] = sample[0];
        }
    }
    EXPECT_THAT(usedFeatures(*trainedOn(training, 2)), ElementsAre(0)) << "the lower of equal scores";
}

TEST(LDAClassifier, usesAllFeaturesWhenAllAreConstant)
{
    Training const training(2, {sampleOf({5, 4}), sampleOf({5, 4})});
    EXPECT_THAT(usedFeatures(*trainedOn(training, 2)), ElementsAre(0, 1)) << "all scores are NaN";
}

TEST(LDAClassifier, acceptsAnExactGain)
{
    // Class means at -+1 in the first feature and -+y in the second, all variances 1, so that the separation grows
    // from 2 to 2 sqrt(1 + y y). With y = 3/4 it grows by exactly a quarter.
    auto const at = [](double x, double y) {
        return std::vector<Sample>{sampleOf({x + 1, y + 1}), sampleOf({x - 1, y - 1}), sampleOf({x + 1, y - 1}),
                                   sampleOf({x - 1, y + 1})};
    };
    auto const classifier = trainedOn({at(-1, -0.75), at(1, 0.75)}, 2);
    EXPECT_THAT(usedFeatures(*classifier), ElementsAre(0, 1));
    EXPECT_THAT(usedFeatures(*trainedOn({at(-1, -0.75), at(1, 0.75)}, 2, "increase_ratio", "0.25")), ElementsAre(0, 1));
    EXPECT_THAT(usedFeatures(*trainedOn({at(-1, -0.75), at(1, 0.75)}, 2, "increase_ratio", "0.2500001")),
                ElementsAre(0));
    auto const small = trainedOn({at(-1, -0.25), at(1, 0.25)}, 2); // grows by 3.1 %
    EXPECT_THAT(usedFeatures(*small), ElementsAre(0));
}

TEST(LDAClassifier, usesAllFeaturesWhenAClassHasNoSamples)
{
    std::mt19937 random(5);
    Training training = randomTraining(random, {{0, 0, 0}, {4, 0, 1}}, 20);
    training.emplace_back();
    auto const classifier = trainedOn(training, 3);
    EXPECT_THAT(usedFeatures(*classifier), ElementsAre(0, 1, 2));
    EXPECT_EQ(classifier->classify(Sample::Zero(3)), 0U);
}

TEST(LDAClassifier, keepsOneFeatureWithoutAnySample)
{
    auto const classifier = trainedOn(Training(2), 3);
    EXPECT_THAT(usedFeatures(*classifier), ElementsAre(0));
}

TEST(LDAClassifier, finalizesAgainToTheSame)
{
    std::mt19937 random(6);
    auto const training = randomTraining(random, {{0, 0, 0, 1}, {4, 0, 1, 0}, {0, 4, 1, 1}}, 20);
    auto const classifier = trainedOn(training, 4);
    auto const used = usedFeatures(*classifier);
    classifier->finalize();
    EXPECT_EQ(usedFeatures(*classifier), used);
    EXPECT_EQ(classifier->getClassicationSpaceDimension(), static_cast<int>(used.size()));
}

TEST(LDAClassifier, startsAfreshWithInit)
{
    std::mt19937 random(7);
    auto const classifier = trainedOn(randomTraining(random, {{0, 0}, {4, 0}}, 20), 2);
    classifier->init(3, 2);
    EXPECT_EQ(classifier->getLearningSpaceDimension(), 3);
    EXPECT_EQ(classifier->classify(Sample::Zero(3)), 0U);
    for (auto const& [value, index] : {std::pair(0.0, 0), {1.0, 0}, {5.0, 1}, {6.5, 1}}) {
        classifier->update(sampleOf({value, value * value, 1.0}), index);
    }
    classifier->finalize();
    EXPECT_THAT(usedFeatures(*classifier), ElementsAre(0, 1));
}

TEST(LDAClassifier, clonesDeeply)
{
    LDAClassifier classifier;
    classifier.init(1, 2);
    auto const clone = classifier.clone();
    classifier.update(sampleOf({1.0}), 0);
    classifier.update(sampleOf({2.0}), 1);
    classifier.finalize();
    EXPECT_NO_THROW(clone->update(sampleOf({1.0}), 0));
    EXPECT_THROW(clone->isUsedFeature(0), InvalidCall);
}

TEST(LDAClassifier, tellsWhatIsWrong)
{
    LDAClassifier fresh;
    EXPECT_THAT(refusal<RuntimeError>([&] { LDAClassifier().init(0, 2); }),
                HasSubstr("The learning space dimension must be greater than 0"));
    EXPECT_THAT(refusal<RuntimeError>([&] { LDAClassifier().init(1, 1); }),
                HasSubstr("The number of classes must be greater than 1"));
    std::string const uninitialized = "Call getLearningSpaceDimension while status is UNINITIALIZED.";
    EXPECT_THAT(refusal<InvalidCall>([&] { fresh.getLearningSpaceDimension(); }), HasSubstr(uninitialized));
    EXPECT_THAT(refusal<InvalidCall>([&] { fresh.isConstantFeature(0); }), HasSubstr(uninitialized));
    EXPECT_THAT(refusal<InvalidCall>([&] { fresh.finalize(); }),
                HasSubstr("Call finalize while status is UNINITIALIZED."));
    EXPECT_NO_THROW(fresh.update(Sample::Zero(4), 9)) << "silent before init";

    LDAClassifier learning;
    learning.init(2, 3);
    EXPECT_FALSE(learning.isConstantFeature(1));
    EXPECT_FALSE(learning.isIncremental(true));
    EXPECT_EQ(learning.classify(Sample::Zero(1)), 0U);
    for (int const index : {-1, 2}) {
        EXPECT_THAT(refusal<BadIndex>([&] { learning.isConstantFeature(index); }),
                    HasSubstr("index must be less than 2"));
    }
    for (int const index : {-1, 3}) {
        EXPECT_THAT(refusal<BadIndex>([&] { learning.update(Sample::Zero(2), index); }),
                    HasSubstr("index must be less than 3"));
    }
    EXPECT_THAT(refusal<InvalidCall>([&] { learning.isUsedFeature(0); }),
                HasSubstr("Call isUsedFeature while while the model is not finalized."));
    EXPECT_THAT(refusal<InvalidCall>([&] { learning.getClassicationSpaceDimension(); }),
                HasSubstr("Call getClassicationSpaceDimension while the model is not finalized."));
    EXPECT_THAT(refusal<InvalidCall>([&] { learning.getInfo(); }),
                HasSubstr("Call getInfo while the model is not finalized."));
    EXPECT_THAT(refusal<InvalidCall>([&] { learning.write(); }),
                HasSubstr("Call write while the model is not finalized."));

    learning.finalize();
    EXPECT_NO_THROW(learning.write());
    EXPECT_EQ(learning.getInfo(), String(""));
    EXPECT_THAT(refusal<BadIndex>([&] { learning.isUsedFeature(2); }), HasSubstr("index must be less than 2"));
    EXPECT_THAT(refusal<RuntimeError>([&] { learning.update(Sample::Zero(2), 0); }),
                HasSubstr("Cannot update of model that has been finalized"));
    EXPECT_THROW(learning.isUsedFeature(0), InvalidCall) << "back in the learning state";
}

} // namespace

} // namespace mox::classification
