#include <gtest/gtest.h>

#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Geometry/AffineTransformation2D.h>
#include <Moxelcore/Geometry/AffineTransformation3D.h>
#include <Moxelcore/Geometry/PolynomialOrder2Transformation2D.h>
#include <Moxelcore/Geometry/PolynomialOrder3Transformation2D.h>
#include <Moxelcore/Geometry/ProjectiveTransformation2D.h>
#include <Moxelcore/Geometry/RigidTransformation2D.h>
#include <Moxelcore/Geometry/RigidTransformation3D.h>
#include <Moxelcore/Geometry/TransformationHandler.h>
#include <Moxelcore/Geometry/Translation2D.h>
#include <Moxelcore/Geometry/Translation3D.h>

#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include "testing/lineless.h"

namespace mox::geometry {

namespace {

using Point2D = math::Vector2<double>;
using Point3D = math::Vector3<double>;
using std::numbers::pi;

template <class T>
class AnyTransformation : public ::testing::Test {
};

using AllTransformations =
    ::testing::Types<Translation2D, RigidTransformation2D, AffineTransformation2D, ProjectiveTransformation2D,
                     PolynomialOrder2Transformation2D, PolynomialOrder3Transformation2D, Translation3D,
                     RigidTransformation3D, AffineTransformation3D>;
TYPED_TEST_SUITE(AnyTransformation, AllTransformations);

template <class T>
constexpr bool isIn2D = std::is_base_of_v<Transformation2D, T>;
template <class T>
using PointOf = std::conditional_t<isIn2D<T>, Point2D, Point3D>;

template <class Point>
std::vector<Point> somePoints()
{
    std::vector<Point> points(7);
    double value = -3.7;
    for (Point& point : points) {
        for (unsigned int i = 0; i < point.dim(); ++i) {
            point[i] = value;
            value = value * -1.3 + 0.9;
        }
    }
    return points;
}

/// How many indices the flat list serves.
template <class T>
constexpr unsigned int numOfEntries = 0;
template <>
constexpr unsigned int numOfEntries<PolynomialOrder2Transformation2D> = 12;
template <>
constexpr unsigned int numOfEntries<PolynomialOrder3Transformation2D> = 20;
template <class T>
    requires std::is_base_of_v<MatrixTransformation<2>, T>
constexpr unsigned int numOfEntries<T> = 8;
template <class T>
    requires std::is_base_of_v<MatrixTransformation<3>, T>
constexpr unsigned int numOfEntries<T> = 12;

TYPED_TEST(AnyTransformation, isTheIdentityAtFirst)
{
    TypeParam const identity;
    for (auto const& point : somePoints<PointOf<TypeParam>>()) {
        auto image = point;
        identity.map(image);
        EXPECT_TRUE(image == point);
    }
}

TYPED_TEST(AnyTransformation, mapsArraysPointByPoint)
{
    TypeParam transformation;
    for (unsigned int i = 0; i < transformation.getNumOfParameter(); ++i) {
        transformation.setParam(i, transformation.getParam(i) + 0.01 * (i + 1));
    }
    auto const points = somePoints<PointOf<TypeParam>>();
    auto images = points;
    transformation.map(images.data(), images.size() - 1);
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        auto image = points[i];
        transformation.map(image);
        EXPECT_TRUE(image == images[i]) << i;
        EXPECT_FALSE(image == points[i]) << i;
    }
    EXPECT_TRUE(images.back() == points.back());
}

TYPED_TEST(AnyTransformation, keepsWhatIsSet)
{
    for (unsigned int i = 0; i < numOfEntries<TypeParam>; ++i) {
        TypeParam transformation;
        transformation.setParam(i, 0.125 * (i + 1));
        EXPECT_NEAR(transformation.getParam(i), 0.125 * (i + 1), 1e-15) << i;
    }
}

TYPED_TEST(AnyTransformation, refusesIndicesBeyondTheLast)
{
    TypeParam transformation;
    EXPECT_THROW(transformation.getParam(numOfEntries<TypeParam>), BadIndex);
    EXPECT_THROW(transformation.setParam(numOfEntries<TypeParam>, 0.0), BadIndex);
    try {
        transformation.getParam(99);
        FAIL() << "nothing thrown";
    } catch (BadIndex const& error) {
        EXPECT_EQ(testing::lineless(error.getInfo())
                      .find("#1 Error : There is no parameter at index 99, the number of "
                            "entries is " +
                            std::to_string(numOfEntries<TypeParam>)),
                  0U);
    }
}

TEST(Transformations, haveTheirNumbersOfParameters)
{
    EXPECT_EQ(Translation2D().getNumOfParameter(), 2U);
    EXPECT_EQ(RigidTransformation2D().getNumOfParameter(), 3U);
    EXPECT_EQ(AffineTransformation2D().getNumOfParameter(), 6U);
    EXPECT_EQ(ProjectiveTransformation2D().getNumOfParameter(), 8U);
    EXPECT_EQ(PolynomialOrder2Transformation2D().getNumOfParameter(), 12U);
    EXPECT_EQ(PolynomialOrder3Transformation2D().getNumOfParameter(), 20U);
    EXPECT_EQ(Translation3D().getNumOfParameter(), 3U);
    EXPECT_EQ(RigidTransformation3D().getNumOfParameter(), 5U);
    EXPECT_EQ(AffineTransformation3D().getNumOfParameter(), 12U);
}

TEST(ProjectiveTransformation2D, mapsByTheMatrixOfItsParameters)
{
    ProjectiveTransformation2D transformation;
    double const parameters[] = {1, 2, 3, 4, 5, 6, 0.5, 0.25};
    for (unsigned int i = 0; i < 8; ++i) {
        transformation.setParam(i, parameters[i]);
    }
    Point2D point(2, 4); // u = 3 * 2 + 4 * 4 + 1, v = 5 * 2 + 6 * 4 + 2, w = 0.5 * 2 + 0.25 * 4 + 1
    transformation.map(point);
    EXPECT_TRUE(point == Point2D(23.0 / 3.0, 12.0));
    EXPECT_TRUE(transformation.getTranslation() == Point2D(1, 2));
    EXPECT_TRUE(transformation.getRotationMatrix() == math::Matrix2<double>(3, 4, 5, 6));
    EXPECT_TRUE(transformation.getProjectionVector() == Point2D(0.5, 0.25));
}

TEST(ProjectiveTransformation2D, refusesPointsWithoutImageOnly)
{
    ProjectiveTransformation2D transformation;
    transformation.setParam(6, -0.5);
    transformation.setTranslation({10, 20});
    std::vector<Point2D> points = {{0, 0}, {1, 1}, {2, 7}, {4, 4}}; // w = 1 - x / 2 is 0 for the third
    try {
        transformation.map(points.data(), points.size());
        FAIL() << "nothing thrown";
    } catch (RuntimeError const& error) {
        EXPECT_EQ(testing::lineless(error.getInfo()),
                  "#1 Error : bad precision. \n    (at \"ProjectiveTransformation2DPrivate\", line N) \n");
    }
    EXPECT_TRUE(points[0] == Point2D(10, 20));
    EXPECT_TRUE(points[1] == Point2D(22, 42));
    EXPECT_TRUE(points[2] == Point2D(2, 7));
    EXPECT_TRUE(points[3] == Point2D(4, 4));
    EXPECT_NO_THROW(transformation.map(points[3]));
    EXPECT_TRUE(points[3] == Point2D(-14, -24));
}

TEST(ProjectiveTransformation2D, refusesBelowALimitStrictly)
{
    ProjectiveTransformation2D transformation;
    transformation.setParam(6, 1.0);
    auto const maps = [&](double w) {
        Point2D point(w - 1.0, 0.0);
        if (point[0] + 1.0 != w) {
            ADD_FAILURE() << "the test's w is rounded";
        }
        try {
            transformation.map(point);
        } catch (RuntimeError const&) {
            return false;
        }
        return true;
    };
    double const step = std::numeric_limits<double>::epsilon();
    double const above = std::ceil(1e-8 / step) * step;
    EXPECT_TRUE(maps(above));
    EXPECT_FALSE(maps(above - step));
    EXPECT_TRUE(maps(-above));
    EXPECT_FALSE(maps(-(above - step)));
}

TEST(ProjectiveTransformation2D, isRefusedByEveryMatrixClass)
{
    RigidTransformation2D transformation;
    transformation.setParam(7, 1.0);
    Point2D point(3, -1);
    EXPECT_THROW(transformation.map(point), RuntimeError);
    EXPECT_TRUE(point == Point2D(3, -1));
}

TEST(Translation2D, moves)
{
    Translation2D transformation(Point2D(3, -4));
    Point2D point(10, 20);
    transformation.map(point);
    EXPECT_TRUE(point == Point2D(13, 16));
    EXPECT_EQ(transformation.getParam(0), 3);
    EXPECT_EQ(transformation.getParam(1), -4);
    transformation.setTranslation({5, 6});
    EXPECT_TRUE(transformation.getTranslation() == Point2D(5, 6));
}

TEST(RigidTransformation2D, keepsItsAngle)
{
    for (double const angle : {-3.0, -pi / 2, -0.3, 0.0, 1e-9, 0.7, pi / 2, 2.0, 3.1, pi}) {
        RigidTransformation2D const transformation(angle, Point2D(5, 6));
        EXPECT_NEAR(transformation.getParam(2), angle, 1e-15);
        EXPECT_EQ(transformation.getRotation(), transformation.getParam(2));
    }
}

TEST(RigidTransformation2D, turnsAboutTheOriginThenMoves)
{
    RigidTransformation2D transformation;
    transformation.setParam(0, 100);
    transformation.setParam(1, 200);
    transformation.setParam(2, pi / 6);
    Point2D point(2, 0);
    transformation.map(point);
    EXPECT_NEAR(point[0], 100 + std::sqrt(3.0), 1e-13);
    EXPECT_NEAR(point[1], 201, 1e-13);
}

TEST(RigidTransformation2D, servesTheElementsOfTheMatrixBeyondTheAngle)
{
    RigidTransformation2D transformation;
    transformation.setParam(2, 0.4);
    EXPECT_EQ(transformation.getParam(3), -std::sin(0.4));
    EXPECT_EQ(transformation.getParam(4), std::sin(0.4));
    EXPECT_EQ(transformation.getParam(5), std::cos(0.4));
    transformation.setParam(4, 0.0);
    EXPECT_EQ(transformation.getParam(2), 0.0);
    EXPECT_EQ(transformation.getParam(3), -std::sin(0.4));
}

TEST(AffineTransformation2D, givesAndTakesItsParts)
{
    AffineTransformation2D transformation;
    transformation.setRotationMatrix({1, 2, 3, 4});
    transformation.setTranslation({5, 6});
    double const wanted[] = {5, 6, 1, 2, 3, 4, 0, 0};
    for (unsigned int i = 0; i < 8; ++i) {
        EXPECT_EQ(transformation.getParam(i), wanted[i]) << i;
    }
    Point2D point(10, 100);
    transformation.map(point);
    EXPECT_TRUE(point == Point2D(215, 436));
}

TEST(AffineTransformation3D, mapsByTheMatrixOfItsParameters)
{
    AffineTransformation3D transformation;
    for (unsigned int i = 0; i < 12; ++i) {
        transformation.setParam(i, i + 1.0);
    }
    Point3D point(100, 10, 1);
    transformation.map(point);
    EXPECT_TRUE(point == Point3D(400 + 50 + 6 + 1, 700 + 80 + 9 + 2, 1000 + 110 + 12 + 3));
    EXPECT_TRUE(transformation.getTranslation() == Point3D(1, 2, 3));
    EXPECT_TRUE(transformation.getRotationMatrix() == math::Matrix3<double>(4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST(Translation3D, moves)
{
    Translation3D const transformation(Point3D(1, 2, 3));
    Point3D point(10, 20, 30);
    transformation.map(point);
    EXPECT_TRUE(point == Point3D(11, 22, 33));
}

TEST(RigidTransformation3D, turnsAboutTheAxesOneAfterTheOther)
{
    auto const image = [](double a, double b, double c, Point3D point) {
        RigidTransformation3D transformation;
        transformation.setRotations(a, b, c);
        transformation.map(point);
        return point;
    };
    auto const expectNear = [](Point3D const& a, Point3D const& b) { EXPECT_LT((a - b).length(), 1e-15); };
    expectNear(image(pi / 2, 0, 0, {0, 1, 0}), {0, 0, 1});
    expectNear(image(0, pi / 2, 0, {0, 0, 1}), {1, 0, 0});
    expectNear(image(0, 0, pi / 2, {1, 0, 0}), {0, 1, 0});
    expectNear(image(pi / 2, 0, pi / 2, {0, 1, 0}), {0, 0, 1});
    expectNear(image(pi / 2, pi / 2, 0, {0, 1, 0}), {1, 0, 0});
    expectNear(image(pi / 2, pi / 2, pi / 2, {0, 1, 0}), {0, 1, 0});
}

TEST(RigidTransformation3D, keepsItsAngles)
{
    double const angles[] = {-2.5, -0.4, 0.9, 3.0};
    for (double const a : angles) {
        for (double const b : {-1.5, 0.0, 0.8}) {
            for (double const c : angles) {
                RigidTransformation3D transformation;
                transformation.setParam(3, a);
                transformation.setParam(4, b);
                transformation.setParam(5, c);
                EXPECT_NEAR(transformation.getParam(3), a, 1e-14);
                EXPECT_NEAR(transformation.getParam(4), b, 1e-14);
                EXPECT_NEAR(transformation.getParam(5), c, 1e-14);
                RigidTransformation3D same;
                same.setRotations(a, b, c);
                for (unsigned int i = 6; i < 12; ++i) {
                    EXPECT_NEAR(same.getParam(i), transformation.getParam(i), 1e-14) << i;
                }
            }
        }
    }
}

TEST(RigidTransformation3D, leavesTheThirdAngleOutWhereItIsNotDetermined)
{
    for (double const b : {pi / 2, -pi / 2}) {
        RigidTransformation3D transformation;
        transformation.setRotations(0.5, b, 0.2);
        EXPECT_EQ(transformation.getParam(5), 0.0);
        EXPECT_NEAR(transformation.getParam(4), b, 1e-15);
        EXPECT_NEAR(transformation.getParam(3), b > 0 ? 0.3 : 0.7, 1e-15);
    }
}

TEST(RigidTransformation3D, takesItsMatrixAsItIs)
{
    math::Matrix3<double> const matrix(1, 2, 3, 4, 5, 6, 7, 8, 9);
    RigidTransformation3D transformation;
    transformation.setRotationMatrix(matrix);
    EXPECT_TRUE(transformation.getRotationMatrix() == matrix);
}

TEST(PolynomialTransformations, mapByTheirTerms)
{
    double coefficients[20];
    for (int i = 0; i < 20; ++i) {
        coefficients[i] = i + 1;
    }
    double const x = 2;
    double const y = 3;
    double const terms[] = {1, x, y, x * x, y * y, x * y, x * x * x, y * y * y, x * x * y, x * y * y};
    auto const sum = [&](int first, int numOfTerms) {
        double result = 0;
        for (int i = 0; i < numOfTerms; ++i) {
            result += coefficients[first + i] * terms[i];
        }
        return result;
    };
    Point2D point(x, y);
    PolynomialOrder2Transformation2D(coefficients).map(point);
    EXPECT_TRUE(point == Point2D(sum(0, 6), sum(6, 6)));
    point.setValue(x, y);
    PolynomialOrder3Transformation2D(coefficients).map(point);
    EXPECT_TRUE(point == Point2D(sum(0, 10), sum(10, 10)));
}

TEST(PolynomialTransformations, listTheirCoefficientsInFlatOrder)
{
    double coefficients[20];
    for (int i = 0; i < 20; ++i) {
        coefficients[i] = i + 1;
    }
    PolynomialOrder2Transformation2D const order2(coefficients);
    PolynomialOrder3Transformation2D const order3(coefficients);
    for (unsigned int i = 0; i < 20; ++i) {
        EXPECT_EQ(order3.getParam(i), coefficients[i]);
        if (i < 12) {
            EXPECT_EQ(order2.getParam(i), coefficients[i]);
        }
    }
}

/// Counts the objects there are.
class CountedTranslation final : public MatrixTransformation<2> {
public:
    explicit CountedTranslation(int& count)
        : MatrixTransformation(2)
        , count_(count)
    {
        ++count_;
    }
    CountedTranslation(CountedTranslation const&) = delete;
    ~CountedTranslation() override { --count_; }

private:
    int& count_;
};

TEST(TransformationHandler, ownsOne)
{
    int count = 0;
    {
        Transformation2DHandler handler;
        EXPECT_EQ(handler.get(), nullptr);
        handler.set(new CountedTranslation(count));
        auto* const second = new CountedTranslation(count);
        handler.set(second);
        EXPECT_EQ(count, 1);
        EXPECT_EQ(handler.get(), second);
        handler.set(second);
        EXPECT_EQ(count, 1);
        handler.reset();
        EXPECT_EQ(count, 0);
        EXPECT_EQ(handler.get(), nullptr);
        handler.reset();
        handler.set(new CountedTranslation(count));
    }
    EXPECT_EQ(count, 0);
}

TEST(TransformationHandler, givesUpItsOwnership)
{
    int count = 0;
    std::unique_ptr<Transformation2D> mine;
    {
        Transformation2DHandler handler;
        handler.set(new CountedTranslation(count));
        mine.reset(handler.takeOwnership());
        EXPECT_EQ(handler.get(), nullptr);
    }
    EXPECT_EQ(count, 1);
    mine.reset();
    EXPECT_EQ(count, 0);
    static_assert(!std::is_copy_constructible_v<Transformation2DHandler>);
    static_assert(!std::is_copy_assignable_v<Transformation3DHandler>);
}

} // namespace

} // namespace mox::geometry
