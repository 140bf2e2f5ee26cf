#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <type_traits>
#include <vector>

#include "Registration/private/fits.h"

// What the tests of registration share: transformations of every class, and points.

namespace mox::registration::testing {

using namespace geometry;
using Point2D = math::Vector2<double>;
using Point3D = math::Vector3<double>;

template <class T>
using PointOf = std::conditional_t<std::is_base_of_v<Transformation2D, T>, Point2D, Point3D>;

template <class Point>
struct Pairs {
    std::vector<Point> data;
    std::vector<Point> model;

    PointPairs<Point> view() const { return {data.data(), model.data(), data.size()}; }
};

/// Something definite of each class, near to the identity, that maps points within 100 of `centre`.
template <class T>
T knownTransformation(double centre)
{
    T transformation;
    if constexpr (std::is_same_v<T, RigidTransformation3D>) {
        transformation.setRotations(0.3, -0.7, 2.1);
        transformation.setTranslation({10, -20, 30});
    } else if constexpr (std::is_same_v<T, RigidTransformation2D>) {
        transformation = RigidTransformation2D(-2.2, {17, -40});
    } else if constexpr (requires { T::numOfTerms; }) {
        double const size = 100.0 + centre;
        for (unsigned int i = 0; i < transformation.getNumOfParameter(); ++i) {
            unsigned int const term = i % T::numOfTerms;
            double const degree = term == 0 ? 0 : term < 3 ? 1 : term < 6 ? 2 : 3;
            transformation.setParam(i, transformation.getParam(i) + 0.1 * (1 + i % 4) * std::pow(size, -degree));
        }
    } else {
        for (unsigned int i = 0; i < transformation.getNumOfParameter(); ++i) {
            bool const moves = i < PointOf<T>().dim();
            bool const projects = i > 5 && std::is_same_v<T, ProjectiveTransformation2D>;
            double const size = moves ? 20.0 : projects ? 0.1 / (100.0 + centre) : 0.1;
            transformation.setParam(i, transformation.getParam(i) + size * (1 + i % 3) * (i % 2 == 0 ? 1 : -1));
        }
    }
    return transformation;
}

template <class Point>
Point randomPoint(std::mt19937& random, double centre)
{
    std::uniform_real_distribution<double> around(centre - 100.0, centre + 100.0);
    Point point;
    for (unsigned int i = 0; i < point.dim(); ++i) {
        point[i] = around(random);
    }
    return point;
}

template <class T>
Pairs<PointOf<T>> exactPairs(T const& transformation, std::size_t count, double centre, unsigned int seed = 1)
{
    std::mt19937 random(seed);
    Pairs<PointOf<T>> pairs;
    for (std::size_t i = 0; i < count; ++i) {
        pairs.data.push_back(randomPoint<PointOf<T>>(random, centre));
    }
    pairs.model = pairs.data;
    transformation.map(pairs.model.data(), count);
    return pairs;
}

template <class Point>
void addNoise(std::vector<Point>& points, double deviation, unsigned int seed)
{
    std::mt19937 random(seed);
    std::normal_distribution<double> normal(0.0, deviation);
    for (Point& point : points) {
        for (unsigned int i = 0; i < point.dim(); ++i) {
            point[i] += normal(random);
        }
    }
}

/// The largest distance between the images of points under two transformations.
template <class Point>
double largestDifference(Transformation<Point> const& a, Transformation<Point> const& b, std::vector<Point> points)
{
    std::vector<Point> others = points;
    a.map(points.data(), points.size());
    b.map(others.data(), others.size());
    double largest = 0.0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        largest = std::max(largest, (points[i] - others[i]).length());
    }
    return largest;
}

} // namespace mox::registration::testing
