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

template <class... Number>
std::string text(char const* form, Number... numbers)
{
    char buffer[64];
    std::snprintf(buffer, sizeof(buffer), form, numbers...);
    return buffer;
}

} // namespace

void beginTable()
{
    std::printf("| work | Moxelcore | OpenCV | ratio | limit | ratio | others |\n|---|---|---|---|---|---|---|\n");
}

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
    auto const rate = [&](std::size_t i) { return numOfVoxels / median(seconds[i]) * 1e-6; };
    std::string peer = " | |";
    std::string limit = " | |";
    std::string others;
    for (std::size_t i = 1; i < contestants.size(); ++i) {
        double const ratio = median(ratios[i]);
        std::string const& name = contestants[i].name;
        if (name == "OpenCV") {
            peer = text(" | %.0f | %.2f", rate(i), ratio);
        } else if (name == "bare loop" || name == "copy") {
            limit = text(" | %.0f | %.2f", rate(i), ratio);
        } else {
            others += (others.empty() ? "" : ", ") + name + text(" %.2f", ratio);
        }
    }
    std::printf("| %s | %s%s%s | %s |\n", title.c_str(), text(rate(0) < 100 ? "%.1f" : "%.0f", rate(0)).c_str(),
                peer.c_str(), limit.c_str(), others.c_str());
    std::fflush(stdout);
}

} // namespace mox::benchmarks
