#include <Moxelcore/PointOperations/LogicalNotProcessing.h>

#include <gmock/gmock.h>

#include "testing/AlgorithmTests.h"
#include "testing/Images.h"

namespace mox::testing {

namespace {

using point_operations::LogicalNotProcessing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(LogicalNotProcessingContract, hasItsPropertiesInOrder)
{
    EXPECT_THAT(propertyNames(*LogicalNotProcessing::New()), ElementsAre("input", "output"));
}

TEST(LogicalNotProcessingContract, refusesFloats)
{
    auto const input = makeImage({1, 1, 1, 1, 1}, std::vector<double>{1});
    auto const algorithm = LogicalNotProcessing::New();
    algorithm->input = input.get();
    algorithm->output = input.get();
    EXPECT_THAT(refusal(*algorithm), HasSubstr("int32, int64. Current voxel type is float64 \n"));
}

template <class T>
class LogicalNotProcessingTyped : public ::testing::Test {
};

using IntegerTypes =
    ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64>;
TYPED_TEST_SUITE(LogicalNotProcessingTyped, IntegerTypes);

TYPED_TEST(LogicalNotProcessingTyped, complementsAllBitsWhateverTheInterpretation)
{
    std::mt19937 random(1);
    auto const voxels = randomVoxels<TypeParam>(random, 333);
    auto const input = makeImage({333, 1, 1, 1, 1}, voxels);
    for (ImageInterpretation const interpretation :
         {INTERPRETATION_BINARY, INTERPRETATION_LABEL, INTERPRETATION_VALUE}) {
        input->setInterpretation(interpretation);
        memory::InMemoryImage output;
        auto const algorithm = LogicalNotProcessing::New();
        algorithm->input = input.get();
        algorithm->output = &output;
        algorithm->run();
        EXPECT_EQ(output.getInterpretation(), interpretation);
        auto const results = voxelsOf<TypeParam>(output);
        for (std::size_t i = 0; i < voxels.size(); ++i) {
            ASSERT_EQ(results[i], static_cast<TypeParam>(-1 - voxels[i]));
        }
    }
}

} // namespace

} // namespace mox::testing
