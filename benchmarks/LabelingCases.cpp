#include "benchmarks/Cases.h"

#include "testing/references/labeling.h"

// Labeling and the algorithms that came with it.

namespace mox::benchmarks {

namespace {

std::vector<double> labelsOf(std::vector<double> const& voxels, Size const& size)
{
    auto const labels = testing::labelingReference(voxels, size.columns, size.rows);
    return {labels.begin(), labels.end()};
}

/// Means of whole numbers from 0 on, truncated.
std::vector<double> meansOf(std::vector<double> const& voxels, Size const& size)
{
    auto const at = [&](unsigned int x, unsigned int y) {
        return static_cast<long>(
            voxels[std::size_t{y < size.rows ? y : y - 1} * size.columns + (x < size.columns ? x : x - 1)]);
    };
    std::vector<double> means;
    for (unsigned int y = 0; y < size.rows; y += 2) {
        for (unsigned int x = 0; x < size.columns; x += 2) {
            means.push_back(static_cast<double>((at(x, y) + at(x + 1, y) + at(x, y + 1) + at(x + 1, y + 1)) / 4));
        }
    }
    return means;
}

/// Twice as wide and high, the image in the middle of zeros.
std::vector<double> framed(std::vector<double> const& voxels, Size const& size)
{
    unsigned int const columns = 2 * size.columns;
    std::vector<double> result(std::size_t{columns} * 2 * size.rows);
    for (unsigned int y = 0; y < size.rows; ++y) {
        for (unsigned int x = 0; x < size.columns; ++x) {
            result[std::size_t{y + size.rows / 2} * columns + x + size.columns / 2] =
                voxels[std::size_t{y} * size.columns + x];
        }
    }
    return result;
}

/// 0 where a voxel has no neighbour that is not 0.
std::vector<double> withoutIsolated(std::vector<double> const& voxels, Size const& size)
{
    std::vector<double> result = voxels;
    auto const isSet = [&](long x, long y) {
        return x >= 0 && y >= 0 && x < static_cast<long>(size.columns) && y < static_cast<long>(size.rows) &&
               voxels[static_cast<std::size_t>(y) * size.columns + static_cast<std::size_t>(x)] != 0;
    };
    for (long y = 0; y < static_cast<long>(size.rows); ++y) {
        for (long x = 0; x < static_cast<long>(size.columns); ++x) {
            int neighbours = 0;
            for (long i = 0; i < 9; ++i) {
                neighbours += i != 4 && isSet(x + i % 3 - 1, y + i / 3 - 1) ? 1 : 0;
            }
            if (neighbours == 0) {
                result[static_cast<std::size_t>(y) * size.columns + static_cast<std::size_t>(x)] = 0;
            }
        }
    }
    return result;
}

/// The table with one hit: a voxel without neighbours.
std::string isolatedPoint()
{
    std::string entries(512, '0');
    entries[16] = '1';
    return entries;
}

} // namespace

std::vector<Case> labelingCases()
{
    std::vector<Case> cases;
    for (Size const& size : {Size{512, 512, 1}, Size{4096, 4096, 1}}) {
        for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16, MOX_FLOAT32, MOX_FLOAT64}) {
            cases.push_back({"Labeling", type, MOX_INT32, size, {}, labelsOf, std::nullopt, 2});
        }
        for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16, MOX_INT16, MOX_UINT64}) {
            cases.push_back({"Decimate2D", type, type, size, {{"operatorType", "MEAN"}}, meansOf});
        }
        cases.push_back({"BorderConditionExtrapole", MOX_UINT8, MOX_UINT8, size, {{"zoomFactor", "2"}}, framed});
        cases.push_back(
            {"ApplyMorphologicalLut2D",
             MOX_UINT8,
             MOX_UINT8,
             size,
             {{"morphologicalLut", isolatedPoint()}, {"matchingFlag", "SET_ZERO"}, {"noMatchingFlag", "SET_UNCHANGE"}},
             withoutIsolated,
             std::nullopt,
             8});
    }
    return cases;
}

} // namespace mox::benchmarks
