#pragma once

#include <cmath>
#include <vector>

#include "testing/references/morphology.h"

// Elements written from their definitions, without regard to size or speed.

namespace mox::testing {

inline std::vector<Offset> diskReference(int r)
{
    std::vector<Offset> offsets;
    for (int a = -r; a <= r; ++a) {
        for (int b = -r; b <= r; ++b) {
            if (a * a + b * b <= r * r) {
                offsets.push_back({a, b, 0});
            }
        }
    }
    return offsets;
}

inline std::vector<Offset> ballReference(int r)
{
    std::vector<Offset> offsets;
    for (int a = -r; a <= r; ++a) {
        for (int b = -r; b <= r; ++b) {
            for (int c = -r; c <= r; ++c) {
                if (a * a + b * b + c * c <= r * r) {
                    offsets.push_back({a, b, c});
                }
            }
        }
    }
    return offsets;
}

inline int floorOf(double value)
{
    return static_cast<int>(std::floor(value));
}

inline std::vector<Offset> lineReference2D(double angle, int length)
{
    double const t = -angle * 3.141592653589793 / 180;
    double const c = std::cos(t);
    double const s = std::sin(t);
    std::vector<Offset> offsets;
    for (int i = 0; i < length; ++i) {
        if (std::abs(c) <= std::abs(s)) {
            offsets.push_back({floorOf(i * c / std::abs(s) + 0.5), s < 0 ? -i : i, 0});
        } else {
            offsets.push_back({c < 0 ? -i : i, floorOf(i * s / std::abs(c) + 0.5), 0});
        }
    }
    return offsets.empty() ? std::vector<Offset>{{0, 0, 0}} : offsets;
}

inline std::vector<Offset> lineReference3D(double theta, double phi, int length)
{
    double const a = theta * 3.141592653589793 / 180;
    double const b = phi * 3.141592653589793 / 180;
    double const d[] = {std::cos(a) * std::sin(b), std::sin(a) * std::sin(b), std::cos(b)};
    double const x = std::abs(d[0]);
    double const y = std::abs(d[1]);
    double const z = std::abs(d[2]);
    int dominant = 0;
    if (!(x > y && x > z)) {
        dominant = y <= z ? 2 : 1;
    }
    std::vector<Offset> offsets;
    for (int i = 0; i < length; ++i) {
        Offset offset{};
        for (int axis = 0; axis < 3; ++axis) {
            offset[static_cast<std::size_t>(axis)] =
                axis == dominant ? (d[axis] < 0 ? -i : i) : floorOf(i * d[axis] / std::abs(d[dominant]) + 0.5);
        }
        offsets.push_back(offset);
    }
    return offsets.empty() ? std::vector<Offset>{{0, 0, 0}} : offsets;
}

inline std::vector<Offset> tiltedDiskReference(double theta, double phi, int r)
{
    double const a = theta * 3.141592653589793 / 180;
    double const b = phi * 3.141592653589793 / 180;
    std::vector<Offset> offsets;
    for (int u = -r; u <= r; ++u) {
        for (int v = -r; v <= r; ++v) {
            if (u * u + v * v <= r * r) {
                offsets.push_back({floorOf(std::cos(b) * std::cos(a) * u + 0.5 - v * std::sin(a)),
                                   floorOf(std::cos(b) * std::sin(a) * u + 0.5 + v * std::cos(a)),
                                   floorOf(0.5 - u * std::sin(b))});
            }
        }
    }
    return offsets;
}

} // namespace mox::testing
