#include "Morphology/private/elements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "testing/Images.h"
#include "testing/references/morphologyElements.h"

namespace mox::testing {
namespace {

using namespace mox::morphology;

constexpr Sizes large{1000, 1000, 1000, 1, 1};
constexpr double angles[] = {0, 10, 30, 45, 60, 90, 135, 180, 200, 225, 270, 315, -10, -90, 359, 765.5, 1e6};

template <class List>
std::vector<Offset> plain(List const& list)
{
    std::vector<Offset> offsets;
    for (auto const& offset : list) {
        kernel::Offset3D const o = kernel::inSpace(offset);
        offsets.push_back({o.column, o.row, o.plan});
    }
    return offsets;
}

/// The counts of columns, rows and plans before and behind.
std::vector<unsigned int> influenceOf(std::vector<Offset> const& offsets)
{
    std::vector<unsigned int> counts(6);
    for (Offset const& o : offsets) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            unsigned int& count = counts[2 * axis + (o[axis] < 0 ? 0 : 1)];
            count = std::max(count, static_cast<unsigned int>(std::abs(o[axis])));
        }
    }
    return counts;
}

std::vector<unsigned int> plain(AlgoBorderInfluence const& influence)
{
    std::vector<unsigned int> counts;
    for (int direction = COLUMNS_BEGIN; direction <= PLANS_END; ++direction) {
        counts.push_back(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)));
    }
    return counts;
}

TEST(Elements, areThoseOfTheDefinition)
{
    for (int size : {0, 1, 2, 3, 4, 7, 10, 21}) {
        auto const n = static_cast<unsigned int>(size);
        EXPECT_EQ(plain(diskOffsets(n, large)), diskReference(size));
        EXPECT_EQ(plain(ballOffsets(n, large)), ballReference(size));
        for (double const theta : angles) {
            EXPECT_EQ(plain(Line2D(theta, n).offsets(large)), lineReference2D(theta, size)) << theta;
            EXPECT_EQ(plain(Line2D(theta, n).influence()), influenceOf(lineReference2D(theta, size))) << theta;
            for (double const phi : angles) {
                auto const line = lineReference3D(theta, phi, size);
                auto const disk = tiltedDiskReference(theta, phi, size);
                EXPECT_EQ(plain(Line3D(theta, phi, n).offsets(large)), line) << theta << ' ' << phi;
                EXPECT_EQ(plain(Line3D(theta, phi, n).influence()), influenceOf(line)) << theta << ' ' << phi;
                EXPECT_EQ(plain(TiltedDisk(theta, phi, n).offsets(large)), disk) << theta << ' ' << phi;
                EXPECT_EQ(plain(TiltedDisk(theta, phi, n).influence()), influenceOf(disk)) << theta << ' ' << phi;
            }
        }
    }
}

TEST(Elements, haveTheInfluenceOfEveryTiltedDisk)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> angle(-400, 400);
    for (int i = 0; i < 300; ++i) {
        int const radius = static_cast<int>(random() % 120);
        double const theta = angle(random);
        double const phi = angle(random);
        EXPECT_EQ(plain(TiltedDisk(theta, phi, static_cast<unsigned int>(radius)).influence()),
                  influenceOf(tiltedDiskReference(theta, phi, radius)))
            << theta << ' ' << phi << ' ' << radius;
    }
}

TEST(Elements, know37And29Voxels)
{
    EXPECT_EQ(diskOffsets(3, large).size(), 29U);
    EXPECT_EQ(diskOffsets(10, large).size(), 317U);
    EXPECT_EQ(ballOffsets(5, large).size(), 515U);
}

TEST(Elements, runRightForAngle0)
{
    EXPECT_EQ(plain(Line2D(0, 4).offsets(large)), (std::vector<Offset>{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}));
    EXPECT_EQ(plain(Line2D(0, 4).influence()), (std::vector<unsigned int>{0, 3, 0, 0, 0, 0}));
    EXPECT_EQ(plain(Line2D(90, 3).offsets(large)), (std::vector<Offset>{{0, 0, 0}, {0, -1, 0}, {0, -2, 0}}));
}

TEST(Elements, takeTheLargestAngles)
{
    for (double const angle : {std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest(), 1e308}) {
        double const turned = std::fmod(angle, 360);
        EXPECT_EQ(plain(Line2D(angle, 9).offsets(large)), plain(Line2D(turned, 9).offsets(large)));
        EXPECT_EQ(plain(Line3D(angle, angle, 9).offsets(large)), plain(Line3D(turned, turned, 9).offsets(large)));
        EXPECT_EQ(plain(TiltedDisk(angle, angle, 9).offsets(large)),
                  plain(TiltedDisk(turned, turned, 9).offsets(large)));
    }
}

TEST(Elements, runAlongZForAngles0)
{
    EXPECT_EQ(plain(Line3D(0, 0, 3).offsets(large)), (std::vector<Offset>{{0, 0, 0}, {0, 0, 1}, {0, 0, 2}}));
    EXPECT_EQ(plain(Line3D(0, 0, 3).influence()), (std::vector<unsigned int>{0, 0, 0, 0, 0, 2}));
}

TEST(Elements, areReflectedInTheirOrder)
{
    EXPECT_EQ(reflected(OffsetList2D{{0, 0}, {1, -2}}), (OffsetList2D{{0, 0}, {-1, 2}}));
    EXPECT_EQ(reflected(OffsetList3D{{0, 0, 0}, {1, -2, 3}}), (OffsetList3D{{0, 0, 0}, {-1, 2, -3}}));
}

/// Cutting may not change what an element sees on an image of the sizes that it was cut to.
void expectSameResult(std::vector<Offset> const& cut, std::vector<Offset> const& whole, Sizes const& sizes)
{
    std::mt19937 random(2);
    auto const voxels = randomVoxels<float>(random, sizes.numOfVoxels());
    for (Extremum const extremum : {Extremum::minimum, Extremum::maximum}) {
        auto const a = extremumReference(voxels, sizes, listed(cut), extremum);
        auto const b = extremumReference(voxels, sizes, listed(whole), extremum);
        EXPECT_EQ(std::memcmp(a.data(), b.data(), a.size() * sizeof(float)), 0);
    }
}

TEST(Elements, areCutToTheImageWithoutAnEffect)
{
    Sizes const sizes{5, 4, 3, 1, 1};
    for (int size : {2, 3, 4, 5, 6, 9, 20}) {
        auto const n = static_cast<unsigned int>(size);
        expectSameResult(plain(diskOffsets(n, sizes)), diskReference(size), sizes);
        expectSameResult(plain(ballOffsets(n, sizes)), ballReference(size), sizes);
        for (double const theta : {0.0, 33.0, 100.0, 250.0}) {
            expectSameResult(plain(Line2D(theta, n).offsets(sizes)), lineReference2D(theta, size), sizes);
            for (double const phi : {0.0, 40.0, 170.0}) {
                expectSameResult(plain(Line3D(theta, phi, n).offsets(sizes)), lineReference3D(theta, phi, size), sizes);
                expectSameResult(plain(TiltedDisk(theta, phi, n).offsets(sizes)), tiltedDiskReference(theta, phi, size),
                                 sizes);
            }
        }
    }
}

TEST(Elements, ofAnySizeStayBounded)
{
    Sizes const sizes{8, 7, 6, 1, 1};
    constexpr unsigned int most = 4294967295U;
    EXPECT_LE(diskOffsets(most, sizes).size(), 17U * 15U);
    EXPECT_LE(ballOffsets(most, sizes).size(), 17U * 15U * 13U);
    EXPECT_LE(Line2D(10, most).offsets(sizes).size(), 9U);
    EXPECT_LE(Line3D(10, 20, most).offsets(sizes).size(), 9U);
    EXPECT_LE(TiltedDisk(10, 20, most).offsets(sizes).size(), 31U * 31U);
    EXPECT_EQ(plain(Line2D(180, most).influence()), (std::vector<unsigned int>{most - 1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(plain(TiltedDisk(0, 0, most).influence()), (std::vector<unsigned int>{most, most, most, most, 0, 0}));
}

} // namespace
} // namespace mox::testing
