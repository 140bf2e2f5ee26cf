#include <gtest/gtest.h>

#include <limits>

#include "Registration/test/KnownTransformations.h"

namespace mox::registration {

namespace {

using namespace testing;

template <class T>
class Fit : public ::testing::Test {
};

using AllTransformations =
    ::testing::Types<Translation2D, RigidTransformation2D, AffineTransformation2D, ProjectiveTransformation2D,
                     PolynomialOrder2Transformation2D, PolynomialOrder3Transformation2D, Translation3D,
                     RigidTransformation3D, AffineTransformation3D>;
TYPED_TEST_SUITE(Fit, AllTransformations);

TYPED_TEST(Fit, findsATransformationFromExactPairs)
{
    auto const known = knownTransformation<TypeParam>(0);
    for (std::size_t const count : {minimumOfPoints<TypeParam>, minimumOfPoints<TypeParam> + 1, std::size_t{50}}) {
        for (unsigned int seed = 1; seed <= 10; ++seed) {
            auto const pairs = exactPairs(known, count, 0, seed);
            auto const found = fit<TypeParam>(pairs.view());
            ASSERT_TRUE(found) << count;
            EXPECT_LT(largestDifference(known, *found, pairs.data), 1e-9) << count << ' ' << seed;
        }
    }
    auto const found = fit<TypeParam>(exactPairs(known, 50, 0).view());
    for (unsigned int i = 0; i < known.getNumOfParameter(); ++i) {
        EXPECT_NEAR(found->getParam(i), known.getParam(i), 1e-9) << i;
    }
}

/// The parameters stand for the origin, far away: their own rounding, in units of 1e6^order, is all that is lost.
TYPED_TEST(Fit, findsATransformationFarFromTheOrigin)
{
    auto const known = knownTransformation<TypeParam>(1e6);
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        auto const pairs = exactPairs(known, 60, 1e6, seed);
        auto const found = fit<TypeParam>(pairs.view());
        ASSERT_TRUE(found);
        EXPECT_LT(largestDifference(known, *found, pairs.data), 1e-9) << seed;
    }
}

TYPED_TEST(Fit, isAsGoodAsThePairs)
{
    auto const known = knownTransformation<TypeParam>(0);
    auto pairs = exactPairs(known, 500, 0);
    addNoise(pairs.model, 0.01, 7);
    auto const found = fit<TypeParam>(pairs.view());
    ASSERT_TRUE(found);
    EXPECT_LT(largestDifference(known, *found, exactPairs(known, 100, 0, 2).data), 0.01);
}

/// No small change of a parameter makes the sum of squares smaller. The projective fit minimises another distance.
TYPED_TEST(Fit, hasTheLeastSquares)
{
    if (std::is_same_v<TypeParam, ProjectiveTransformation2D>) {
        return;
    }
    auto pairs = exactPairs(knownTransformation<TypeParam>(0), 30, 0);
    addNoise(pairs.model, 1.0, 8);
    auto const sumOfSquares = [&](TypeParam const& transformation) {
        auto images = pairs.data;
        transformation.map(images.data(), images.size());
        double sum = 0;
        for (std::size_t i = 0; i < images.size(); ++i) {
            sum += (images[i] - pairs.model[i]).squaredLength();
        }
        return sum;
    };
    auto const found = fit<TypeParam>(pairs.view());
    ASSERT_TRUE(found);
    double const least = sumOfSquares(*found);
    bool const isRigid3D = std::is_same_v<TypeParam, RigidTransformation3D>;
    for (unsigned int i = 0; i < (isRigid3D ? 6U : found->getNumOfParameter()); ++i) {
        for (double const step : {-1e-5, 1e-5}) {
            TypeParam changed = *found;
            changed.setParam(i, changed.getParam(i) + step);
            EXPECT_GT(sumOfSquares(changed), least) << i << ' ' << step;
        }
    }
}

TYPED_TEST(Fit, needsPointsThatDiffer)
{
    auto const known = knownTransformation<TypeParam>(0);
    for (double const centre : {0.0, 1e6}) {
        auto pairs = exactPairs(known, 40, centre);
        std::fill(pairs.data.begin(), pairs.data.end(), pairs.data.front());
        std::fill(pairs.model.begin(), pairs.model.end(), pairs.model.front());
        EXPECT_EQ(fit<TypeParam>(pairs.view()).has_value(), minimumOfPoints<TypeParam> == 1) << centre;
    }
}

TYPED_TEST(Fit, tellsWhetherPointsOnALineAreEnough)
{
    using Point = PointOf<TypeParam>;
    std::vector<Point> points(40);
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (unsigned int d = 0; d < Point().dim(); ++d) {
            points[i][d] = 5.0 + static_cast<double>(i) * (1.5 + d);
        }
    }
    PointPairs<Point> const pairs{points.data(), points.data(), points.size()};
    EXPECT_EQ(fit<TypeParam>(pairs).has_value(), minimumOfPoints<TypeParam> < 3);
}

TYPED_TEST(Fit, refusesWhatIsNotFinite)
{
    using Limits = std::numeric_limits<double>;
    for (double const coordinate : {Limits::quiet_NaN(), Limits::infinity(), 1e300}) {
        auto pairs = exactPairs(knownTransformation<TypeParam>(0), 20, 0);
        pairs.model[3][1] = coordinate;
        EXPECT_FALSE(fit<TypeParam>(pairs.view()));
        std::swap(pairs.model, pairs.data);
        EXPECT_FALSE(fit<TypeParam>(pairs.view()));
    }
}

TEST(FitOfRigidTransformation2D, doesNotMirror)
{
    Pairs<Point2D> pairs;
    pairs.data = {{0, 0}, {4, 0}, {4, 1}, {0, 1}};
    pairs.model = {{0, 0}, {4, 0}, {4, -1}, {0, -1}};
    auto const found = fit<RigidTransformation2D>(pairs.view());
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->getParam(2), 0.0, 1e-15);
    EXPECT_NEAR(found->getParam(2 + 3), 1.0, 1e-15);
}

TEST(FitOfRigidTransformation2D, isNotDeterminedByAMirroredSquare)
{
    Pairs<Point2D> pairs;
    pairs.data = {{1, 1}, {-1, 1}, {-1, -1}, {1, -1}};
    pairs.model = {{1, -1}, {-1, -1}, {-1, 1}, {1, 1}};
    EXPECT_FALSE(fit<RigidTransformation2D>(pairs.view()));
}

TEST(FitOfRigidTransformation3D, doesNotMirror)
{
    auto pairs = exactPairs(RigidTransformation3D(), 30, 0);
    for (Point3D& point : pairs.model) {
        point[2] *= -0.01;
    }
    auto const found = fit<RigidTransformation3D>(pairs.view());
    ASSERT_TRUE(found);
    auto const r = found->getRotationMatrix();
    double const determinant = r(0, 0) * (r(1, 1) * r(2, 2) - r(1, 2) * r(2, 1)) -
                               r(0, 1) * (r(1, 0) * r(2, 2) - r(1, 2) * r(2, 0)) +
                               r(0, 2) * (r(1, 0) * r(2, 1) - r(1, 1) * r(2, 0));
    EXPECT_NEAR(determinant, 1.0, 1e-14);
}

TEST(FitOfRigidTransformation3D, takesPointsOfAPlane)
{
    RigidTransformation3D const known = knownTransformation<RigidTransformation3D>(0);
    Pairs<Point3D> pairs;
    pairs.data = {{0, 0, 0}, {10, 0, 0}, {0, 20, 0}};
    pairs.model = pairs.data;
    known.map(pairs.model.data(), pairs.model.size());
    auto const found = fit<RigidTransformation3D>(pairs.view());
    ASSERT_TRUE(found);
    EXPECT_LT(largestDifference(known, *found, exactPairs(known, 20, 0).data), 1e-12);
}

TEST(FitOfProjectiveTransformation2D, refusesThreeOfFourPointsOnALine)
{
    Pairs<Point2D> pairs;
    pairs.data = {{0, 0}, {1, 1}, {2, 2}, {5, 0}};
    pairs.model = {{0, 0}, {1, 2}, {2, 1}, {5, 0}};
    EXPECT_FALSE(fit<ProjectiveTransformation2D>(pairs.view()));
}

TEST(FitOfProjectiveTransformation2D, refusesAnOriginAtInfinity)
{
    Pairs<Point2D> pairs; // (1 / x, y / x)
    pairs.data = {{1, 0}, {2, 0}, {1, 1}, {2, 1}, {4, 4}};
    for (Point2D const& point : pairs.data) {
        pairs.model.emplace_back(1.0 / point[0], point[1] / point[0]);
    }
    EXPECT_FALSE(fit<ProjectiveTransformation2D>(pairs.view()));
}

} // namespace

} // namespace mox::registration
