#include <Moxelcore/Math/Matrix2.h>
#include <Moxelcore/Math/Matrix3.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace mox::math {

namespace {

template <class T>
class MatricesOf : public ::testing::Test {
protected:
    Matrix2<T> const two{1, 2, 3, 4};
    Matrix3<T> const three{1, 2, 3, 4, 5, 6, 7, 8, 9};
};

using Components = ::testing::Types<float, double>;
TYPED_TEST_SUITE(MatricesOf, Components);

TYPED_TEST(MatricesOf, areZeroByDefault)
{
    Matrix2<TypeParam> const small;
    Matrix3<TypeParam> const large;
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int column = 0; column < 3; ++column) {
            EXPECT_EQ(large(row, column), TypeParam(0));
            if (row < 2 && column < 2) {
                EXPECT_EQ(small(row, column), TypeParam(0));
            }
        }
    }
}

TYPED_TEST(MatricesOf, areMadeRowByRow)
{
    for (unsigned int row = 0; row < 2; ++row) {
        for (unsigned int column = 0; column < 2; ++column) {
            EXPECT_EQ(this->two(row, column), TypeParam(row * 2 + column + 1));
        }
    }
    for (unsigned int row = 0; row < 3; ++row) {
        for (unsigned int column = 0; column < 3; ++column) {
            EXPECT_EQ(this->three(row, column), TypeParam(row * 3 + column + 1));
        }
    }
}

TYPED_TEST(MatricesOf, lieInMemoryRowByRow)
{
    EXPECT_EQ(sizeof(this->two), 4 * sizeof(TypeParam));
    EXPECT_EQ(sizeof(this->three), 9 * sizeof(TypeParam));
    EXPECT_TRUE(std::is_trivially_copyable_v<Matrix2<TypeParam>>);
    EXPECT_TRUE(std::is_trivially_copyable_v<Matrix3<TypeParam>>);
    EXPECT_EQ(&this->two(1, 0), &this->two(0, 0) + 2);
    EXPECT_EQ(&this->three(2, 1), &this->three(0, 0) + 7);
}

TYPED_TEST(MatricesOf, giveTheirComponents)
{
    Matrix2<TypeParam> small = this->two;
    small(1, 0) = 9;
    EXPECT_EQ(small(1, 0), TypeParam(9));
    EXPECT_EQ(small(0, 1), TypeParam(2));
    Matrix3<TypeParam> large = this->three;
    large(2, 0) = 10;
    EXPECT_EQ(large(2, 0), TypeParam(10));
    EXPECT_EQ(large(0, 2), TypeParam(3));
}

TYPED_TEST(MatricesOf, areValues)
{
    Matrix2<TypeParam> small;
    EXPECT_EQ(&(small = this->two), &small);
    EXPECT_TRUE(small == this->two);
    small(0, 0) = 9;
    EXPECT_TRUE(small != this->two);
    Matrix3<TypeParam> large;
    EXPECT_EQ(&(large = this->three), &large);
    EXPECT_TRUE(large == this->three);
    large(2, 2) = 10;
    EXPECT_FALSE(large == this->three);
}

} // namespace

} // namespace mox::math
