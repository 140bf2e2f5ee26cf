#include "Core/private/access/DirectionalMirrorBorderCondition.h"

#include <Moxelcore/Core/Exception.h>

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "testing/Images.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using access::DirectionalMirrorBorderCondition;
using ::testing::ElementsAre;
using ::testing::EndsWith;

constexpr double degree = std::numbers::pi / 180.0;

/// Each voxel of a plane is its own position, so that a read tells where it came from.
std::unique_ptr<memory::InMemoryImage> positionsImage(unsigned int columns, unsigned int rows)
{
    std::vector<int> voxels(std::size_t{columns} * rows);
    for (std::size_t i = 0; i < voxels.size(); ++i) {
        voxels[i] = static_cast<int>(i);
    }
    return makeImage(Sizes{columns, rows, 1, 1, 1}, voxels);
}

int sourceOf(ImageModel const& image, double angle, int x, int y)
{
    int voxel = -1;
    DirectionalMirrorBorderCondition<int>(angle).readRow(image, &voxel, &voxel + 1, x, y, 0, 0, 0);
    return voxel;
}

int roundedHalfAway(double value)
{
    return static_cast<int>(value < 0 ? value - 0.5 : value + 0.5);
}

/// The mapping written out turn by turn; -1 when it does not end within `turns`.
int mappedByDefinition(double angle, int n, int m, int x, int y, int turns)
{
    double a = std::cos(angle);
    double b = std::sin(angle);
    double const slope = std::tan(angle);
    if (a < 0) {
        a = -a;
        b = -b;
    }
    for (int turn = 0; turn <= turns; ++turn) {
        if (x >= 0 && x < n && y >= 0 && y < m) {
            return y * n + x;
        }
        int const oldX = x;
        int const oldY = y;
        double d = 0;
        if (!(slope > 0)) {
            if (d = x * b - y * a; d > 0) {
                x -= roundedHalfAway(b * 2 * d);
                y += roundedHalfAway(a * 2 * d);
                if (x == oldX && y == oldY) {
                    x -= roundedHalfAway(b * (2 * d + 1));
                    y += roundedHalfAway(a * (2 * d + 1));
                }
                continue;
            }
            if (d = (n - x - 1) * b + (y - m + 1) * a; d > 0) {
                x += roundedHalfAway(b * 2 * d);
                y -= roundedHalfAway(a * 2 * d);
                if (x == oldX && y == oldY) {
                    x += roundedHalfAway(b * (2 * d + 1));
                    y -= roundedHalfAway(a * (2 * d + 1));
                }
                continue;
            }
        } else {
            if (d = (y - m + 1) * a - x * b; d > 0) {
                x += roundedHalfAway(b * 2 * d);
                y -= roundedHalfAway(a * 2 * d);
                if (x == oldX && y == oldY) {
                    x += roundedHalfAway(b * (2 * d + 1));
                    y -= roundedHalfAway(a * (2 * d + 1));
                }
                continue;
            }
            if (d = (x - n + 1) * b - y * a; d > 0) {
                x -= roundedHalfAway(b * 2 * d);
                y += roundedHalfAway(a * 2 * d);
                if (x == oldX && y == oldY) {
                    x -= roundedHalfAway(b * (2 * d + 1));
                    y += roundedHalfAway(a * (2 * d + 1));
                }
                continue;
            }
        }
        if (x < 0) {
            y += roundedHalfAway((-2 * x - 1) * slope);
            x = -1 - x;
        } else if (y < 0) {
            x += roundedHalfAway((-2 * y - 1) / slope);
            y = -1 - y;
        } else if (y >= m) {
            x -= roundedHalfAway((2 * (y - m) + 1) / slope);
            y = 2 * m - 1 - y;
        } else {
            y -= roundedHalfAway((2 * (x - n) + 1) * slope);
            x = 2 * n - 1 - x;
        }
    }
    return -1;
}

TEST(DirectionalMirrorBorderCondition, followsTheDefinitionAndEndsWithinSixteenTurns)
{
    for (auto const& [n, m] : {std::pair(2, 2), std::pair(4, 4), std::pair(5, 3), std::pair(3, 7), std::pair(2, 9)}) {
        auto const image = positionsImage(static_cast<unsigned int>(n), static_cast<unsigned int>(m));
        for (int angle = -170; angle < 180; angle += 7) { // no multiple of 90
            for (int y = -m; y < 2 * m; ++y) {
                for (int x = -n; x < 2 * n; ++x) {
                    int const wanted = mappedByDefinition(angle * degree, n, m, x, y, 16);
                    ASSERT_NE(wanted, -1) << n << " x " << m << " angle " << angle << " at " << x << ' ' << y;
                    ASSERT_EQ(sourceOf(*image, angle * degree, x, y), wanted)
                        << n << " x " << m << " angle " << angle << " at " << x << ' ' << y;
                }
            }
        }
    }
}

TEST(DirectionalMirrorBorderCondition, reflectsAlongRowsAtAngleZero)
{
    auto const image = positionsImage(4, 3);
    EXPECT_EQ(sourceOf(*image, 0, -1, 1), 4);
    EXPECT_EQ(sourceOf(*image, 0, -3, 1), 6);
    EXPECT_EQ(sourceOf(*image, 0, 4, 1), 7);
    EXPECT_EQ(sourceOf(*image, 0, 6, 1), 5);
    EXPECT_EQ(sourceOf(*image, 0, 2, -1), 6); // the line through the first row
    EXPECT_EQ(sourceOf(*image, 0, 2, 3), 6);  // the line through the last
}

TEST(DirectionalMirrorBorderCondition, mirrorsTheOppositeCornerAtFortyFiveDegrees)
{
    EXPECT_EQ(sourceOf(*positionsImage(4, 4), 45 * degree, 4, 4), 15);
}

TEST(DirectionalMirrorBorderCondition, endsForEveryAngleAndSize)
{
    for (unsigned int columns : {1U, 2U, 5U}) {
        for (unsigned int rows : {1U, 2U, 5U}) {
            auto const image = positionsImage(columns, rows);
            for (int angle = -360; angle <= 360; angle += 5) {
                for (int y = -11; y <= 11; ++y) {
                    int const source = sourceOf(*image, angle * degree, y * 3 - 1, y);
                    ASSERT_GE(source, 0);
                    ASSERT_LT(source, static_cast<int>(columns * rows));
                }
            }
        }
    }
}

TEST(DirectionalMirrorBorderCondition, readsTheInsideOfARowAtOnce)
{
    TestImage image;
    fill(image, {4, 2, 1, 1, 1}, std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7});
    int const operations = image.numOfRowOperations();
    int row[6] = {};
    DirectionalMirrorBorderCondition<int>(0).readRow(image, row, row + 6, -1, 1, 0, 0, 0);
    EXPECT_THAT(row, ElementsAre(4, 4, 5, 6, 7, 7));
    EXPECT_EQ(image.numOfRowOperations() - operations, 3);
}

struct Refusal {
    int y, z, t;
    int failing;
    char const* text;
};

TEST(DirectionalMirrorBorderCondition, tellsWhereItFails)
{
    constexpr char const* read = "Error in readRowAt implementation, return value is false";
    Refusal const refusals[] = {
        {0, 0, 1, 0, "Directional mirror border condition is not compatible with time series extrapolation|222"},
        {0, 0, -1, 0, "Directional mirror border condition is not compatible with time series extrapolation|222"},
        {0, 1, 0, 0, "Directional mirror border condition is not compatible with plans extrapolation|225"},
        {0, -1, 1, 0, "Directional mirror border condition is not compatible with time series extrapolation|222"},
        {-1, 0, 0, 1, "|245"},
        {0, 0, 0, 1, "|278"},
        {0, 0, 0, 2, "|300"},
        {0, 0, 0, 3, "|300"},
    };
    for (Refusal const& refusal : refusals) {
        TestImage image;
        fill(image, {2, 2, 1, 1, 1}, std::vector<int>{0, 1, 2, 3});
        image.failAt(refusal.failing, TestImage::Fault::returnsFalse);
        std::string const text = refusal.text;
        auto const bar = text.find('|');
        std::string const message = bar == 0 ? read : text.substr(0, bar);
        int row[4] = {};
        try {
            DirectionalMirrorBorderCondition<int>(0.5).readRow(image, row, row + 4, -1, refusal.y, refusal.z, refusal.t,
                                                               0);
            ADD_FAILURE() << "nothing thrown for " << text;
        } catch (UnexpectedError const& error) {
            EXPECT_EQ(std::string(error.getInfo().c_str()),
                      "#1 Error : " + message + " \n    (at \"DirectionalMirrorBorderCondition.impl\", line " +
                          text.substr(bar + 1) + ") \n");
        }
    }
}

} // namespace

} // namespace mox::testing
