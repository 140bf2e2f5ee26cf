#include <Moxelcore/PointOperations/LogicalValueProcessing.h>

#include <gmock/gmock.h>

#include "testing/AlgorithmTests.h"
#include "testing/Images.h"
#include "testing/references/logical.h"

namespace mox::testing {

namespace {

using point_operations::LogicalValueProcessing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

template <class T>
std::vector<T> combined(std::vector<T> const& voxels, int logicalOperator, int64 value)
{
    auto const input = makeImage({static_cast<unsigned int>(voxels.size()), 1, 1, 1, 1}, voxels);
    memory::InMemoryImage output;
    auto const algorithm = LogicalValueProcessing::New();
    algorithm->input = input.get();
    algorithm->inputValue = value;
    algorithm->logicalOperator = logicalOperator;
    algorithm->output = &output;
    algorithm->run();
    return voxelsOf<T>(output);
}

TEST(LogicalValueProcessingContract, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = LogicalValueProcessing::New();
    EXPECT_THAT(propertyNames(*algorithm), ElementsAre("input", "inputValue", "logicalOperator", "output"));
    EXPECT_EQ(algorithm->inputValue, 0);
    EXPECT_EQ(algorithm->logicalOperator, point_operations::LOGICAL_AND);
}

TEST(LogicalValueProcessingContract, refusesFloatsAndOtherOperators)
{
    auto const input = makeImage({1, 1, 1, 1, 1}, std::vector<float>{1});
    auto const algorithm = LogicalValueProcessing::New();
    algorithm->input = input.get();
    algorithm->output = input.get();
    EXPECT_THAT(refusal(*algorithm), HasSubstr("int32, int64. Current voxel type is float32 \n"));
    fill(*input, {1, 1, 1, 1, 1}, std::vector<int>{3});
    algorithm->logicalOperator = -1;
    EXPECT_THAT(refusal(*algorithm), HasSubstr("#1 Error : The enumeration value is not valid \n"));
    EXPECT_THAT(voxelsOf<int>(*input), ElementsAre(3));
}

TEST(LogicalValueProcessingLiteral, takesAsManyBitsOfTheNumberAsAVoxelHas)
{
    EXPECT_THAT(combined<unsigned char>({0, 1, 255}, point_operations::LOGICAL_OR, 0x104), ElementsAre(4, 5, 255));
    EXPECT_THAT(combined<signed char>({0, 1, -1}, point_operations::LOGICAL_AND, -2), ElementsAre(0, 0, -2));
    EXPECT_THAT(combined<uint64>({0, 1}, point_operations::LOGICAL_XOR, -1),
                ElementsAre(0xFFFFFFFFFFFFFFFFU, 0xFFFFFFFFFFFFFFFEU));
}

template <class T>
class LogicalValueProcessingTyped : public ::testing::Test {
};

using IntegerTypes =
    ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64>;
TYPED_TEST_SUITE(LogicalValueProcessingTyped, IntegerTypes);

TYPED_TEST(LogicalValueProcessingTyped, equalsTheDefinition)
{
    std::mt19937 random(1);
    auto const voxels = randomVoxels<TypeParam>(random, 100);
    auto values = randomVoxels<int64>(random, 20);
    values.insert(values.end(), {0, -1, 1, 255, 256});
    for (int op = 0; op <= point_operations::LOGICAL_SUB; ++op) {
        for (int64 const value : values) {
            auto const results = combined(voxels, op, value);
            for (std::size_t i = 0; i < voxels.size(); ++i) {
                ASSERT_EQ(results[i], logicalReference(voxels[i], op, static_cast<TypeParam>(value))) << op;
            }
        }
    }
}

} // namespace

} // namespace mox::testing
