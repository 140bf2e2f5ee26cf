#include <Moxelcore/PointOperations/InvertImage.h>

#include <gmock/gmock.h>

#include "testing/AlgorithmTests.h"
#include "testing/Images.h"

namespace mox::testing {

namespace {

using point_operations::InvertImage;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

template <class T>
std::vector<T> inverted(std::vector<T> const& voxels, ImageInterpretation interpretation = INTERPRETATION_VALUE)
{
    auto const input = makeImage(Sizes{static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels);
    input->setInterpretation(interpretation);
    memory::InMemoryImage output;
    auto const algorithm = InvertImage::New();
    algorithm->input = input.get();
    algorithm->output = &output;
    algorithm->run();
    EXPECT_EQ(output.getInterpretation(), interpretation);
    return voxelsOf<T>(output);
}

TEST(InvertImageContract, hasItsPropertiesInOrder)
{
    EXPECT_THAT(propertyNames(*InvertImage::New()), ElementsAre("input", "output"));
}

TEST(InvertImageContract, refusesFloats)
{
    auto const input = makeImage({1, 1, 1, 1, 1}, std::vector<float>{1});
    auto const algorithm = InvertImage::New();
    algorithm->input = input.get();
    algorithm->output = input.get();
    EXPECT_THAT(refusal(*algorithm),
                HasSubstr("#1 Error : Voxel type must be one of the following types : uint8, uint16, "
                          "uint32, uint64, int8, int16, int32, int64. Current voxel type is "
                          "float32 \n"));
    EXPECT_THAT(voxelsOf<float>(*input), ElementsAre(1));
}

TEST(InvertImageLiteral, mirrorsTheRangeOfTheType)
{
    EXPECT_THAT(inverted<unsigned char>({0, 1, 100, 255}), ElementsAre(255, 254, 155, 0));
    EXPECT_THAT(inverted<signed char>({-128, -1, 0, 127}), ElementsAre(127, 0, -1, -128));
    EXPECT_THAT(inverted<unsigned char>({0, 7}, INTERPRETATION_LABEL), ElementsAre(255, 248));
}

TEST(InvertImageLiteral, swapsTheValuesOfBinaryImages)
{
    EXPECT_THAT(inverted<unsigned char>({0, 1, 1, 0}, INTERPRETATION_BINARY), ElementsAre(1, 0, 0, 1));
    EXPECT_THAT(inverted<short>({0, 1, 2, 255}, INTERPRETATION_BINARY), ElementsAre(1, 0, 1, 0)); // the lowest bit
}

template <class T>
class InvertImageTyped : public ::testing::Test {
};

using IntegerTypes =
    ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64>;
TYPED_TEST_SUITE(InvertImageTyped, IntegerTypes);

TYPED_TEST(InvertImageTyped, isTheComplement)
{
    std::mt19937 random(1);
    for (std::size_t const count : {1U, 2U, 15U, 333U}) {
        auto const voxels = randomVoxels<TypeParam>(random, count);
        auto const values = inverted(voxels);
        auto const bits = inverted(voxels, INTERPRETATION_BINARY);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(values[i], static_cast<TypeParam>(-1 - voxels[i]));
            ASSERT_EQ(bits[i], voxels[i] % 2 == 0 ? 1 : 0);
        }
    }
}

} // namespace

} // namespace mox::testing
