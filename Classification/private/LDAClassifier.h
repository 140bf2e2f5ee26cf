#pragma once

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <vector>

#include "Classification/private/AbstractSupervisedClassifier.h"
#include "Math/private/GaussianModelEstimator.h"

namespace mox::classification {

/// What the selection found of a feature of the learning space.
struct FeatureInfo {
    double separation_power = 0;
    bool used = false;
};

/// A linear discriminant classifier: a Gaussian model per class and a joint one, a normalised feature space, a greedy
/// forward selection of features by the distances between the class means, and the nearest class mean as verdict.
/// The features of the classification space stand in ascending order of the learning space.
class LDAClassifier final : public AbstractSupervisedClassifier {
public:
    using Estimator = math::GaussianModelEstimator<double>;
    using Models = std::vector<boost::shared_ptr<Estimator>>;
    enum class Status : int { uninitialized, learning, finalized };

    LDAClassifier() = default;
    LDAClassifier& operator=(LDAClassifier const&) = delete;

    /// A deep copy.
    boost::shared_ptr<LDAClassifier> clone() const;

    /// Starts afresh. Throws `RuntimeError` for less than 1 feature or 2 classes.
    void init(int learningSpaceDimension, int numberOfClasses) override;
    int getLearningSpaceDimension() const override;
    /// Without effect before `init`. Throws `BadIndex` for a class that does not exist, and what the class's model
    /// throws once it is finalized.
    void update(Sample const& sample, int classIndex) override;
    /// Always false for a feature that exists.
    bool isConstantFeature(int index) const override;
    /// Normalises, selects, reduces. Models of classes without samples are NaN, and all features are used then;
    /// without any sample only the first is.
    void finalize() override;
    bool isUsedFeature(int index) const override;
    int getClassicationSpaceDimension() const override;
    /// Ties go to the lower class; a sample with NaN is of class 0. Reads only.
    unsigned int classify(Sample const& sample) const override;
    /// Classifies `count` samples that stand feature by feature: the first of feature f is `features[f][0]`. The same
    /// arithmetic as `classify`; `work` is scratch memory.
    void classifyRow(std::vector<double const*> const& features, std::size_t count, unsigned int* classes,
                     std::vector<double>& work) const;
    String getInfo() const override;
    bool isIncremental(bool flag) const override;
    void write() const override;

    /// Completes a classifier that was loaded from a file. False when it has not these sizes or its fields do not fit
    /// together.
    bool restore(int learningSpaceDimension, int numberOfClasses);

private:
    friend class boost::serialization::access;
    template <class Archive>
    void serialize(Archive& archive, unsigned int version);

    /// Shares the models.
    LDAClassifier(LDAClassifier const&) = default;

    bool isConsistent() const;
    void requireStatus(bool holds, char const* operation) const;
    void requireIndex(int index) const;
    void normalizeByVariance();
    void normalizeByRange();
    void selectFeatures();
    double separation(std::vector<int> const& subset) const;
    void reduceTo(std::vector<int> const& subset);
    void reduceNormalization();

    Status status_ = Status::uninitialized;
    int learningSpaceDimension_ = 0;
    int numOfClasses_ = 0;
    Models intraModels_;
    Models intraModelsNormalized_;
    Models intraModelsNormalizedReduced_;
    boost::shared_ptr<Estimator> interModel_;
    std::vector<FeatureInfo> featuresInfo_;
    std::vector<double> min_;
    std::vector<double> max_;
    std::vector<double> normOffset_;
    std::vector<double> normOffsetReduced_;
    std::vector<double> normFactor_;
    std::vector<double> normFactorReduced_;
    int nbUsedFeatures_ = 0;
    double increaseRatio_ = 0.05;
    int normalizationMethod_ = 1; ///< 0: by the range, otherwise by the variance
};

} // namespace mox::classification
