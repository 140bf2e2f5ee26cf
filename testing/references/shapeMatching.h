#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

// Shape-based matching straight from its definition: every position, rotation and scale of every level.

namespace mox::testing {

struct Plane {
    int columns = 0;
    int rows = 0;
    std::vector<double> voxels;

    double at(int x, int y) const { return voxels[static_cast<std::size_t>(y * columns + x)]; }
    bool contains(int x, int y) const { return x >= 0 && y >= 0 && x < columns && y < rows; }
};

template <class Join>
Plane halfOf(Plane const& plane, Join const& join)
{
    Plane half{(plane.columns + 1) / 2, (plane.rows + 1) / 2, {}};
    for (int y = 0; y < half.rows; ++y) {
        for (int x = 0; x < half.columns; ++x) {
            int const right = std::min(2 * x + 1, plane.columns - 1);
            int const lower = std::min(2 * y + 1, plane.rows - 1);
            half.voxels.push_back(
                join(plane.at(2 * x, 2 * y), plane.at(right, 2 * y), plane.at(2 * x, lower), plane.at(right, lower)));
        }
    }
    return half;
}

struct Matching {
    Plane inputX, inputY, templateX, templateY, mask;
    unsigned int numOfLevels = 4;
    bool isAbsolute = false;
    std::vector<double> scales;
    std::vector<double> rotations;
};

struct MatchingResult {
    double tx = 0, ty = 0, scale = 1, rotation = 0;

    bool operator==(MatchingResult const&) const = default;
};

inline double snap(double value)
{
    return std::abs(value - std::round(value)) <= 1e-12 ? std::round(value) : value;
}

/// The score of a candidate at a position. `sum` of points in rows of the template.
inline double scoreAt(Matching const& m, int x, int y, double scale, double rotation)
{
    double const c = snap(std::cos(rotation * 3.141592653589793 / 180));
    double const s = snap(std::sin(rotation * 3.141592653589793 / 180));
    double sum = 0;
    for (int row = 0; row < m.templateX.rows; ++row) {
        for (int column = 0; column < m.templateX.columns; ++column) {
            double const gx = m.templateX.at(column, row);
            double const gy = m.templateY.at(column, row);
            if (m.mask.at(column, row) == 0 || (gx == 0 && gy == 0)) {
                continue;
            }
            double const px = column - m.templateX.columns / 2;
            double const py = row - m.templateX.rows / 2;
            double const dx = (gx * c - gy * s) * scale;
            double const dy = (gx * s + gy * c) * scale;
            double const length = std::sqrt(dx * dx + dy * dy);
            int const atX = x + static_cast<int>(std::floor((px * c - py * s) * scale + 0.5));
            int const atY = y + static_cast<int>(std::floor((px * s + py * c) * scale + 0.5));
            if (!m.inputX.contains(atX, atY)) {
                continue;
            }
            double const ix = m.inputX.at(atX, atY);
            double const iy = m.inputY.at(atX, atY);
            double const n = std::sqrt(ix * ix + iy * iy);
            double const term = dx / length * ix + dy / length * iy;
            sum += n > 0 ? term / n : term;
        }
    }
    return m.isAbsolute ? std::abs(sum) : sum;
}

inline MatchingResult matchReference(Matching const& finest)
{
    std::vector<Matching> levels = {finest};
    auto const mean = [](double a, double b, double c, double d) { return ((a + b) + (c + d)) * 0.25; };
    auto const highest = [](double a, double b, double c, double d) { return std::max({a, b, c, d}); };
    while (levels.size() < finest.numOfLevels) {
        Matching next = levels.back();
        for (Plane* plane : {&next.inputX, &next.inputY, &next.templateX, &next.templateY}) {
            *plane = halfOf(*plane, mean);
        }
        next.mask = halfOf(next.mask, highest);
        levels.push_back(next);
    }
    int beginX = 0;
    int beginY = 0;
    int endX = levels.back().inputX.columns;
    int endY = levels.back().inputX.rows;
    for (std::size_t level = levels.size(); level-- > 0;) {
        Matching const& m = levels[level];
        double best = std::numeric_limits<double>::lowest();
        int bestX = 0;
        int bestY = 0;
        MatchingResult result;
        for (double const scale : m.scales) {
            for (double const rotation : m.rotations) {
                for (int y = std::max(beginY, 0); y < std::min(endY, m.inputX.rows); ++y) {
                    for (int x = std::max(beginX, 0); x < std::min(endX, m.inputX.columns); ++x) {
                        double const score = scoreAt(m, x, y, scale, rotation);
                        if (score > best) {
                            best = score;
                            bestX = x;
                            bestY = y;
                            result.scale = scale;
                            result.rotation = rotation;
                        }
                    }
                }
            }
        }
        if (level == 0) {
            double const c = snap(std::cos(result.rotation * 3.141592653589793 / 180));
            double const s = snap(std::sin(result.rotation * 3.141592653589793 / 180));
            double const cx = m.templateX.columns / 2;
            double const cy = m.templateX.rows / 2;
            result.tx = bestX - (cx * c - cy * s) * result.scale;
            result.ty = bestY - (cx * s + cy * c) * result.scale;
            return result;
        }
        beginX = 2 * bestX - 5;
        beginY = 2 * bestY - 5;
        endX = beginX + 10;
        endY = beginY + 10;
    }
    return {};
}

} // namespace mox::testing
