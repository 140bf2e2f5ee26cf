#include "Classification/private/LDAClassifier.h"

#include <Moxelcore/Core/Exception.h>

#include <Eigen/SVD>
#include <boost/make_shared.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "Core/private/Helper/raise.h"

namespace mox::classification {

namespace {

constexpr char const* source = "Classification/private/LDAClassifier";
constexpr double rankDeficient = -1.0;
constexpr double largest = std::numeric_limits<double>::max();

using Estimator = LDAClassifier::Estimator;
using Models = LDAClassifier::Models;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

boost::shared_ptr<Estimator> copyOf(boost::shared_ptr<Estimator> const& model)
{
    return model ? boost::make_shared<Estimator>(*model) : nullptr;
}

Models copyOf(Models const& models)
{
    Models copies;
    for (auto const& model : models) {
        copies.push_back(copyOf(model));
    }
    return copies;
}

Estimator::VectorType vectorOf(std::vector<double> const& values)
{
    return Eigen::Map<Eigen::VectorXd const>(values.data(), static_cast<Eigen::Index>(values.size()));
}

bool fits(boost::shared_ptr<Estimator> const& model, int dimension, bool mustBeFinalized)
{
    return model && model->isConsistent() && model->getDimension() == dimension &&
           (model->isUpToDate() || !mustBeFinalized);
}

bool allFit(Models const& models, int dimension, bool mustBeFinalized)
{
    return std::all_of(models.begin(), models.end(),
                       [&](auto const& model) { return fits(model, dimension, mustBeFinalized); });
}

bool areMissing(Models const& models)
{
    return std::none_of(models.begin(), models.end(), [](auto const& model) { return bool(model); });
}

/// A covariance that is not finite counts as of full rank.
bool isRankDeficient(Estimator::MatrixType const& covariance)
{
    return covariance.allFinite() && Eigen::JacobiSVD<Eigen::MatrixXd>(covariance).rank() != covariance.rows();
}

/// Descending; NaN after every number, equal scores in order of their index.
std::vector<int> sortedByScore(std::vector<FeatureInfo> const& features)
{
    std::vector<int> order(features.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        double const scoreA = features[at(a)].separation_power;
        double const scoreB = features[at(b)].separation_power;
        return scoreA > scoreB || (std::isnan(scoreB) && !std::isnan(scoreA));
    });
    return order;
}

} // namespace

boost::shared_ptr<LDAClassifier> LDAClassifier::clone() const
{
    boost::shared_ptr<LDAClassifier> copy(new LDAClassifier(*this));
    copy->intraModels_ = copyOf(intraModels_);
    copy->intraModelsNormalized_ = copyOf(intraModelsNormalized_);
    copy->intraModelsNormalizedReduced_ = copyOf(intraModelsNormalizedReduced_);
    copy->interModel_ = copyOf(interModel_);
    return copy;
}

void LDAClassifier::init(int learningSpaceDimension, int numberOfClasses)
{
    learningSpaceDimension_ = learningSpaceDimension;
    numOfClasses_ = numberOfClasses;
    if (learningSpaceDimension <= 0) {
        helper::raise<RuntimeError>(source, "The learning space dimension must be greater than 0");
    }
    if (numberOfClasses < 2) {
        helper::raise<RuntimeError>(source, "The number of classes must be greater than 1");
    }
    auto const dimension = at(learningSpaceDimension);
    intraModels_.assign(at(numberOfClasses), nullptr);
    for (auto& model : intraModels_) {
        model = boost::make_shared<Estimator>(learningSpaceDimension);
    }
    intraModelsNormalized_.assign(at(numberOfClasses), nullptr);
    intraModelsNormalizedReduced_.assign(at(numberOfClasses), nullptr);
    interModel_ = boost::make_shared<Estimator>(learningSpaceDimension);
    featuresInfo_.assign(dimension, FeatureInfo());
    min_.assign(dimension, largest);
    max_.assign(dimension, -largest);
    normOffset_.assign(dimension, 0.0);
    normFactor_.assign(dimension, 0.0);
    normOffsetReduced_.clear();
    normFactorReduced_.clear();
    nbUsedFeatures_ = 0;
    status_ = Status::learning;
}

int LDAClassifier::getLearningSpaceDimension() const
{
    if (status_ == Status::uninitialized) {
        helper::raise<InvalidCall>(source, "Call getLearningSpaceDimension while status is UNINITIALIZED.");
    }
    return learningSpaceDimension_;
}

void LDAClassifier::update(Sample const& sample, int classIndex)
{
    if (status_ == Status::uninitialized) {
        return;
    }
    if (classIndex < 0 || at(classIndex) >= intraModels_.size()) {
        helper::raise<BadIndex>(source, "index must be less than ", numOfClasses_);
    }
    status_ = Status::learning;
    intraModels_[at(classIndex)]->update(sample);
    for (std::size_t i = 0; i < min_.size(); ++i) {
        min_[i] = std::min(min_[i], sample[static_cast<Eigen::Index>(i)]);
        max_[i] = std::max(max_[i], sample[static_cast<Eigen::Index>(i)]);
    }
}

bool LDAClassifier::isConstantFeature(int index) const
{
    getLearningSpaceDimension(); // reports the missing `init`
    requireIndex(index);
    return false;
}

void LDAClassifier::finalize()
{
    if (status_ == Status::uninitialized) {
        helper::raise<InvalidCall>(source, "Call finalize while status is UNINITIALIZED.");
    }
    interModel_->reset();
    normalizationMethod_ != 0 ? normalizeByVariance() : normalizeByRange();
    selectFeatures();
    status_ = Status::finalized;
}

void LDAClassifier::normalizeByVariance()
{
    for (auto const& model : intraModels_) {
        model->finalize();
        interModel_->join(*model);
    }
    for (int i = 0; i < learningSpaceDimension_; ++i) {
        normOffset_[at(i)] = -interModel_->getMean()[i];
        normFactor_[at(i)] = std::sqrt(1.0 / interModel_->getCov()(i, i));
    }
    auto const offset = vectorOf(normOffset_);
    auto const factor = vectorOf(normFactor_);
    intraModelsNormalized_ = copyOf(intraModels_);
    for (auto const& model : intraModelsNormalized_) {
        model->normalize(offset, factor);
    }
    interModel_->normalize(offset, factor);
}

void LDAClassifier::normalizeByRange()
{
    for (std::size_t i = 0; i < normOffset_.size(); ++i) {
        double const range = max_[i] - min_[i];
        normOffset_[i] = (max_[i] + min_[i]) * -0.5;
        normFactor_[i] = range > std::numeric_limits<double>::epsilon() ? 2.0 / range : 1.0;
    }
    auto const offset = vectorOf(normOffset_);
    auto const factor = vectorOf(normFactor_);
    for (auto const& model : intraModels_) {
        model->finalize();
    }
    intraModelsNormalized_ = copyOf(intraModels_);
    for (auto const& model : intraModelsNormalized_) {
        model->normalize(offset, factor);
        interModel_->join(*model);
    }
}

void LDAClassifier::selectFeatures()
{
    for (int i = 0; i < learningSpaceDimension_; ++i) {
        featuresInfo_[at(i)] = {separation({i}), false};
    }
    std::vector<int> const order = sortedByScore(featuresInfo_);
    std::vector<int> subset = {order.front()};
    double best = featuresInfo_[at(order.front())].separation_power;
    bool const isTrained = interModel_->getNumSample() > 0;
    for (std::size_t k = 1; isTrained && k < order.size(); ++k) {
        if (featuresInfo_[at(order[k])].separation_power == rankDeficient) {
            continue;
        }
        subset.push_back(order[k]);
        double const score = separation(subset);
        bool const isUnknown = std::isnan(score) && !std::isnan(best);
        if (score == rankDeficient || isUnknown || increaseRatio_ > (score - best) / best) {
            subset.pop_back();
        } else {
            best = score;
        }
    }
    reduceTo(subset);
}

double LDAClassifier::separation(std::vector<int> const& subset) const
{
    Estimator const joint = interModel_->reduce(subset);
    if (isRankDeficient(joint.getCov())) {
        return rankDeficient;
    }
    double sum = 0;
    for (auto const& model : intraModelsNormalized_) {
        sum += (model->reduce(subset).getMean() - joint.getMean()).norm();
    }
    return sum;
}

void LDAClassifier::reduceTo(std::vector<int> const& subset)
{
    for (int const feature : subset) {
        featuresInfo_[at(feature)].used = true;
    }
    nbUsedFeatures_ = static_cast<int>(subset.size());
    for (std::size_t c = 0; c < intraModelsNormalized_.size(); ++c) {
        intraModelsNormalizedReduced_[c] = boost::make_shared<Estimator>(intraModelsNormalized_[c]->reduce(subset));
    }
    reduceNormalization();
}

void LDAClassifier::reduceNormalization()
{
    normOffsetReduced_.clear();
    normFactorReduced_.clear();
    for (std::size_t i = 0; i < featuresInfo_.size(); ++i) {
        if (featuresInfo_[i].used) {
            normOffsetReduced_.push_back(normOffset_[i]);
            normFactorReduced_.push_back(normFactor_[i]);
        }
    }
}

bool LDAClassifier::isUsedFeature(int index) const
{
    requireStatus(status_ == Status::finalized, "isUsedFeature while");
    requireIndex(index);
    return featuresInfo_[at(index)].used;
}

int LDAClassifier::getClassicationSpaceDimension() const
{
    requireStatus(status_ == Status::finalized, "getClassicationSpaceDimension");
    return nbUsedFeatures_;
}

unsigned int LDAClassifier::classify(Sample const& sample) const
{
    std::vector<double const*> features;
    for (double const& value : sample) {
        features.push_back(&value);
    }
    unsigned int result = 0;
    std::vector<double> work;
    classifyRow(features, 1, &result, work);
    return result;
}

void LDAClassifier::classifyRow(std::vector<double const*> const& features, std::size_t count, unsigned int* classes,
                                std::vector<double>& work) const
{
    constexpr std::size_t stretch = 128; // samples whose normalised features stay in the nearest cache
    std::fill(classes, classes + count, 0U);
    if (intraModelsNormalizedReduced_.empty() || !intraModelsNormalizedReduced_.front()) {
        return;
    }
    std::size_t const dimension = normOffsetReduced_.size();
    work.resize((dimension + 2) * stretch);
    double* const best = work.data() + dimension * stretch;
    double* const distance = best + stretch;
    for (std::size_t first = 0; first < count; first += stretch) {
        std::size_t const length = std::min(stretch, count - first);
        for (std::size_t f = 0; f < dimension; ++f) {
            double const* const in = features[f] + first;
            double* const out = work.data() + f * stretch;
            for (std::size_t x = 0; x < length; ++x) {
                out[x] = (normOffsetReduced_[f] + in[x]) * normFactorReduced_[f];
            }
        }
        std::fill(best, best + length, largest);
        for (std::size_t c = 0; c < intraModelsNormalizedReduced_.size(); ++c) {
            double const* const mean = intraModelsNormalizedReduced_[c]->getMean().data();
            std::fill(distance, distance + length, 0.0);
            for (std::size_t f = 0; f < dimension; ++f) {
                double const* const y = work.data() + f * stretch;
                for (std::size_t x = 0; x < length; ++x) {
                    distance[x] += (mean[f] - y[x]) * (mean[f] - y[x]);
                }
            }
            for (std::size_t x = 0; x < length; ++x) {
                double const d = std::sqrt(distance[x]);
                classes[first + x] = d < best[x] ? static_cast<unsigned int>(c) : classes[first + x];
                best[x] = d < best[x] ? d : best[x];
            }
        }
    }
}

String LDAClassifier::getInfo() const
{
    requireStatus(status_ == Status::finalized, "getInfo");
    return {};
}

bool LDAClassifier::isIncremental(bool) const
{
    return false;
}

void LDAClassifier::write() const
{
    requireStatus(status_ == Status::finalized, "write");
}

bool LDAClassifier::restore(int learningSpaceDimension, int numberOfClasses)
{
    bool const fits = learningSpaceDimension_ == learningSpaceDimension && numOfClasses_ == numberOfClasses;
    if (!fits || !isConsistent()) {
        return false;
    }
    reduceNormalization();
    return true;
}

bool LDAClassifier::isConsistent() const
{
    if (status_ != Status::learning && status_ != Status::finalized) {
        return false;
    }
    bool const isFinalized = status_ == Status::finalized;
    auto const dimension = at(learningSpaceDimension_);
    auto const used = std::count_if(featuresInfo_.begin(), featuresInfo_.end(), [](auto const& f) { return f.used; });
    return numOfClasses_ > 1 && learningSpaceDimension_ > 0 && featuresInfo_.size() == dimension &&
           min_.size() == dimension && max_.size() == dimension && normOffset_.size() == dimension &&
           normFactor_.size() == dimension && used == nbUsedFeatures_ && (used > 0 || !isFinalized) &&
           normFactorReduced_.size() == at(nbUsedFeatures_) &&
           allFit(intraModels_, learningSpaceDimension_, isFinalized) &&
           fits(interModel_, learningSpaceDimension_, isFinalized) &&
           ((!isFinalized && areMissing(intraModelsNormalized_) && areMissing(intraModelsNormalizedReduced_)) ||
            (allFit(intraModelsNormalized_, learningSpaceDimension_, true) &&
             allFit(intraModelsNormalizedReduced_, nbUsedFeatures_, true)));
}

void LDAClassifier::requireStatus(bool holds, char const* operation) const
{
    if (!holds) {
        helper::raise<InvalidCall>(source, "Call ", operation, " while the model is not finalized.");
    }
}

void LDAClassifier::requireIndex(int index) const
{
    if (index < 0 || at(index) >= featuresInfo_.size()) {
        helper::raise<BadIndex>(source, "index must be less than ", learningSpaceDimension_);
    }
}

} // namespace mox::classification
