#include "benchmarks/Cases.h"

#include <algorithm>
#include <iterator>

#include "testing/references/threshold.h"

namespace mox::benchmarks {

namespace {

constexpr Size sizes[] = {{1, 1, 1}, {512, 512, 1}, {4096, 4096, 1}, {64, 64, 64}, {256, 256, 256}, {512, 512, 512}};

std::vector<Case> thresholdCases()
{
    Reference const reference = [](std::vector<double> const& voxels, Size const&) {
        return testing::thresholdReference<double, double>(voxels, 50, 200);
    };
    std::vector<Case> cases;
    for (int type = MOX_UINT8; type <= MOX_FLOAT64; ++type) {
        for (Size const& size : sizes) {
            cases.push_back({"Threshold",
                             static_cast<VoxelTypes>(type),
                             MOX_UINT8,
                             size,
                             {{"lowLevel", "50"}, {"highLevel", "200"}},
                             reference});
        }
    }
    return cases;
}

} // namespace

std::string Case::name() const
{
    std::string text = algorithm + '/' + helper::getText(inputType).c_str() + '/' + std::to_string(size.columns) + 'x' +
                       std::to_string(size.rows);
    if (size.plans > 1) {
        text += 'x' + std::to_string(size.plans);
    }
    constexpr std::size_t longestValue = 40; // tables are longer
    for (auto const& [property, value] : properties) {
        text.append("/").append(property).append("=").append(value.substr(0, longestValue));
    }
    if (level.has_value()) {
        text += *level == OptimLevelType::SCALAR ? "/scalar" : "/sse";
    }
    return text;
}

std::vector<Case> allCases()
{
    std::vector<Case> cases = thresholdCases();
    for (auto const& more :
         {labelingCases(), morphologyCases(), pointOperationsCases(), registrationCases(), textureCases()}) {
        cases.insert(cases.end(), more.begin(), more.end());
    }
    return cases;
}

} // namespace mox::benchmarks
