#include "Morphology/private/elements.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace mox::morphology {

namespace {

constexpr double pi = 3.141592653589793;

/// An angle that pi times is infinite loses its full turns first.
double radians(double degrees)
{
    double const product = degrees * pi;
    return std::isfinite(product) ? product / 180 : std::fmod(degrees, 360) * pi / 180;
}

double sign(double value)
{
    return value < 0 ? -1.0 : 1.0;
}

int64 nearest(double value)
{
    return static_cast<int64>(std::floor(value + 0.5));
}

int clipped(int64 component, unsigned int size)
{
    return static_cast<int>(std::clamp<int64>(component, -int64{size}, size));
}

kernel::Offset3D clipped(int64 column, int64 row, int64 plan, access::Sizes const& sizes)
{
    return {clipped(column, sizes.columns), clipped(row, sizes.rows), clipped(plan, sizes.plans)};
}

/// As many voxels of a line as leave the image at most once.
unsigned int clippedLength(unsigned int length, unsigned int size)
{
    return size < length ? size + 1 : std::max(length, 1U);
}

unsigned int below(int64 least)
{
    return static_cast<unsigned int>(std::clamp<int64>(-least, 0, std::numeric_limits<unsigned int>::max()));
}

unsigned int above(int64 most)
{
    return below(-most);
}

uint64 square(int64 value)
{
    return static_cast<uint64>(value) * static_cast<uint64>(value);
}

/// The largest v with v^2 <= value.
int64 squareRoot(uint64 value)
{
    auto root = static_cast<int64>(std::sqrt(static_cast<double>(value)));
    while (square(root) > value) {
        --root;
    }
    while (square(root + 1) <= value && root < std::numeric_limits<unsigned int>::max()) {
        ++root;
    }
    return root;
}

} // namespace

OffsetList2D diskOffsets(unsigned int radius, access::Sizes const& sizes)
{
    int const columns = clipped(radius, sizes.columns);
    int const rows = clipped(radius, sizes.rows);
    OffsetList2D offsets;
    for (int a = -columns; a <= columns; ++a) {
        for (int b = -rows; b <= rows; ++b) {
            if (square(a) + square(b) <= square(radius)) {
                offsets.push_back({a, b});
            }
        }
    }
    return offsets;
}

OffsetList3D ballOffsets(unsigned int radius, access::Sizes const& sizes)
{
    int const columns = clipped(radius, sizes.columns);
    int const rows = clipped(radius, sizes.rows);
    int const plans = clipped(radius, sizes.plans);
    OffsetList3D offsets;
    for (int a = -columns; a <= columns; ++a) {
        for (int b = -rows; b <= rows; ++b) {
            for (int c = -plans; c <= plans; ++c) {
                if (square(a) + square(b) + square(c) <= square(radius)) {
                    offsets.push_back({a, b, c});
                }
            }
        }
    }
    return offsets;
}

Line2D::Line2D(double angle, unsigned int length)
    : cosine_(std::cos(radians(-angle)))
    , sine_(std::sin(radians(-angle)))
    , length_(length)
{
}

int64 Line2D::column(unsigned int i) const
{
    bool const stepsRows = std::abs(cosine_) <= std::abs(sine_);
    return stepsRows ? nearest(i * cosine_ / std::abs(sine_)) : static_cast<int64>(i * sign(cosine_));
}

int64 Line2D::row(unsigned int i) const
{
    bool const stepsRows = std::abs(cosine_) <= std::abs(sine_);
    return stepsRows ? static_cast<int64>(i * sign(sine_)) : nearest(i * sine_ / std::abs(cosine_));
}

OffsetList2D Line2D::offsets(access::Sizes const& sizes) const
{
    bool const stepsRows = std::abs(cosine_) <= std::abs(sine_);
    OffsetList2D offsets(clippedLength(length_, stepsRows ? sizes.rows : sizes.columns));
    for (unsigned int i = 0; i < offsets.size(); ++i) {
        offsets[i] = {clipped(column(i), sizes.columns), clipped(row(i), sizes.rows)};
    }
    return offsets;
}

AlgoBorderInfluence Line2D::influence() const
{
    unsigned int const last = std::max(length_, 1U) - 1; // each component moves one way only
    return {below(column(last)), above(column(last)), below(row(last)), above(row(last)), 0, 0, 0, 0, 0, 0};
}

Line3D::Line3D(double theta, double phi, unsigned int length)
    : length_(length)
{
    double const a = radians(theta);
    double const b = radians(phi);
    direction_[0] = std::cos(a) * std::sin(b);
    direction_[1] = std::sin(a) * std::sin(b);
    direction_[2] = std::cos(b);
    double const x = std::abs(direction_[0]);
    double const y = std::abs(direction_[1]);
    double const z = std::abs(direction_[2]);
    dominant_ = x > y && x > z ? 0 : y <= z ? 2 : 1;
}

int64 Line3D::component(unsigned int axis, unsigned int i) const
{
    if (axis == dominant_) {
        return static_cast<int64>(i * sign(direction_[axis]));
    }
    return nearest(i * direction_[axis] / std::abs(direction_[dominant_]));
}

OffsetList3D Line3D::offsets(access::Sizes const& sizes) const
{
    unsigned int const size[] = {sizes.columns, sizes.rows, sizes.plans};
    OffsetList3D offsets(clippedLength(length_, size[dominant_]));
    for (unsigned int i = 0; i < offsets.size(); ++i) {
        offsets[i] = clipped(component(0, i), component(1, i), component(2, i), sizes);
    }
    return offsets;
}

AlgoBorderInfluence Line3D::influence() const
{
    unsigned int const last = std::max(length_, 1U) - 1;
    int64 const column = component(0, last);
    int64 const row = component(1, last);
    int64 const plan = component(2, last);
    return {below(column), above(column), below(row), above(row), below(plan), above(plan), 0, 0, 0, 0};
}

TiltedDisk::TiltedDisk(double theta, double phi, unsigned int radius)
    : cosTheta_(std::cos(radians(theta)))
    , sinTheta_(std::sin(radians(theta)))
    , cosPhi_(std::cos(radians(phi)))
    , sinPhi_(std::sin(radians(phi)))
    , radius_(radius)
{
}

TiltedDisk::Point TiltedDisk::at(int64 u, int64 v) const
{
    auto const du = static_cast<double>(u);
    auto const dv = static_cast<double>(v);
    auto const floor = [](double value) { return static_cast<int64>(std::floor(value)); };
    return {floor(cosPhi_ * cosTheta_ * du + 0.5 - dv * sinTheta_),
            floor(cosPhi_ * sinTheta_ * du + 0.5 + dv * cosTheta_), floor(0.5 - du * sinPhi_)};
}

OffsetList3D TiltedDisk::offsets(access::Sizes const& sizes) const
{
    // The spanning vectors are orthonormal, so that (u, v) is as long as what it becomes but for the rounding.
    double const diagonal = std::hypot(sizes.columns, sizes.rows, sizes.plans);
    auto const reach = std::min<int64>(radius_, static_cast<int64>(diagonal) + 2);
    OffsetList3D offsets;
    auto const add = [&](int64 u, int64 v) {
        Point const p = at(u, v);
        offsets.push_back(clipped(p.column, p.row, p.plan, sizes));
    };
    if (reach < radius_) {
        add(-int64{radius_}, 0); // the first one, outside from everywhere
    }
    for (int64 u = -reach; u <= reach; ++u) {
        for (int64 v = -reach; v <= reach; ++v) {
            if (square(u) + square(v) <= square(radius_)) {
                add(u, v);
            }
        }
    }
    return offsets;
}

AlgoBorderInfluence TiltedDisk::influence() const
{
    Point least = at(0, 0);
    Point most = least;
    auto const include = [&](int64 u, int64 v) {
        Point const p = at(u, v);
        least = {std::min(least.column, p.column), std::min(least.row, p.row), std::min(least.plan, p.plan)};
        most = {std::max(most.column, p.column), std::max(most.row, p.row), std::max(most.plan, p.plan)};
    };
    // A component a u + b v is extreme on the circle at u* = r a / |(a, b)|. The integer points below the circle lose
    // less than 2 |(a, b)| on it, so that the best of them is not farther than 2 sqrt(r) from u*.
    int64 const radius = radius_;
    auto const window = static_cast<int64>(2 * std::sqrt(radius_)) + 3;
    double const axes[][2] = {{cosPhi_ * cosTheta_, -sinTheta_}, {cosPhi_ * sinTheta_, cosTheta_}, {-sinPhi_, 0}};
    for (auto const& [a, b] : axes) {
        double const length = std::hypot(a, b);
        auto const extreme = length > 0 ? static_cast<int64>(radius_ * a / length) : 0;
        for (int64 const centre : {-extreme, extreme}) {
            int64 const last = std::min(centre + window, radius);
            for (int64 u = std::max(centre - window, -radius); u <= last; ++u) {
                int64 const v = squareRoot(square(radius) - square(u));
                include(u, v);
                include(u, -v);
            }
        }
    }
    return {below(least.column),
            above(most.column),
            below(least.row),
            above(most.row),
            below(least.plan),
            above(most.plan),
            0,
            0,
            0,
            0};
}

} // namespace mox::morphology
