#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace mox::testing {

/// From the definition: a scan by rows floods each component with the next label when it meets its first voxel.
template <class T>
std::vector<unsigned long long> labelingReference(std::vector<T> const& voxels, unsigned int columns, unsigned int rows)
{
    std::vector<unsigned long long> labels(voxels.size());
    unsigned long long numOfLabels = 0;
    std::vector<std::pair<long long, long long>> open;
    auto const visit = [&](long long x, long long y) {
        if (x < 0 || y < 0 || x >= columns || y >= rows) {
            return;
        }
        auto const i = static_cast<std::size_t>(y * columns + x);
        if (voxels[i] != 0 && labels[i] == 0) {
            labels[i] = numOfLabels;
            open.emplace_back(x, y);
        }
    };
    for (std::size_t i = 0; i < voxels.size(); ++i) {
        if (voxels[i] == 0 || labels[i] != 0) {
            continue;
        }
        ++numOfLabels;
        visit(static_cast<long long>(i % columns), static_cast<long long>(i / columns));
        while (!open.empty()) {
            auto const [x, y] = open.back();
            open.pop_back();
            for (long long dy = -1; dy <= 1; ++dy) {
                for (long long dx = -1; dx <= 1; ++dx) {
                    visit(x + dx, y + dy);
                }
            }
        }
    }
    return labels;
}

} // namespace mox::testing
