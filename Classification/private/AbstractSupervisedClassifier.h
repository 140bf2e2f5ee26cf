#pragma once

#include <Moxelcore/Core/String.h>

#include <Eigen/Core>

namespace mox::classification {

/// A supervised classifier of feature vectors of one length. It learns in the space of all features and classifies
/// in the space of those that it has selected.
class AbstractSupervisedClassifier {
public:
    using Sample = Eigen::VectorXd;

    virtual ~AbstractSupervisedClassifier() = default;

    virtual void init(int learningSpaceDimension, int numberOfClasses) = 0;
    virtual int getLearningSpaceDimension() const = 0;
    virtual void update(Sample const& sample, int classIndex) = 0;
    virtual bool isConstantFeature(int index) const = 0;
    virtual void finalize() = 0;
    virtual bool isUsedFeature(int index) const = 0;
    virtual int getClassicationSpaceDimension() const = 0;
    /// The index of the class. The sample lies in the classification space.
    virtual unsigned int classify(Sample const& sample) const = 0;
    virtual String getInfo() const = 0;
    virtual bool isIncremental(bool flag) const = 0;
    /// Throws unless the classifier is finalized.
    virtual void write() const = 0;
};

} // namespace mox::classification
