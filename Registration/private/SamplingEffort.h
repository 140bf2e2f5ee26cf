#pragma once

#include <cmath>
#include <cstddef>

namespace mox::registration {

/// How many fits of samples are wanted, and how many samples may be drawn for them.
struct SamplingEffort {
    std::size_t numOfFits;
    std::size_t numOfDraws;
};

/// Ten times as many samples as are needed for one of them to be free of outliers with the probability `confidence`,
/// when a point is one with the probability `outlierRatio`. The rates 0 and 1 lead to no number or to one without
/// limit: at least 1 and at most 100000 are taken.
inline SamplingEffort samplingEffort(double confidence, double outlierRatio, std::size_t sampleSize)
{
    double const allGood = std::pow(1.0 - outlierRatio, static_cast<double>(sampleSize));
    double const wanted = std::trunc(std::log10(1.0 - confidence) / std::log10(1.0 - allGood) + 0.5);
    constexpr double most = 100000.0;
    double const bounded = std::isfinite(wanted) && wanted < most ? std::fmax(wanted, 1.0) : most;
    auto const samples = static_cast<std::size_t>(bounded);
    return {10 * samples, 100 * samples};
}

} // namespace mox::registration
