#include <Moxelcore/PointOperations/GradientMagnitude3D.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "testing/AlgorithmTests.h"
#include "testing/Images.h"

namespace mox::testing {

namespace {

using point_operations::GradientMagnitude3D;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int euclidean = point_operations::GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN;
constexpr int maximum = point_operations::GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS;

template <class T>
std::vector<T> magnitude(int mode, std::vector<T> const& x, std::vector<T> const& y, std::vector<T> const& z)
{
    Sizes const sizes{static_cast<unsigned int>(x.size()), 1, 1, 1, 1};
    auto const first = makeImage(sizes, x);
    auto const second = makeImage(sizes, y);
    auto const third = makeImage(sizes, z);
    memory::InMemoryImage output;
    auto const algorithm = GradientMagnitude3D::New();
    algorithm->input1 = first.get();
    algorithm->input2 = second.get();
    algorithm->input3 = third.get();
    algorithm->outputMode = mode;
    algorithm->output = &output;
    algorithm->run();
    return voxelsOf<T>(output);
}

TEST(GradientMagnitude3DContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = GradientMagnitude3D::New();
    EXPECT_THAT(propertyNames(*algorithm), ElementsAre("input1", "input2", "input3", "outputMode", "output"));
    EXPECT_EQ(algorithm->outputMode, euclidean);
    String echo;
    EXPECT_TRUE(algorithm->outputMode.read("GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS", echo));
    EXPECT_EQ(algorithm->outputMode, maximum);
}

TEST(GradientMagnitude3DContract, refusesWhatDoesNotMatch)
{
    auto const image = makeImage({2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    auto const wider = makeImage({2, 1, 1, 1, 1}, std::vector<int>{1, 2});
    auto const longer = makeImage({3, 1, 1, 1, 1}, std::vector<short>{1, 2, 3});
    auto const refusalOf = [&](ImageModel const* second, ImageModel const* third) {
        auto const algorithm = GradientMagnitude3D::New();
        algorithm->input1 = image.get();
        algorithm->input2 = second;
        algorithm->input3 = third;
        algorithm->output = image.get();
        return refusal(*algorithm);
    };
    EXPECT_THAT(refusalOf(image.get(), nullptr), HasSubstr("#1 Error : Parameter value cannot be null \n"));
    EXPECT_THAT(refusalOf(nullptr, image.get()), HasSubstr("#2 From Rule error in property input2 \n"));
    EXPECT_THAT(refusalOf(image.get(), wider.get()), HasSubstr("#1 Error : Images don't have the same type \n"));
    EXPECT_THAT(refusalOf(wider.get(), image.get()), HasSubstr("#1 Error : Images don't have the same type \n"));
    EXPECT_THAT(refusalOf(image.get(), longer.get()), HasSubstr("#1 Error : Images don't have the same size \n"));
    EXPECT_THAT(voxelsOf<short>(*image), ElementsAre(1, 2));
}

TEST(GradientMagnitude3DContract, refusesOtherModes)
{
    auto const image = makeImage({1, 1, 1, 1, 1}, std::vector<short>{3});
    auto const algorithm = GradientMagnitude3D::New();
    algorithm->input1 = image.get();
    algorithm->input2 = image.get();
    algorithm->input3 = image.get();
    algorithm->output = image.get();
    algorithm->outputMode = 5;
    EXPECT_THROW(algorithm->run(), InvalidCall);
    EXPECT_THAT(refusal(*algorithm),
                HasSubstr("#1 Error : The provided gradient outputMode is an unknown (value=5). \n    (at "
                          "\"GradientMagnitude3D_Scalar\""));
    EXPECT_THAT(voxelsOf<short>(*image), ElementsAre(3));
}

TEST(GradientMagnitude3DLiteral, isTheLengthOfTheVector)
{
    EXPECT_THAT(magnitude<short>(euclidean, {2, -3, 1, 0}, {3, 4, 1, 0}, {6, 0, 1, 0}), ElementsAre(7, 5, 1, 0));
    EXPECT_THAT(magnitude<double>(euclidean, {0.5}, {-0.5}, {0.5}), ElementsAre(std::sqrt(0.75)));
    EXPECT_THAT(magnitude<float>(euclidean, {3e38F}, {0}, {0}), ElementsAre(3e38F)); // squared in double
}

TEST(GradientMagnitude3DLiteral, isTheLargestMagnitude)
{
    EXPECT_THAT(magnitude<short>(maximum, {2, -9, 1}, {3, 4, -1}, {-6, 0, 1}), ElementsAre(6, 9, 1));
    EXPECT_THAT(magnitude<float>(maximum, {-0.5F}, {0.25F}, {-0.75F}), ElementsAre(0.75F));
}

TEST(GradientMagnitude3DLiteral, staysWithinTheVoxelType)
{
    EXPECT_THAT(magnitude<signed char>(maximum, {-128}, {0}, {0}), ElementsAre(127));
    EXPECT_THAT(magnitude<signed char>(euclidean, {-128, 100}, {0, 100}, {0, 100}), ElementsAre(127, 127));
    EXPECT_THAT(magnitude<unsigned char>(euclidean, {255}, {255}, {255}), ElementsAre(255));
    constexpr int64 lowest = std::numeric_limits<int64>::min();
    constexpr int64 highest = std::numeric_limits<int64>::max();
    EXPECT_THAT(magnitude<int64>(maximum, {lowest, highest - 1}, {0, 0}, {0, 0}), ElementsAre(highest, highest - 1));
    EXPECT_THAT(magnitude<int64>(euclidean, {lowest}, {0}, {0}), ElementsAre(highest));
    constexpr uint64 most = std::numeric_limits<uint64>::max();
    EXPECT_THAT(magnitude<uint64>(maximum, {most - 1}, {3}, {4}), ElementsAre(most - 1));
    EXPECT_THAT(magnitude<uint64>(euclidean, {most, 3}, {most, 4}, {0, 0}), ElementsAre(most, 5));
}

TEST(GradientMagnitude3DLiteral, keepsANaNOfTheFirstComponent)
{
    auto const largest = magnitude<float>(maximum, {NAN, 1, 1}, {2, NAN, -2}, {3, 3, NAN});
    EXPECT_TRUE(std::isnan(largest[0]));
    EXPECT_EQ(largest[1], 3);
    EXPECT_EQ(largest[2], 2);
    EXPECT_TRUE(std::isnan(magnitude<float>(euclidean, {1}, {NAN}, {1})[0]));
}

template <class T>
class GradientMagnitude3DTyped : public ::testing::Test {
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(GradientMagnitude3DTyped, RealTypes);

TYPED_TEST(GradientMagnitude3DTyped, equalsTheDefinition)
{
    using Limits = std::numeric_limits<TypeParam>;
    __extension__ using Int128 = __int128;
    using Wide = std::conditional_t<std::is_floating_point_v<TypeParam>, long double, Int128>;
    std::mt19937 random(1);
    auto const components = [&] {
        auto voxels = randomVoxels<TypeParam>(random, 500);
        std::replace_if(
            voxels.begin(), voxels.end(), [](TypeParam v) { return v != v; }, TypeParam(1));
        return voxels;
    };
    auto const x = components(), y = components(), z = components();
    auto const lengths = magnitude(euclidean, x, y, z);
    auto const largest = magnitude(maximum, x, y, z);
    auto const limited = [](auto value) {
        if constexpr (std::is_integral_v<TypeParam>) {
            return value < static_cast<decltype(value)>(Limits::max()) ? static_cast<TypeParam>(value) : Limits::max();
        } else {
            return static_cast<TypeParam>(value);
        }
    };
    for (std::size_t i = 0; i < x.size(); ++i) {
        double const a = static_cast<double>(x[i]), b = static_cast<double>(y[i]), c = static_cast<double>(z[i]);
        ASSERT_EQ(lengths[i], limited(std::sqrt(a * a + b * b + c * c))) << i;
        auto const absolute = [](TypeParam v) { return v < 0 ? -Wide(v) : Wide(v); };
        ASSERT_EQ(largest[i], limited(std::max({absolute(x[i]), absolute(y[i]), absolute(z[i])}))) << i;
    }
}

TEST(GradientMagnitude3DRun, takesAnyInputAsItsOutputAndKeepsItsInterpretation)
{
    std::mt19937 random(2);
    Sizes const sizes{300, 40, 3, 2, 2};
    auto const x = randomVoxels<int>(random, sizes.numOfVoxels());
    auto const y = randomVoxels<int>(random, sizes.numOfVoxels());
    auto const z = randomVoxels<int>(random, sizes.numOfVoxels());
    auto const expected = magnitude(maximum, x, y, z);
    for (std::size_t target = 0; target < 3; ++target) {
        std::unique_ptr<memory::InMemoryImage> const images[] = {makeImage(sizes, x), makeImage(sizes, y),
                                                                 makeImage(sizes, z)};
        images[0]->setInterpretation(INTERPRETATION_LABEL);
        auto const algorithm = GradientMagnitude3D::New();
        algorithm->input1 = images[0].get();
        algorithm->input2 = images[1].get();
        algorithm->input3 = images[2].get();
        algorithm->outputMode = maximum;
        algorithm->output = images[target].get();
        algorithm->run();
        EXPECT_EQ(voxelsOf<int>(*images[target]), expected);
        EXPECT_EQ(images[target]->getInterpretation(), INTERPRETATION_LABEL);
    }
}

} // namespace

} // namespace mox::testing
