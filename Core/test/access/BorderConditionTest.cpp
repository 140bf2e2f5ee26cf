#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <optional>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/ContinueBorderCondition.h"
#include "Core/private/access/DirectionalMirrorBorderCondition.h"
#include "Core/private/access/FixedBorderCondition.h"
#include "Core/private/access/MirrorBorderCondition.h"
#include "Core/private/access/Position.h"
#include "testing/Images.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using access::BorderCondition;
using access::Position;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;

template <class T>
std::vector<T> readRow(BorderCondition<T> const& border, ImageModel const& image, Position const& p, int length)
{
    std::vector<T> row(static_cast<std::size_t>(length), T(99));
    border.readRow(image, row.data(), row.data() + length, p.x, p.y, p.z, p.t, p.s);
    return row;
}

std::string textOf(std::function<void()> const& action)
{
    try {
        action();
    } catch (UnexpectedError const& error) {
        return error.what().c_str();
    }
    return "nothing thrown";
}

/// The voxel that a position reads, by the definition of the condition, or none.
using Reference = std::function<std::optional<Position>(Position, Sizes const&)>;

int clamped(int c, unsigned int size)
{
    return c < 0 ? 0 : c >= static_cast<int>(size) ? static_cast<int>(size) - 1 : c;
}

int mirrored(int c, unsigned int size)
{
    int const m = static_cast<int>(size);
    while (c < 0 || c >= m) {
        c = c < 0 ? -1 - c : 2 * m - 1 - c;
    }
    return c;
}

std::optional<Position> fixedReference(Position p, Sizes const& n)
{
    bool const inside = p.x == clamped(p.x, n.columns) && p.y == clamped(p.y, n.rows) && p.z == clamped(p.z, n.plans) &&
                        p.t == clamped(p.t, n.timeSeries);
    return inside ? std::optional(p) : std::nullopt;
}

std::optional<Position> continueReference(Position p, Sizes const& n)
{
    return Position{clamped(p.x, n.columns), clamped(p.y, n.rows), clamped(p.z, n.plans), clamped(p.t, n.timeSeries),
                    p.s};
}

std::optional<Position> mirrorReference(Position p, Sizes const& n)
{
    return Position{mirrored(p.x, n.columns), mirrored(p.y, n.rows), mirrored(p.z, n.plans),
                    mirrored(p.t, n.timeSeries), p.s};
}

template <class T>
class BorderConditions : public ::testing::Test {
protected:
    /// Random images and rows, voxel by voxel against the reference; `outsideValue` where it gives none.
    static void compare(BorderCondition<T> const& border, Reference const& reference, T outsideValue)
    {
        std::mt19937 random(11);
        for (int round = 0; round < 300; ++round) {
            Sizes const sizes = randomSizes(random, {6, 5, 4, 3, 2});
            TestImage image; // counts its row operations
            fill(image, sizes, randomVoxels<T>(random, sizes.numOfVoxels()));
            auto const coordinate = [&](unsigned int size) {
                return std::uniform_int_distribution<int>(-3 * static_cast<int>(size),
                                                          4 * static_cast<int>(size))(random);
            };
            Position const p{coordinate(sizes.columns), coordinate(sizes.rows), coordinate(sizes.plans),
                             coordinate(sizes.timeSeries), static_cast<int>(random() % sizes.spectralSeries)};
            int const length = static_cast<int>(random() % 25);
            int const operations = image.numOfRowOperations();
            auto const row = readRow(border, image, p, length);
            EXPECT_LE(image.numOfRowOperations() - operations, 1);
            for (int i = 0; i < length; ++i) {
                auto const source = reference({p.x + i, p.y, p.z, p.t, p.s}, sizes);
                T const wanted = source ? voxelAt(image, *source) : outsideValue;
                ASSERT_TRUE(std::memcmp(&row[static_cast<std::size_t>(i)], &wanted, sizeof(T)) == 0)
                    << "voxel " << i << " of the row at " << p.x << ' ' << p.y << ' ' << p.z << ' ' << p.t;
            }
        }
    }

private:
    static T voxelAt(ImageModel const& image, Position const& p)
    {
        auto const u = [](int c) { return static_cast<unsigned int>(c); };
        T voxel = T();
        EXPECT_TRUE(image.readRowAt(1, &voxel, u(p.x), u(p.y), u(p.z), u(p.t), u(p.s)));
        return voxel;
    }
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(BorderConditions, RealTypes);

TYPED_TEST(BorderConditions, fixedGivesItsValueOutside)
{
    this->compare(*access::FixedBorderCondition<TypeParam>::create(7), fixedReference, TypeParam(7));
}

TYPED_TEST(BorderConditions, continueGivesTheNearestVoxel)
{
    this->compare(*access::ContinueBorderCondition<TypeParam>::create(), continueReference, TypeParam());
}

TYPED_TEST(BorderConditions, mirrorReflectsAtAnyDistance)
{
    this->compare(*access::MirrorBorderCondition<TypeParam>::create(), mirrorReference, TypeParam());
}

TEST(BorderCondition, rowAcrossBothEnds)
{
    auto const image = makeImage<unsigned char>({3, 1, 1, 1, 1}, {10, 11, 12});
    Position const p{-2, 0, 0, 0, 0};
    EXPECT_THAT(readRow(*access::MirrorBorderCondition<unsigned char>::create(), *image, p, 5),
                ElementsAre(11, 10, 10, 11, 12));
    EXPECT_THAT(readRow(*access::ContinueBorderCondition<unsigned char>::create(), *image, p, 5),
                ElementsAre(10, 10, 10, 11, 12));
    EXPECT_THAT(readRow(*access::FixedBorderCondition<unsigned char>::create(7), *image, p, 5),
                ElementsAre(7, 7, 10, 11, 12));
}

TEST(BorderCondition, mirrorIsPeriodicInTwiceTheSize)
{
    auto const image = makeImage<unsigned char>({3, 1, 1, 1, 1}, {10, 11, 12});
    EXPECT_THAT(readRow(*access::MirrorBorderCondition<unsigned char>::create(), *image, {6, 0, 0, 0, 0}, 1),
                ElementsAre(10));
}

TEST(BorderCondition, farCoordinatesDoNotOverflow)
{
    auto const image = makeImage<unsigned char>({3, 2, 1, 1, 1}, {1, 2, 3, 4, 5, 6});
    constexpr int far = std::numeric_limits<int>::max();
    for (Position const& p : {Position{far, far, far, far, 0}, Position{-far, -far, -far, -far, 0}}) {
        EXPECT_THAT(readRow(*access::FixedBorderCondition<unsigned char>::create(7), *image, p, 3),
                    ElementsAre(7, 7, 7));
        EXPECT_EQ(readRow(*access::ContinueBorderCondition<unsigned char>::create(), *image, p, 3),
                  std::vector<unsigned char>(3, p.x < 0 ? 1 : 6));
        EXPECT_EQ(readRow(*access::MirrorBorderCondition<unsigned char>::create(), *image, p, 3).size(), 3U);
        Position const inPlan{p.x, p.y, 0, 0, 0};
        EXPECT_EQ(
            readRow(*access::DirectionalMirrorBorderCondition<unsigned char>::create(0.3), *image, inPlan, 3).size(),
            3U);
    }
}

struct NamedCondition {
    char const* name;
    boost::shared_ptr<BorderCondition<short>> condition;
    short ofNothing; ///< what it gives for an image without voxels
    std::string file;
    int spectralLine;
};

std::vector<NamedCondition> allConditions()
{
    return {{"Fixed", access::FixedBorderCondition<short>::create(7), 7, "FixedBorderCondition.impl", 46},
            {"Continue", access::ContinueBorderCondition<short>::create(), 0, "ContinueBorderCondition.impl", 42},
            {"Mirror", access::MirrorBorderCondition<short>::create(), 0, "MirrorBorderCondition.impl", 61},
            {"Directional mirror", access::DirectionalMirrorBorderCondition<short>::create(0.5), 0,
             "DirectionalMirrorBorderCondition.impl", 219}};
}

TEST(BorderCondition, refusesSpectralIndicesOutside)
{
    auto const image = makeImage<short>({1, 1, 1, 1, 2}, {1, 2});
    for (auto const& [name, condition, ofNothing, file, line] : allConditions()) {
        for (int const s : {-1, 2}) {
            EXPECT_EQ(textOf([&, &condition = condition] {
                          readRow(*condition, *image, {0, 0, 0, 0, s}, 1);
                      }),
                      helper::composeText("Unexpected error :\n#1 Error : ", name,
                                          " border condition is not compatible with spectral series extrapolation "
                                          "\n    (at \"",
                                          file, "\", line ", line, ") \n"));
        }
        EXPECT_THAT(readRow(*condition, *image, {0, 0, 0, 0, 1}, 1), ElementsAre(2));
    }
}

TEST(BorderCondition, readsNothingOfAnImageWithoutVoxels)
{
    for (auto const& sizes : {Sizes{0, 0, 0, 0, 0}, Sizes{0, 3, 1, 1, 1}, Sizes{3, 0, 1, 1, 1}, Sizes{3, 3, 0, 1, 1},
                              Sizes{3, 3, 1, 0, 1}}) {
        TestImage image;
        fill(image, sizes, std::vector<short>());
        int const operations = image.numOfRowOperations();
        for (auto const& [name, condition, ofNothing, file, line] : allConditions()) {
            for (Position const& p : {Position{0, 0, 0, 0, 0}, Position{-1, 5, 2, -3, 0}}) {
                EXPECT_EQ(readRow(*condition, image, p, 3), std::vector<short>(3, ofNothing)) << name;
            }
        }
        EXPECT_EQ(image.numOfRowOperations(), operations);
    }
}

TEST(BorderCondition, tellsAFailedRead)
{
    for (auto const& [name, condition, ofNothing, file, line] : allConditions()) {
        for (Position const& p : {Position{0, 0, 0, 0, 0}, Position{-1, 0, 0, 0, 0}, Position{1, 0, 0, 0, 0}}) {
            TestImage image;
            fill(image, {2, 2, 1, 1, 1}, std::vector<short>{1, 2, 3, 4});
            image.failAt(1, TestImage::Fault::returnsFalse);
            EXPECT_THAT(textOf([&, &condition = condition] { readRow(*condition, image, p, 2); }),
                        HasSubstr("#1 Error : Error in readRowAt implementation, return value is false \n    (at \"" +
                                  file + "\", line "))
                << name;
        }
    }
}

TEST(BorderCondition, fixedTellsTheSiteOfAFailedRead)
{
    TestImage image;
    fill(image, {2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    image.failAt(1, TestImage::Fault::returnsFalse);
    EXPECT_THAT(textOf([&] {
                    readRow(*access::FixedBorderCondition<short>::create(), image, {0, 0, 0, 0, 0}, 2);
                }),
                EndsWith("(at \"FixedBorderCondition.impl\", line 88) \n"));
}

} // namespace

} // namespace mox::testing
