#include "Core/private/access/DirectionalMirrorBorderCondition.h"

#include <cmath>

#include "Core/private/access/readInside.h"
#include "Core/private/forEachRealVoxel.h"

namespace mox::access {

namespace {

constexpr char const* source = "Core/private/access/DirectionalMirrorBorderCondition.impl";
constexpr int mostReflections = 64;

/// Half away from zero. Kept within what 64-bit coordinates can add up: a slope near the vertical is not bounded.
int64 rounded(double value)
{
    constexpr double limit = 1099511627776.0; // 2^40
    return static_cast<int64>(std::clamp(value, -limit, limit) + (value < 0 ? -0.5 : 0.5));
}

struct Point {
    int64 x;
    int64 y;

    bool operator==(Point const&) const = default;
};

struct Direction {
    double a; // to positive columns
    double b;
    double slope;
};

/// Moves the point by the multiple of (b, -a) that mirrors it at a line from which it is `distance` away.
Point mirrored(Point p, double distance, Direction const& direction, int sign)
{
    auto const moved = [&](double twice) {
        return Point{p.x + sign * rounded(direction.b * twice), p.y - sign * rounded(direction.a * twice)};
    };
    Point const once = moved(2 * distance);
    return once == p ? moved(2 * distance + 1) : once;
}

/// Reflects the point along the direction at the side of an n x m image that it has left.
Point reflectedAtSide(Point p, int64 n, int64 m, double slope)
{
    auto const alongRows = [&](int64 overshoot) { return rounded(static_cast<double>(overshoot) * slope); };
    auto const alongColumns = [&](int64 overshoot) {
        return slope == 0 ? 0 : rounded(static_cast<double>(overshoot) / slope);
    };
    if (p.x < 0) {
        return {-1 - p.x, p.y + alongRows(-2 * p.x - 1)};
    }
    if (p.y < 0) {
        return {p.x + alongColumns(-2 * p.y - 1), -1 - p.y};
    }
    if (p.y >= m) {
        return {p.x - alongColumns(2 * (p.y - m) + 1), 2 * m - 1 - p.y};
    }
    return {2 * n - 1 - p.x, p.y - alongRows(2 * (p.x - n) + 1)};
}

Point reflectedOnce(Point p, int64 n, int64 m, Direction const& direction)
{
    auto const [a, b, slope] = direction;
    auto const x = static_cast<double>(p.x);
    auto const y = static_cast<double>(p.y);
    auto const dn = static_cast<double>(n);
    auto const dm = static_cast<double>(m);
    if (slope > 0) {
        if (double const d = (y - dm + 1) * a - x * b; d > 0) {
            return mirrored(p, d, direction, 1);
        }
        if (double const d = (x - dn + 1) * b - y * a; d > 0) {
            return mirrored(p, d, direction, -1);
        }
    } else {
        if (double const d = x * b - y * a; d > 0) {
            return mirrored(p, d, direction, -1);
        }
        if (double const d = (dn - x - 1) * b + (y - dm + 1) * a; d > 0) {
            return mirrored(p, d, direction, 1);
        }
    }
    return reflectedAtSide(p, n, m, slope);
}

Point mapInside(Point p, int64 n, int64 m, Direction const& direction)
{
    auto const isInside = [&] { return p.x >= 0 && p.x < n && p.y >= 0 && p.y < m; };
    for (int turn = 0; turn < mostReflections && !isInside(); ++turn) {
        p = reflectedOnce(p, n, m, direction);
    }
    return {std::clamp<int64>(p.x, 0, n - 1), std::clamp<int64>(p.y, 0, m - 1)};
}

} // namespace

template <class T>
DirectionalMirrorBorderCondition<T>::DirectionalMirrorBorderCondition(double angle)
    : directionX_(std::cos(angle))
    , directionY_(std::sin(angle))
    , slope_(std::tan(angle))
{
    if (directionX_ < 0) {
        directionX_ = -directionX_;
        directionY_ = -directionY_;
    }
}

template <class T>
void DirectionalMirrorBorderCondition<T>::readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end,
                                                  Position p) const
{
    if (!isSpectralIndex(p.s, sizes)) {
        helper::raise<UnexpectedError>(
            {source, 219}, "Directional mirror border condition is not compatible with spectral series extrapolation");
    }
    if (sizes.empty()) {
        std::fill(begin, end, T());
        return;
    }
    if (!isInside(p.t, sizes.timeSeries)) {
        helper::raise<UnexpectedError>(
            {source, 222}, "Directional mirror border condition is not compatible with time series extrapolation");
    }
    if (!isInside(p.z, sizes.plans)) {
        helper::raise<UnexpectedError>(
            {source, 225}, "Directional mirror border condition is not compatible with plans extrapolation");
    }
    Direction const direction{directionX_, directionY_, slope_};
    auto const fetch = [&](T* first, T* last, int line) {
        for (T* voxel = first; voxel != last; ++voxel) {
            Point const inside = mapInside({p.x + (voxel - begin), p.y}, sizes.columns, sizes.rows, direction);
            Position const row{0, static_cast<int>(inside.y), p.z, p.t, p.s};
            readInside(image, voxel, 1, inside.x, row, {source, line});
        }
    };
    if (!isInside(p.y, sizes.rows)) {
        fetch(begin, end, 245);
        return;
    }
    InsidePart const part(p.x, end - begin, sizes.columns);
    T* const inside = begin + part.left;
    if (part.count > 0) {
        readInside(image, inside, part.count, p.x + part.left, p, {source, 278});
    }
    fetch(begin, inside, 300);
    fetch(inside + part.count, end, 300);
}

#define MOX_INSTANTIATE(T) template class DirectionalMirrorBorderCondition<T>;
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::access
