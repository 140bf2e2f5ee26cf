#include "testing/VectorTests.h"

#include <limits>

namespace mox::testing {

namespace {

using CoreElements =
    ::testing::Types<unsigned char, int, unsigned int, int64, uint64, double, segmentation::TextureFeatureTypes>;

INSTANTIATE_TYPED_TEST_SUITE_P(OfCoreElements, VectorTest, CoreElements);

TEST(VectorOfDouble, comparesByTheElementsOwnComparison)
{
    Vector<double> zero(1);
    Vector<double> negativeZero(1);
    negativeZero[0] = -0.0;
    EXPECT_TRUE(zero == negativeZero);

    Vector<double> notANumber(1);
    notANumber[0] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(notANumber == notANumber);
    EXPECT_TRUE(notANumber != notANumber);
}

TEST(Vector, appendsAnElementOfItself)
{
    Vector<int> vector = elements<int>({7});
    for (int i = 0; i < 100; ++i) {
        vector.push_back(vector[0]);
    }
    EXPECT_EQ(vector.size(), 101U);
    EXPECT_EQ(vector[100], 7);
}

} // namespace

} // namespace mox::testing
