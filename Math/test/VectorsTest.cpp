#include <Moxelcore/Core/Integers.h>
#include <Moxelcore/Math/Vector2.h>
#include <Moxelcore/Math/Vector3.h>
#include <Moxelcore/Math/Vector4.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace mox::math {

namespace {

template <class V>
using Component = std::remove_cvref_t<decltype(std::declval<V&>()[0])>;

template <class V>
constexpr unsigned int dimension = sizeof(V) / sizeof(Component<V>);

/// The vector whose component i is first + i * step.
template <class V>
V counted(int first, int step)
{
    V vector;
    for (unsigned int i = 0; i < dimension<V>; ++i) {
        vector[i] = static_cast<Component<V>>(first + static_cast<int>(i) * step);
    }
    return vector;
}

template <class V>
class Vectors : public ::testing::Test {
protected:
    using T = Component<V>;

    static constexpr unsigned int size = dimension<V>;

    /// Component i of the vector is what the operation makes of i.
    template <class Operation>
    static void expectEach(V const& vector, Operation const& operation)
    {
        for (unsigned int i = 0; i < size; ++i) {
            EXPECT_EQ(vector[i], static_cast<T>(operation(static_cast<int>(i)))) << "component " << i;
        }
    }
};

using AllVectors =
    ::testing::Types<Vector2<int>, Vector2<unsigned int>, Vector2<int64>, Vector2<uint64>, Vector2<double>,
                     Vector3<int>, Vector3<unsigned int>, Vector3<int64>, Vector3<uint64>, Vector3<double>,
                     Vector4<int>, Vector4<unsigned int>, Vector4<int64>, Vector4<uint64>, Vector4<double>>;
TYPED_TEST_SUITE(Vectors, AllVectors);

TYPED_TEST(Vectors, arePlainArraysOfComponents)
{
    EXPECT_TRUE(std::is_trivially_copyable_v<TypeParam>);
    TypeParam const vector;
    EXPECT_EQ(vector.dim(), this->size);
    EXPECT_EQ(vector.data(), &vector[0]);
    EXPECT_EQ(static_cast<void const*>(vector.data()), &vector);
}

TYPED_TEST(Vectors, areZeroByDefault)
{
    this->expectEach(TypeParam(), [](int) { return 0; });
}

TYPED_TEST(Vectors, giveTheirComponentsByIndex)
{
    TypeParam vector = counted<TypeParam>(1, 2);
    TypeParam const& constant = vector;
    for (unsigned int i = 0; i < this->size; ++i) {
        EXPECT_EQ(&vector[i], &vector(i));
        EXPECT_EQ(&constant[i], &vector[i]);
        EXPECT_EQ(&constant(i), &vector[i]);
        EXPECT_EQ(constant.data()[i], vector[i]);
    }
    vector(1) = 9;
    EXPECT_EQ(constant[1], static_cast<Component<TypeParam>>(9));
}

TYPED_TEST(Vectors, areCopiedByValue)
{
    TypeParam source = counted<TypeParam>(1, 2);
    TypeParam const copy(source);
    TypeParam assigned;
    EXPECT_EQ(&(assigned = source), &assigned);
    source[0] = 9;
    this->expectEach(copy, [](int i) { return 1 + 2 * i; });
    this->expectEach(assigned, [](int i) { return 1 + 2 * i; });
}

TYPED_TEST(Vectors, takeTheValueOfAnotherOrOfAnArray)
{
    TypeParam const source = counted<TypeParam>(1, 2);
    TypeParam vector;
    EXPECT_EQ(&vector.setValue(source), &vector);
    this->expectEach(vector, [](int i) { return 1 + 2 * i; });
    std::array<Component<TypeParam>, dimension<TypeParam>> components = {};
    components[0] = 7;
    EXPECT_EQ(&vector.setValue(components.data()), &vector);
    this->expectEach(vector, [](int i) { return i == 0 ? 7 : 0; });
}

TYPED_TEST(Vectors, compareAllComponents)
{
    TypeParam const vector = counted<TypeParam>(1, 2);
    EXPECT_TRUE(vector == counted<TypeParam>(1, 2));
    EXPECT_FALSE(vector != counted<TypeParam>(1, 2));
    for (unsigned int i = 0; i < this->size; ++i) {
        TypeParam other = vector;
        other[i] = 100;
        EXPECT_FALSE(vector == other) << i;
        EXPECT_TRUE(vector != other) << i;
    }
}

TYPED_TEST(Vectors, addAndSubtract)
{
    TypeParam const a = counted<TypeParam>(10, 5);
    TypeParam const b = counted<TypeParam>(1, 2);
    this->expectEach(a + b, [](int i) { return 11 + 7 * i; });
    this->expectEach(a - b, [](int i) { return 9 + 3 * i; });
    TypeParam sum = a;
    EXPECT_EQ(&(sum += b), &sum);
    this->expectEach(sum, [](int i) { return 11 + 7 * i; });
    EXPECT_EQ(&(sum -= b), &sum);
    EXPECT_TRUE(sum == a);
    sum += sum;
    this->expectEach(sum, [](int i) { return 20 + 10 * i; });
}

TYPED_TEST(Vectors, scaleByAnInteger)
{
    TypeParam const vector = counted<TypeParam>(10, 4);
    this->expectEach(vector * 3, [](int i) { return (10 + 4 * i) * 3; });
    this->expectEach(vector / 2, [](int i) { return 5 + 2 * i; });
    TypeParam scaled = vector;
    EXPECT_EQ(&(scaled *= 3), &scaled);
    this->expectEach(scaled, [](int i) { return (10 + 4 * i) * 3; });
    EXPECT_EQ(&(scaled /= 3), &scaled);
    EXPECT_TRUE(scaled == vector);
}

TYPED_TEST(Vectors, scaleByADouble)
{
    TypeParam const vector = counted<TypeParam>(3, 2);
    this->expectEach(vector * 1.5, [](int i) { return (3 + 2 * i) * 1.5; });
    this->expectEach(vector / 0.4, [](int i) { return (3 + 2 * i) / 0.4; });
    TypeParam scaled = vector;
    EXPECT_EQ(&(scaled *= 2.0), &scaled);
    EXPECT_EQ(&(scaled /= 2.0), &scaled);
    EXPECT_TRUE(scaled == vector);
}

TYPED_TEST(Vectors, multiplyToANumber)
{
    TypeParam const a = counted<TypeParam>(1, 1);
    TypeParam const b = counted<TypeParam>(2, 3);
    Component<TypeParam> expected = 0;
    for (unsigned int i = 0; i < this->size; ++i) {
        expected += a[i] * b[i];
    }
    EXPECT_TRUE((std::is_same_v<decltype(a.dot(b)), Component<TypeParam>>));
    EXPECT_EQ(a.dot(b), expected);
    EXPECT_EQ(b.dot(a), expected);
    EXPECT_EQ(b.squaredLength(), b.dot(b));
}

TYPED_TEST(Vectors, haveALength)
{
    EXPECT_TRUE((std::is_same_v<decltype(TypeParam().length()), Component<TypeParam>>));
    TypeParam vector;
    EXPECT_EQ(vector.length(), Component<TypeParam>(0));
    vector[0] = 3;
    vector[this->size - 1] = 4;
    EXPECT_EQ(vector.squaredLength(), Component<TypeParam>(25));
    EXPECT_EQ(vector.length(), Component<TypeParam>(5));
    vector[0] = 4;
    EXPECT_EQ(vector.length(), static_cast<Component<TypeParam>>(std::sqrt(32.0)));
}

template <class T>
class VectorsOf : public ::testing::Test {
};

using Components = ::testing::Types<int, unsigned int, int64, uint64, double>;
TYPED_TEST_SUITE(VectorsOf, Components);

TYPED_TEST(VectorsOf, areMadeFromComponents)
{
    using T = TypeParam;
    Vector2<T> two(T(1), T(2));
    Vector3<T> three(T(1), T(2), T(3));
    Vector4<T> four(T(1), T(2), T(3), T(4));
    for (unsigned int i = 0; i < 2; ++i) {
        EXPECT_EQ(two[i], T(i + 1));
        EXPECT_EQ(three[i], T(i + 1));
        EXPECT_EQ(four[i], T(i + 1));
    }
    EXPECT_EQ(three[2], T(3));
    EXPECT_EQ(four[2], T(3));
    EXPECT_EQ(four[3], T(4));
    EXPECT_EQ(two.dim(), 2U);
    EXPECT_EQ(three.dim(), 3U);
    EXPECT_EQ(four.dim(), 4U);
}

TYPED_TEST(VectorsOf, takeComponents)
{
    using T = TypeParam;
    Vector2<T> two;
    Vector3<T> three;
    Vector4<T> four;
    EXPECT_EQ(&two.setValue(T(5), T(6)), &two);
    EXPECT_EQ(&three.setValue(T(5), T(6), T(7)), &three);
    EXPECT_EQ(&four.setValue(T(5), T(6), T(7), T(8)), &four);
    EXPECT_TRUE(two == Vector2<T>(T(5), T(6)));
    EXPECT_TRUE(three == Vector3<T>(T(5), T(6), T(7)));
    EXPECT_TRUE(four == Vector4<T>(T(5), T(6), T(7), T(8)));
}

TEST(IntegerVectors, truncateWhatADoubleScales)
{
    EXPECT_TRUE(Vector2<int>(3, -3) * 0.5 == Vector2<int>(1, -1));
    EXPECT_TRUE(Vector2<int>(7, -7) / 2.0 == Vector2<int>(3, -3));
    EXPECT_TRUE(Vector2<int>(10, -10) * 0.99 == Vector2<int>(9, -9));
    EXPECT_TRUE(Vector2<unsigned int>(5, 1) * 0.5 == Vector2<unsigned int>(2, 0));
}

TEST(IntegerVectors, areScaledByADoubleInDouble)
{
    int64 const odd = (int64{1} << 53) + 1;
    EXPECT_EQ((Vector2<int64>(odd, 0) * 1.0)[0], odd - 1);
    EXPECT_EQ((Vector2<int64>(odd, 0) * 1)[0], odd);
}

TEST(IntegerVectors, areScaledByAnIntegerInTheirOwnArithmetic)
{
    EXPECT_TRUE(Vector2<int>(7, -7) / 2 == Vector2<int>(3, -3));
    EXPECT_TRUE(Vector2<int>(7, -7) * -1 == Vector2<int>(-7, 7));
    int64 const large = std::numeric_limits<int64>::max() / 3;
    EXPECT_EQ((Vector2<int64>(large, 0) * 3)[0], large * 3);
    EXPECT_EQ((Vector2<unsigned int>(1, 0) * -1)[0], 0xFFFFFFFFU);
    EXPECT_EQ((Vector2<uint64>(1, 0) * -1)[0], std::numeric_limits<uint64>::max());
}

TEST(IntegerVectors, truncateTheirLength)
{
    EXPECT_EQ(Vector2<int>(1, 1).length(), 1);
    EXPECT_EQ(Vector2<int>(-2, 2).length(), 2);
    EXPECT_EQ(Vector3<unsigned int>(1, 1, 1).length(), 1U);
    EXPECT_EQ(Vector4<int64>(1, 1, 1, 1).length(), 2);
    EXPECT_EQ(Vector2<uint64>(3, 3).length(), 4U);
}

TEST(IntegerVectors, haveALengthWhereItsSquareDoesNotFit)
{
    EXPECT_EQ(Vector2<int>(50000, -50000).length(), 70710);
    EXPECT_EQ(Vector2<unsigned int>(0xFFFFFFFFU, 0).length(), 0xFFFFFFFFU);
    EXPECT_EQ(Vector3<int64>(int64{1} << 40, 0, 0).length(), int64{1} << 40);
    EXPECT_EQ(Vector4<uint64>(uint64{1} << 40, 0, 0, 0).length(), uint64{1} << 40);
}

TEST(VectorsOfDouble, keepFractions)
{
    EXPECT_DOUBLE_EQ(Vector2<double>(1.0, 1.0).length(), std::sqrt(2.0));
    EXPECT_TRUE(Vector2<double>(1.0, -3.0) / 2 == Vector2<double>(0.5, -1.5));
    EXPECT_TRUE(Vector2<double>(1.0, -3.0) * 2 == Vector2<double>(2.0, -6.0));
    EXPECT_DOUBLE_EQ(Vector3<double>(0.5, 1.5, -2.0).dot(Vector3<double>(2.0, 2.0, 1.0)), 2.0);
}

TEST(VectorsOfDouble, compareAsNumbersDo)
{
    double const notANumber = std::numeric_limits<double>::quiet_NaN();
    Vector2<double> const vector(notANumber, 0.0);
    EXPECT_FALSE(vector == vector);
    EXPECT_TRUE(vector != vector);
    EXPECT_TRUE(Vector2<double>(0.0, 0.0) == Vector2<double>(-0.0, 0.0));
}

} // namespace

} // namespace mox::math
