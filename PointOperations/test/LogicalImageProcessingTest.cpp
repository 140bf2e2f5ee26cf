#include <Moxelcore/PointOperations/LogicalImageProcessing.h>

#include <gmock/gmock.h>

#include "PointOperations/private/LogicalOperators.h"
#include "testing/AlgorithmTests.h"
#include "testing/Images.h"
#include "testing/references/logical.h"

namespace mox::testing {

namespace {

using point_operations::LogicalImageProcessing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

template <class T>
std::vector<T> combined(std::vector<T> const& a, int logicalOperator, std::vector<T> const& b)
{
    Sizes const sizes{static_cast<unsigned int>(a.size()), 1, 1, 1, 1};
    auto const first = makeImage(sizes, a);
    auto const second = makeImage(sizes, b);
    memory::InMemoryImage output;
    auto const algorithm = LogicalImageProcessing::New();
    algorithm->input1 = first.get();
    algorithm->input2 = second.get();
    algorithm->logicalOperator = logicalOperator;
    algorithm->output = &output;
    algorithm->run();
    return voxelsOf<T>(output);
}

TEST(LogicalImageProcessingContract, hasItsPropertiesInOrder)
{
    auto const algorithm = LogicalImageProcessing::New();
    EXPECT_THAT(propertyNames(*algorithm), ElementsAre("input1", "input2", "logicalOperator", "output"));
    EXPECT_EQ(algorithm->logicalOperator, point_operations::LOGICAL_AND);
}

TEST(LogicalImageProcessingContract, refusesWhatDoesNotMatch)
{
    auto const first = makeImage({2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    auto const wider = makeImage({2, 1, 1, 1, 1}, std::vector<int>{1, 2});
    auto const longer = makeImage({3, 1, 1, 1, 1}, std::vector<short>{1, 2, 3});
    auto const calibrated = makeImage({2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    calibrated->setCalibrationStep(ROWS, 3);
    auto const algorithm = LogicalImageProcessing::New();
    auto const refusalOf = [&](ImageModel const* a, ImageModel const* b) {
        algorithm->input1 = a;
        algorithm->input2 = b;
        algorithm->output = first.get();
        return refusal(*algorithm);
    };
    EXPECT_THAT(refusalOf(first.get(), nullptr), HasSubstr("#1 Error : Parameter value cannot be null \n"));
    EXPECT_THAT(refusalOf(first.get(), wider.get()), HasSubstr("#1 Error : Images don't have the same type \n"));
    EXPECT_THAT(refusalOf(first.get(), longer.get()), HasSubstr("#1 Error : Images don't have the same size \n"));
    EXPECT_THAT(refusalOf(first.get(), calibrated.get()),
                HasSubstr("#1 Error : Images don't have the same calibration \n"));
    EXPECT_THAT(voxelsOf<short>(*first), ElementsAre(1, 2));
}

TEST(LogicalImageProcessingContract, refusesOtherOperators)
{
    auto const image = makeImage({2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    auto const algorithm = LogicalImageProcessing::New();
    algorithm->input1 = image.get();
    algorithm->input2 = image.get();
    algorithm->output = image.get();
    algorithm->logicalOperator = 9;
    EXPECT_THAT(refusal(*algorithm), HasSubstr("#1 Error : The enumeration value is not valid \n"));
    try {
        point_operations::dispatchLogical(9, "PointOperations/src/LogicalImageProcessing_Scalar", []<class>() {});
        FAIL() << "nothing thrown";
    } catch (InvalidCall const& exception) {
        EXPECT_THAT(exception.what().c_str(), HasSubstr("The provided logicalOperator is unknow (value=9) \n    (at "
                                                        "\"LogicalImageProcessing_Scalar\""));
    }
}

TEST(LogicalImageProcessingLiteral, hasTheTruthTableOfEachOperator)
{
    std::vector<unsigned char> const a = {0, 0, 0xFF, 0xFF};
    std::vector<unsigned char> const b = {0, 0xFF, 0, 0xFF};
    EXPECT_THAT(combined(a, point_operations::LOGICAL_AND, b), ElementsAre(0, 0, 0, 255));
    EXPECT_THAT(combined(a, point_operations::LOGICAL_OR, b), ElementsAre(0, 255, 255, 255));
    EXPECT_THAT(combined(a, point_operations::LOGICAL_XOR, b), ElementsAre(0, 255, 255, 0));
    EXPECT_THAT(combined(a, point_operations::LOGICAL_NAND, b), ElementsAre(255, 255, 255, 0));
    EXPECT_THAT(combined(a, point_operations::LOGICAL_NOR, b), ElementsAre(255, 0, 0, 0));
    EXPECT_THAT(combined(a, point_operations::LOGICAL_NXOR, b), ElementsAre(255, 0, 0, 255));
    EXPECT_THAT(combined(a, point_operations::LOGICAL_SUB, b), ElementsAre(0, 0, 255, 0));
}

template <class T>
class LogicalImageProcessingTyped : public ::testing::Test {
};

using IntegerTypes =
    ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64>;
TYPED_TEST_SUITE(LogicalImageProcessingTyped, IntegerTypes);

TYPED_TEST(LogicalImageProcessingTyped, equalsTheDefinition)
{
    std::mt19937 random(1);
    auto const a = randomVoxels<TypeParam>(random, 257);
    auto const b = randomVoxels<TypeParam>(random, 257);
    for (int op = 0; op <= point_operations::LOGICAL_SUB; ++op) {
        auto const results = combined(a, op, b);
        for (std::size_t i = 0; i < a.size(); ++i) {
            ASSERT_EQ(results[i], logicalReference(a[i], op, b[i])) << op;
        }
    }
}

TEST(LogicalImageProcessingRun, keepsTypeCalibrationAndInterpretationOfTheFirstInput)
{
    auto const image = makeImage({2, 2, 1, 2, 2}, std::vector<short>(16, 1));
    image->setCalibrationStep(COLUMNS, 0.5);
    image->setInterpretation(INTERPRETATION_LABEL);
    memory::InMemoryImage output;
    auto const algorithm = LogicalImageProcessing::New();
    algorithm->input1 = image.get();
    algorithm->input2 = image.get();
    algorithm->output = &output;
    algorithm->run();
    EXPECT_EQ(Sizes::of(output), Sizes::of(*image));
    EXPECT_EQ(output.getVoxelType(), MOX_INT16);
    EXPECT_EQ(output.getCalibrationStep(COLUMNS), 0.5);
    EXPECT_EQ(output.getInterpretation(), INTERPRETATION_LABEL);
}

TEST(LogicalImageProcessingRun, takesEitherInputAsItsOutput)
{
    std::mt19937 random(2);
    Sizes const sizes{300, 40, 3, 2, 2};
    auto const a = randomVoxels<int>(random, sizes.numOfVoxels());
    auto const b = randomVoxels<int>(random, sizes.numOfVoxels());
    std::vector<int> expected(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        expected[i] = a[i] & ~b[i];
    }
    for (bool const intoFirst : {true, false}) {
        auto const first = makeImage(sizes, a);
        auto const second = makeImage(sizes, b);
        auto const algorithm = LogicalImageProcessing::New();
        algorithm->input1 = first.get();
        algorithm->input2 = second.get();
        algorithm->logicalOperator = point_operations::LOGICAL_SUB;
        algorithm->output = intoFirst ? first.get() : second.get();
        algorithm->run();
        EXPECT_EQ(voxelsOf<int>(*algorithm->output.get()), expected);
    }
}

} // namespace

} // namespace mox::testing
