#include <Moxelcore/PointOperations/BitShift.h>

#include <gmock/gmock.h>

#include "testing/AlgorithmTests.h"
#include "testing/Images.h"

namespace mox::testing {

namespace {

using point_operations::BitShift;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int left = 0;
constexpr int right = 1;

template <class T>
std::vector<T> shifted(std::vector<T> const& voxels, int direction, unsigned int count)
{
    auto const image = makeImage(Sizes{static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels);
    auto const algorithm = BitShift::New();
    algorithm->input = image.get();
    algorithm->output = image.get();
    algorithm->shiftCount = count;
    algorithm->shiftDirection = direction;
    algorithm->run();
    return voxelsOf<T>(*image);
}

/// From the definition, bit by bit in turn.
template <class T>
T reference(T voxel, int direction, unsigned int count)
{
    using U = std::make_unsigned_t<T>;
    for (unsigned int i = 0; i < count; ++i) {
        auto const bits = static_cast<U>(voxel);
        bool const sign = voxel < 0;
        auto const entering = sign ? static_cast<U>(U(1) << (8 * sizeof(T) - 1)) : U(0);
        voxel = static_cast<T>(direction == left ? static_cast<U>(bits + bits) : static_cast<U>(bits / 2 + entering));
    }
    return voxel;
}

TEST(BitShiftContract, namesItsImagesAlone)
{
    auto const algorithm = BitShift::New();
    EXPECT_THAT(propertyNames(*algorithm), ElementsAre("input", "output"));
    EXPECT_EQ(algorithm->getNumOfProperties(), 2U);
    EXPECT_EQ(algorithm->shiftCount, 1U);
    EXPECT_EQ(algorithm->shiftDirection, left);
}

TEST(BitShiftContract, refusesFloatsAndOtherDirections)
{
    auto const input = makeImage({2, 1, 1, 1, 1}, std::vector<float>{1, 2});
    auto const algorithm = BitShift::New();
    algorithm->input = input.get();
    algorithm->output = input.get();
    EXPECT_THAT(refusal(*algorithm), HasSubstr("int32, int64. Current voxel type is float32 \n"));
    fill(*input, {2, 1, 1, 1, 1}, std::vector<int>{1, 2});
    algorithm->shiftDirection = 2;
    EXPECT_THROW(algorithm->run(), InvalidCall);
    EXPECT_THAT(refusal(*algorithm), HasSubstr("#1 Error : The provided shiftDirection is unknow (value=2) \n"));
    EXPECT_THAT(voxelsOf<int>(*input), ElementsAre(1, 2));
}

TEST(BitShiftLiteral, shiftsWithinTheWidth)
{
    EXPECT_THAT(shifted<unsigned char>({1, 0x81, 255}, left, 1), ElementsAre(2, 2, 254));
    EXPECT_THAT(shifted<unsigned char>({1, 0x81, 255}, right, 1), ElementsAre(0, 0x40, 127));
    EXPECT_THAT(shifted<signed char>({-128, -1, 64}, right, 1), ElementsAre(-64, -1, 32));
    EXPECT_THAT(shifted<signed char>({-128, -1, 64}, left, 1), ElementsAre(0, -2, -128));
}

TEST(BitShiftLiteral, leavesNothingButWhatEntersBeyondTheWidth)
{
    for (unsigned int const count : {16U, 17U, 31U, 32U, 33U, 64U, 0xFFFFFFFFU}) {
        EXPECT_THAT(shifted<unsigned short>({1, 0xFFFF}, left, count), ElementsAre(0, 0)) << count;
        EXPECT_THAT(shifted<unsigned short>({1, 0xFFFF}, right, count), ElementsAre(0, 0)) << count;
        EXPECT_THAT(shifted<short>({-32768, -1, 5}, left, count), ElementsAre(0, 0, 0)) << count;
        EXPECT_THAT(shifted<short>({-32768, -1, 5}, right, count), ElementsAre(-1, -1, 0)) << count;
    }
}

template <class T>
class BitShiftTyped : public ::testing::Test {
};

using IntegerTypes =
    ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64>;
TYPED_TEST_SUITE(BitShiftTyped, IntegerTypes);

TYPED_TEST(BitShiftTyped, equalsTheDefinitionForEveryCount)
{
    std::mt19937 random(1);
    auto const voxels = randomVoxels<TypeParam>(random, 77);
    for (int const direction : {left, right}) {
        for (unsigned int count = 0; count <= 66; ++count) {
            auto const results = shifted(voxels, direction, count);
            for (std::size_t i = 0; i < voxels.size(); ++i) {
                ASSERT_EQ(results[i], reference(voxels[i], direction, count)) << direction << ' ' << count;
            }
        }
    }
}

} // namespace

} // namespace mox::testing
