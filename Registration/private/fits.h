#pragma once

#include <Moxelcore/Geometry/AffineTransformation2D.h>
#include <Moxelcore/Geometry/AffineTransformation3D.h>
#include <Moxelcore/Geometry/PolynomialOrder2Transformation2D.h>
#include <Moxelcore/Geometry/PolynomialOrder3Transformation2D.h>
#include <Moxelcore/Geometry/ProjectiveTransformation2D.h>
#include <Moxelcore/Geometry/RigidTransformation2D.h>
#include <Moxelcore/Geometry/RigidTransformation3D.h>
#include <Moxelcore/Geometry/Translation2D.h>
#include <Moxelcore/Geometry/Translation3D.h>

#include <optional>

#include "Registration/private/PointPairs.h"

namespace mox::registration {

using PointPairs2D = PointPairs<math::Vector2<double>>;
using PointPairs3D = PointPairs<math::Vector3<double>>;

/// The number of points that determine a transformation of the class.
template <class T>
constexpr std::size_t minimumOfPoints = 0;
// clang-format off
template <> inline constexpr std::size_t minimumOfPoints<geometry::Translation2D> = 1;
template <> inline constexpr std::size_t minimumOfPoints<geometry::RigidTransformation2D> = 2;
template <> inline constexpr std::size_t minimumOfPoints<geometry::AffineTransformation2D> = 3;
template <> inline constexpr std::size_t minimumOfPoints<geometry::ProjectiveTransformation2D> = 4;
template <> inline constexpr std::size_t minimumOfPoints<geometry::PolynomialOrder2Transformation2D> = 6;
template <> inline constexpr std::size_t minimumOfPoints<geometry::PolynomialOrder3Transformation2D> = 10;
template <> inline constexpr std::size_t minimumOfPoints<geometry::Translation3D> = 1;
template <> inline constexpr std::size_t minimumOfPoints<geometry::RigidTransformation3D> = 3;
template <> inline constexpr std::size_t minimumOfPoints<geometry::AffineTransformation3D> = 4;
// clang-format on

/// The least-squares fit from data to model. `pairs` has the minimum of points or more. No fit where the points do not
/// determine one, a system with a ratio of smallest to largest singular value of 1e-10 or less, or are not finite.
///
/// Translation: difference of the means. Rigid: singular value decomposition of the cross covariance (Arun, Huang,
/// Blostein 1987) with determinant +1 (Umeyama 1991), no scale. Affine and polynomial: linear least squares on points
/// centred and scaled to a mean distance of 1. Projective: direct linear transformation on such points (Hartley 1997).
template <class T, class Point>
std::optional<T> fit(PointPairs<Point> const& pairs);

template <>
std::optional<geometry::Translation2D> fit(PointPairs2D const& pairs);
template <>
std::optional<geometry::RigidTransformation2D> fit(PointPairs2D const& pairs);
template <>
std::optional<geometry::AffineTransformation2D> fit(PointPairs2D const& pairs);
template <>
std::optional<geometry::ProjectiveTransformation2D> fit(PointPairs2D const& pairs);
template <>
std::optional<geometry::PolynomialOrder2Transformation2D> fit(PointPairs2D const& pairs);
template <>
std::optional<geometry::PolynomialOrder3Transformation2D> fit(PointPairs2D const& pairs);
template <>
std::optional<geometry::Translation3D> fit(PointPairs3D const& pairs);
template <>
std::optional<geometry::RigidTransformation3D> fit(PointPairs3D const& pairs);
template <>
std::optional<geometry::AffineTransformation3D> fit(PointPairs3D const& pairs);

} // namespace mox::registration
