#pragma once

#include <Moxelcore/Core/Enum/MeasuresIndex.h>
#include <Moxelcore/Core/Integers.h>
#include <Moxelcore/Core/Vector.h>

namespace mox::math {

/// A histogram of bins of one width, to which single intensities are added and from which they are taken. Measures
/// are computed on demand and kept until the next change. The base holds the counts of the bins.
///
/// A bin width below the smallest normal double, or none, leaves a histogram that can do nothing: every operation
/// throws `InvalidCall`.
class Histogram : public Vector<uint64> {
public:
    /// Covers [minimum, maximum], both ends included and in either order.
    Histogram(double minimum, double maximum, double binSize);

    /// An intensity outside the range, or NaN, is ignored.
    void add(double intensity);
    /// The same; takes only what was added before. Throws `InvalidCall` when nothing is left.
    void decrement(double intensity);
    void clear();

    /// The centre of a bin. Throws `BadIndex` beyond the last.
    double getClassValue(unsigned int index) const;
    unsigned int getNumberOfClasses() const { return numberOfClasses_; }
    uint64 getTotal() const { return total_; }

    // Measures throw `InvalidCall` for an empty histogram. All but the mean and the peak are exactly 0 when only one
    // bin is filled.

    double getMean();
    double getStddev();
    /// From the raw moments, divided by the number of intensities.
    double getVariance();
    double getSkewness();
    /// Excess over that of a normal distribution.
    double getKurtosis();
    /// The centre of the fullest bin, the lowest of equals.
    double getPeak();

    /// A quantile in the sense of this library's texture features: what is compared with `ratio * total` is half a
    /// bin's count and the whole count of its left neighbour, not a sum over all bins before. Trained classifiers
    /// depend on it. A negative ratio gives the centre of the first bin.
    double getQuantile(double ratio) const;

private:
    enum class State { notInitialized, stale, valid };

    template <class Compute>
    double measure(MeasuresIndex index, Compute&& compute);
    double computeVariance() const;
    double computeSkewness();
    double computeKurtosis();
    double computePeak() const;
    /// Mean of the k-th powers of the distances to the mean.
    double centralMoment(int power);

    void requireInitialized() const;
    void requireFilled() const;
    bool covers(double intensity) const;
    std::size_t binOf(double intensity) const;
    bool hasOneFilledBin() const;
    double classValue(std::size_t index) const;
    void markChanged();

    State state_ = State::notInitialized;
    double minimum_;
    double maximum_;
    double binSize_;
    unsigned int numberOfClasses_ = 0;
    uint64 total_ = 0;
    Vector<double> measures_;
    Vector<unsigned char> measureValid_;
};

} // namespace mox::math
