#include "Math/private/Histogram.h"

#include <Moxelcore/Core/Exception.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "Core/private/Helper/raise.h"

namespace mox::math {

namespace {

constexpr char const* source = "Math/src/Histogram";
constexpr double smallest = std::numeric_limits<double>::min();
constexpr std::size_t numOfMeasures = MSR_PEAK + 1;

} // namespace

Histogram::Histogram(double minimum, double maximum, double binSize)
    : minimum_(minimum)
    , maximum_(maximum)
    , binSize_(binSize)
    , measures_(numOfMeasures)
    , measureValid_(numOfMeasures)
{
    if (minimum_ > maximum_) {
        std::swap(minimum_, maximum_);
    }
    if (!(binSize_ >= smallest)) {
        return;
    }
    double const classes = std::trunc((maximum_ - minimum_) / binSize_ + 1.5);
    if (!(classes <= std::numeric_limits<unsigned int>::max())) {
        helper::raise<InvalidCall>(source, "The histogram has too many classes.");
    }
    numberOfClasses_ = static_cast<unsigned int>(classes);
    resize(numberOfClasses_);
    state_ = State::stale;
}

void Histogram::add(double intensity)
{
    requireInitialized();
    if (!covers(intensity)) {
        return;
    }
    ++(*this)[binOf(intensity)];
    ++total_;
    markChanged();
}

void Histogram::decrement(double intensity)
{
    requireInitialized();
    if (!covers(intensity)) {
        return;
    }
    if (total_ == 0) {
        helper::raise<InvalidCall>(source, "The histogram is empty: impossible to decrement an intensity.");
    }
    --(*this)[binOf(intensity)];
    --total_;
    markChanged();
}

void Histogram::clear()
{
    requireInitialized();
    std::fill(measures_.begin(), measures_.end(), 0.0);
    std::fill(measureValid_.begin(), measureValid_.end(), static_cast<unsigned char>(0));
    std::fill(begin(), end(), uint64{0});
    total_ = 0;
    markChanged();
}

double Histogram::getClassValue(unsigned int index) const
{
    requireInitialized();
    if (index >= numberOfClasses_) {
        helper::raise<BadIndex>(source, "The class index must be less than the number of classes", numberOfClasses_);
    }
    return classValue(index);
}

double Histogram::getMean()
{
    return measure(MSR_MEAN, [this] {
        double sum = 0;
        for (std::size_t i = 0; i < size(); ++i) {
            sum += classValue(i) * static_cast<double>((*this)[i]);
        }
        return sum / static_cast<double>(total_);
    });
}

double Histogram::getStddev()
{
    return measure(MSR_STDDEV, [this] {
        double const variance = getVariance();
        return variance > smallest ? std::sqrt(variance) : 0.0;
    });
}

double Histogram::getVariance()
{
    return measure(MSR_VARIANCE, [this] { return computeVariance(); });
}

double Histogram::getSkewness()
{
    return measure(MSR_SKEWNESS, [this] { return computeSkewness(); });
}

double Histogram::getKurtosis()
{
    return measure(MSR_KURTOSIS, [this] { return computeKurtosis(); });
}

double Histogram::getPeak()
{
    return measure(MSR_PEAK, [this] { return computePeak(); });
}

double Histogram::getQuantile(double ratio) const
{
    requireInitialized();
    requireFilled();
    auto const& counts = *this;
    auto const cumulated = [&](std::size_t i) { return (counts[i] >> 1U) + (i > 0 ? counts[i - 1] : 0); };
    double const threshold = static_cast<double>(total_) * ratio;
    std::size_t i = 0;
    while (i < size() && !(threshold < static_cast<double>(cumulated(i)))) {
        ++i;
    }
    if (i == size()) {
        return classValue(size() - 1);
    }
    uint64 const reached = cumulated(i);
    std::size_t beyond = i; // one past the bin to interpolate with
    while (beyond > 0 && cumulated(beyond - 1) == reached) {
        --beyond;
    }
    if (beyond == 0) {
        return classValue(i);
    }
    std::size_t const j = beyond - 1;
    double const weight = (static_cast<double>(reached) - threshold) / static_cast<double>(reached - cumulated(j));
    return classValue(i) * (1.0 - weight) + classValue(j) * weight;
}

template <class Compute>
double Histogram::measure(MeasuresIndex index, Compute&& compute)
{
    requireInitialized();
    requireFilled();
    if (state_ == State::stale) {
        std::fill(measures_.begin(), measures_.end(), 0.0);
        std::fill(measureValid_.begin(), measureValid_.end(), static_cast<unsigned char>(0));
    }
    state_ = State::valid;
    if (measureValid_[index] == 0) {
        measures_[index] = compute();
        measureValid_[index] = 1;
    }
    return measures_[index];
}

double Histogram::computeVariance() const
{
    if (hasOneFilledBin()) {
        return 0.0;
    }
    double sum = 0;
    double squares = 0;
    for (std::size_t i = 0; i < size(); ++i) {
        double const value = classValue(i);
        auto const count = static_cast<double>((*this)[i]);
        sum += value * count;
        squares += value * value * count;
    }
    auto const n = static_cast<double>(total_);
    return squares / n - (sum / n) * (sum / n);
}

double Histogram::computeSkewness()
{
    double const m2 = centralMoment(2);
    return m2 > smallest ? centralMoment(3) / (std::sqrt(m2) * m2) : 0.0;
}

double Histogram::computeKurtosis()
{
    double const m2 = centralMoment(2);
    return m2 > smallest ? centralMoment(4) / (m2 * m2) - 3.0 : 0.0;
}

double Histogram::computePeak() const
{
    return classValue(static_cast<std::size_t>(std::max_element(begin(), end()) - begin()));
}

double Histogram::centralMoment(int power)
{
    if (hasOneFilledBin()) {
        return 0.0;
    }
    double const mean = getMean();
    double sum = 0;
    for (std::size_t i = 0; i < size(); ++i) {
        double const distance = classValue(i) - mean;
        double term = static_cast<double>((*this)[i]);
        for (int k = 0; k < power; ++k) {
            term *= distance;
        }
        sum += term;
    }
    return sum / static_cast<double>(total_);
}

void Histogram::requireInitialized() const
{
    if (state_ == State::notInitialized) {
        helper::raise<InvalidCall>(source, "The histogram isn't correctly initialized.");
    }
}

void Histogram::requireFilled() const
{
    if (total_ == 0) {
        helper::raise<InvalidCall>(source, "The histogram is empty: impossible to compute a measure.");
    }
}

bool Histogram::covers(double intensity) const
{
    return intensity >= minimum_ && intensity <= maximum_;
}

std::size_t Histogram::binOf(double intensity) const
{
    double const bin = std::trunc((intensity - minimum_) / binSize_);
    return static_cast<std::size_t>(std::min(bin, static_cast<double>(numberOfClasses_ - 1)));
}

bool Histogram::hasOneFilledBin() const
{
    return std::find(begin(), end(), total_) != end();
}

double Histogram::classValue(std::size_t index) const
{
    return static_cast<double>(index) * binSize_ + minimum_ + binSize_ * 0.5;
}

void Histogram::markChanged()
{
    if (state_ == State::valid) {
        state_ = State::stale;
    }
}

} // namespace mox::math
