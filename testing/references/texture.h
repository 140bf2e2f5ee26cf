#pragma once

#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "Math/private/Histogram.h"
#include "Segmentation/private/TextureRecipe.h"

namespace mox::testing {

/// A symmetric grey level co-occurrence matrix of one direction and its measures, as they are defined: with the matrix,
/// its distributions and their sums. What the library computes without a matrix is compared with it.
class CooccurrenceMatrix {
public:
    using Real = long double;

    CooccurrenceMatrix(math::Vector2<int> const& direction, double minGrey, double maxGrey, double binSize)
        : direction_(direction)
        , levels_(maxGrey < minGrey ? 0 : static_cast<std::size_t>(std::ceil((maxGrey - minGrey + 1.0) / binSize)))
        , matrix_(levels_ * (levels_ + 1) / 2)
        , minGrey_(minGrey)
        , maxGrey_(maxGrey)
        , binSize_(binSize)
    {
    }

    void addPair(double a, double b) { change(a, b, 1); }
    void removePair(double a, double b) { change(a, b, -1); }

    Real getIndicator(unsigned int index) const
    {
        requireMatrix();
        if (index > 15) {
            throw std::runtime_error("Invalid cooccurrence matrix indicator idx");
        }
        Real const b = binSize_;
        Real const logB = std::log(b);
        switch (index) {
        case 0:
            return direction_[0];
        case 1:
            return direction_[1];
        case 2:
            return pairCount_;
        case 3:
            return sum([](Real p, Real, Real) { return p * p; });
        case 4:
            return b * b * sum([](Real p, Real i, Real j) { return (i - j) * (i - j) * p; });
        case 5: {
            Real const mu = mean();
            Real const v = marginalVariance();
            return v == 0 ? 0 : sum([&](Real p, Real i, Real j) { return (i - mu) * (j - mu) * p; }) / v;
        }
        case 6: {
            Real const mu = mean();
            return b * b * sum([&](Real p, Real i, Real) { return (i - mu) * (i - mu) * p; });
        }
        case 7:
            return sum([&](Real p, Real i, Real j) { return p / (1 + b * b * (i - j) * (i - j)); });
        case 8:
            return sum([&](Real p, Real i, Real j) { return ((i + j) * b * b + 2 * Real(minGrey_)) * p; });
        case 9: {
            Real const average = getIndicator(8);
            return sum([&](Real p, Real i, Real j) {
                Real const d = (i + j) * b * b + 2 * Real(minGrey_) - average;
                return d * d * p;
            });
        }
        case 10:
            return (logB + entropyOf(distribution([](std::size_t i, std::size_t j) { return i + j; }))) * b;
        case 11:
            return (logB + entropyOfPairs()) * b;
        case 12: {
            Real const e = sum([](Real p, Real i, Real j) { return std::abs(i - j) * p; });
            return b * b * sum([&](Real p, Real i, Real j) {
                       Real const d = std::abs(i - j) - e;
                       return d * d * p;
                   });
        }
        case 13:
            return (logB +
                    entropyOf(distribution([](std::size_t i, std::size_t j) { return i > j ? i - j : j - i; }))) *
                   b;
        case 14: {
            auto const m = marginal();
            Real const hx = (logB + entropyOf(m)) * b;
            Real const crossed = sum([&](Real p, Real i, Real j) {
                return p > 0 ? p * std::log(m[static_cast<std::size_t>(i)] * m[static_cast<std::size_t>(j)]) : 0;
            });
            return std::abs(hx) > 1.1920928955078125e-07L ? (getIndicator(11) - (logB - crossed) * b) / hx : 0;
        }
        default: {
            auto const m = marginal();
            Real crossed = 0;
            for (Real const p : m) {
                for (Real const q : m) {
                    crossed += p > 0 && q > 0 ? p * q * (std::log(p) + std::log(q)) : 0;
                }
            }
            Real const d = std::abs((logB - crossed) * b - getIndicator(11));
            return std::sqrt(std::max<Real>(0, 1 - std::exp(-2 * d)));
        }
        }
    }

private:
    void requireMatrix() const
    {
        if (matrix_.empty()) {
            throw std::runtime_error("Cooccurrence matrix used but not initialized");
        }
    }

    std::size_t quantized(double v) const
    {
        if (!(v >= minGrey_)) {
            return 0;
        }
        return static_cast<std::size_t>(((v >= maxGrey_ ? maxGrey_ : v) - minGrey_) / binSize_);
    }

    void change(double a, double b, int sign)
    {
        requireMatrix();
        pairCount_ += sign;
        std::size_t const i = std::max(quantized(a), quantized(b));
        std::size_t const j = std::min(quantized(a), quantized(b));
        matrix_[i * (i + 1) / 2 + j] += sign * (i == j ? 2 : 1);
    }

    Real probability(std::size_t i, std::size_t j) const
    {
        std::size_t const high = std::max(i, j);
        return matrix_[high * (high + 1) / 2 + std::min(i, j)] / (2 * Real(pairCount_));
    }

    template <class Term>
    Real sum(Term&& term) const
    {
        Real total = 0;
        for (std::size_t i = 0; i < levels_; ++i) {
            for (std::size_t j = 0; j < levels_; ++j) {
                total += term(probability(i, j), static_cast<Real>(i), static_cast<Real>(j));
            }
        }
        return total;
    }

    template <class Key>
    std::vector<Real> distribution(Key&& key) const
    {
        std::vector<Real> result(2 * levels_);
        for (std::size_t i = 0; i < levels_; ++i) {
            for (std::size_t j = 0; j < levels_; ++j) {
                result[key(i, j)] += probability(i, j);
            }
        }
        return result;
    }

    std::vector<Real> marginal() const
    {
        return distribution([](std::size_t i, std::size_t) { return i; });
    }

    Real mean() const
    {
        return sum([](Real p, Real i, Real) { return i * p; });
    }

    /// From integers, for it decides whether the correlation is 0.
    Real marginalVariance() const
    {
        Real squares = 0;
        Real values = 0;
        for (std::size_t i = 0; i < levels_; ++i) {
            for (std::size_t j = 0; j < levels_; ++j) {
                Real const n = probability(i, j) * 2 * pairCount_;
                squares += static_cast<Real>(i * i) * std::round(n);
                values += static_cast<Real>(i) * std::round(n);
            }
        }
        Real const m = 2 * Real(pairCount_);
        return (squares * m - values * values) / (m * m);
    }

    static Real entropyOf(std::vector<Real> const& distribution)
    {
        Real h = 0;
        for (Real const p : distribution) {
            h -= p > 0 ? p * std::log(p) : 0;
        }
        return h;
    }

    Real entropyOfPairs() const
    {
        return -sum([](Real p, Real, Real) { return p > 0 ? p * std::log(p) : 0; });
    }

    math::Vector2<int> direction_;
    std::size_t levels_;
    std::vector<Real> matrix_;
    int pairCount_ = 0;
    double minGrey_;
    double maxGrey_;
    double binSize_;
};

/// A grey image as a function of column and row, defined everywhere.
template <class Grey>
std::vector<double> textureReference(segmentation::TextureRecipe const& recipe, Grey&& grey, int x, int y)
{
    using namespace segmentation;
    auto const r = static_cast<int>(recipe.radius);
    auto const limit = static_cast<int>((r + 0.5) * (r + 0.5));
    auto const isInDisk = [&](int u, int v) { return std::abs(u) <= r && std::abs(v) <= r && u * u + v * v < limit; };
    std::vector<CooccurrenceMatrix> matrices;
    for (auto const& d : recipe.directionCollection) {
        matrices.emplace_back(d, recipe.minGreyLevelCooccurrence, recipe.maxGreyLevelCooccurrence,
                              recipe.binSizeCooccurrence);
    }
    math::Histogram histogram(recipe.minGreyLevelHistogram, recipe.maxGreyLevelHistogram, recipe.binSizeHistogram);
    for (int v = -r; v <= r; ++v) {
        for (int u = -r; u <= r; ++u) {
            if (!isInDisk(u, v)) {
                continue;
            }
            histogram.add(grey(x + u, y + v));
            for (std::size_t k = 0; k < matrices.size(); ++k) {
                auto const& d = recipe.directionCollection[k];
                if (isInDisk(u + d[0], v + d[1])) {
                    matrices[k].addPair(grey(x + u, y + v), grey(x + u + d[0], y + v + d[1]));
                }
            }
        }
    }
    std::vector<double> features;
    for (TextureFeatureTypes const type : recipe.textureFeaturesGroup) {
        constexpr std::array<double, 5> ratios = {0.1, 0.25, 0.5, 0.75, 0.9};
        if (type >= HISTO_QuantileR1) {
            features.push_back(histogram.getQuantile(
                recipe.userQuantileRatioHistogram[static_cast<std::size_t>(type - HISTO_QuantileR1)]));
        } else if (type >= HISTO_Quantile10) {
            features.push_back(histogram.getQuantile(ratios[static_cast<std::size_t>(type - HISTO_Quantile10)]));
        } else if (type >= HISTO_Mean) {
            double (math::Histogram::*const measures[])() = {
                &math::Histogram::getMean,     &math::Histogram::getStddev,   &math::Histogram::getVariance,
                &math::Histogram::getSkewness, &math::Histogram::getKurtosis, &math::Histogram::getPeak};
            features.push_back((histogram.*measures[type - HISTO_Mean])());
        } else {
            using Real = CooccurrenceMatrix::Real;
            std::vector<Real> list;
            for (auto const& matrix : matrices) {
                list.push_back(matrix.getIndicator(static_cast<unsigned int>(type) / 4 + 3));
            }
            auto const n = static_cast<Real>(list.size());
            Real s1 = 0;
            Real s2 = 0;
            for (Real const value : list) {
                s1 += value;
                s2 += value * value;
            }
            auto const [least, most] = std::minmax_element(list.begin(), list.end());
            Real const rest = s2 - s1 * s1 / n;
            switch (type % 4) {
            case 0:
                features.insert(features.end(), list.begin(), list.end());
                break;
            case 1:
                features.push_back(static_cast<double>(s1 / n));
                break;
            case 2:
                features.push_back(static_cast<double>(rest >= 0 ? std::sqrt(rest / n) : 0));
                break;
            default:
                features.push_back(static_cast<double>(*most - *least));
            }
        }
    }
    return features;
}

} // namespace mox::testing
