#include "benchmarks/peers/Contest.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace mox::benchmarks {

namespace {

constexpr int numOfRounds = 15;

double secondsOf(std::function<void()> const& work)
{
    auto const begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> values)
{
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void contest(std::string const& title, double numOfVoxels, std::vector<Contestant> const& contestants)
{
    std::vector<std::vector<double>> seconds(contestants.size());
    std::vector<std::vector<double>> ratios(contestants.size());
    for (int round = -1; round < numOfRounds; ++round) {
        for (std::size_t i = 0; i < contestants.size(); ++i) {
            double const elapsed = secondsOf(contestants[i].work);
            if (round >= 0) {
                seconds[i].push_back(elapsed);
                ratios[i].push_back(elapsed / seconds[0].back());
            }
        }
    }
    for (std::size_t i = 0; i < contestants.size(); ++i) {
        std::printf("| %-34s | %-12s | %8.0f | %5.2f |\n", title.c_str(), contestants[i].name.c_str(),
                    numOfVoxels / median(seconds[i]) * 1e-6, median(ratios[i]));
    }
}

} // namespace mox::benchmarks
