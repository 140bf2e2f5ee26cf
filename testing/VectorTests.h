#pragma once

#include <Moxelcore/Core/Vector.h>

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <type_traits>

// The tests of `Vector`, for each module to instantiate over the element types that it brings.

namespace mox::testing {

/// Elements that differ for different small numbers and from a value-initialised element for numbers above 0.
template <class T>
T element(int number)
{
    if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>) {
        return static_cast<T>(number);
    } else {
        T vector;
        vector[vector.dim() - 1] = element<std::remove_cvref_t<decltype(vector[0])>>(number);
        return vector;
    }
}

template <class T>
Vector<T> elements(std::initializer_list<int> numbers)
{
    Vector<T> vector;
    for (int const number : numbers) {
        vector.push_back(element<T>(number));
    }
    return vector;
}

template <class T>
class VectorTest : public ::testing::Test {
};

TYPED_TEST_SUITE_P(VectorTest);

TYPED_TEST_P(VectorTest, isEmptyByDefault)
{
    Vector<TypeParam> const vector;
    EXPECT_TRUE(vector.empty());
    EXPECT_EQ(vector.size(), 0U);
    EXPECT_EQ(vector.begin(), vector.end());
}

TYPED_TEST_P(VectorTest, hasASizeAndValueInitialisedElements)
{
    Vector<TypeParam> const vector(3);
    EXPECT_FALSE(vector.empty());
    ASSERT_EQ(vector.size(), 3U);
    for (TypeParam const& value : vector) {
        EXPECT_TRUE(value == TypeParam());
    }
}

TYPED_TEST_P(VectorTest, isNotMadeFromANumberByChance)
{
    EXPECT_FALSE((std::convertible_to<std::size_t, Vector<TypeParam>>));
}

TYPED_TEST_P(VectorTest, keepsElementsInOrder)
{
    Vector<TypeParam> vector = elements<TypeParam>({1, 2, 3});
    Vector<TypeParam> const& constant = vector;
    ASSERT_EQ(vector.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        auto const expected = element<TypeParam>(static_cast<int>(i) + 1);
        EXPECT_TRUE(vector[i] == expected);
        EXPECT_TRUE(constant[i] == expected);
        EXPECT_TRUE(constant.data()[i] == expected);
    }
    vector[1] = element<TypeParam>(4);
    EXPECT_TRUE(vector == elements<TypeParam>({1, 4, 3}));
}

TYPED_TEST_P(VectorTest, givesItsMemory)
{
    Vector<TypeParam> vector = elements<TypeParam>({1, 2, 3});
    Vector<TypeParam> const& constant = vector;
    EXPECT_EQ(vector.begin(), vector.data());
    EXPECT_EQ(vector.end(), vector.data() + 3);
    EXPECT_EQ(constant.begin(), vector.data());
    EXPECT_EQ(constant.end(), vector.data() + 3);
    EXPECT_EQ(constant.data(), &vector[0]);
    *vector.begin() = element<TypeParam>(5);
    EXPECT_TRUE(vector[0] == element<TypeParam>(5));
}

TYPED_TEST_P(VectorTest, resizesWithValueInitialisedElements)
{
    Vector<TypeParam> vector = elements<TypeParam>({1, 2, 3});
    vector.resize(1);
    EXPECT_TRUE(vector == elements<TypeParam>({1}));
    vector.resize(3);
    EXPECT_TRUE(vector == elements<TypeParam>({1, 0, 0}));
}

TYPED_TEST_P(VectorTest, reservesWithoutAChange)
{
    Vector<TypeParam> vector = elements<TypeParam>({1, 2});
    vector.reserve(100);
    TypeParam const* const memory = vector.data();
    EXPECT_TRUE(vector == elements<TypeParam>({1, 2}));
    vector.resize(100);
    EXPECT_EQ(vector.data(), memory);
}

TYPED_TEST_P(VectorTest, clears)
{
    Vector<TypeParam> vector = elements<TypeParam>({1, 2});
    vector.clear();
    EXPECT_TRUE(vector.empty());
    EXPECT_TRUE(vector == Vector<TypeParam>());
}

TYPED_TEST_P(VectorTest, copiesDeeply)
{
    Vector<TypeParam> source = elements<TypeParam>({1, 2});
    Vector<TypeParam> const copy(source);
    EXPECT_NE(copy.data(), source.data());
    source[0] = element<TypeParam>(3);
    EXPECT_TRUE(copy == elements<TypeParam>({1, 2}));
}

TYPED_TEST_P(VectorTest, assignsDeeply)
{
    Vector<TypeParam> source = elements<TypeParam>({1, 2});
    Vector<TypeParam> target = elements<TypeParam>({3, 4, 5});
    Vector<TypeParam> const& result = target = source;
    EXPECT_EQ(&result, &target);
    source.clear();
    EXPECT_TRUE(target == elements<TypeParam>({1, 2}));
    Vector<TypeParam> const& same = target;
    target = same;
    EXPECT_TRUE(target == elements<TypeParam>({1, 2}));
}

TYPED_TEST_P(VectorTest, comparesSizesThenElements)
{
    auto const vector = elements<TypeParam>({1, 2});
    EXPECT_TRUE(vector == elements<TypeParam>({1, 2}));
    EXPECT_FALSE(vector != elements<TypeParam>({1, 2}));
    for (auto const& other : {elements<TypeParam>({1}), elements<TypeParam>({1, 3}), elements<TypeParam>({1, 2, 0})}) {
        EXPECT_TRUE(vector != other);
        EXPECT_FALSE(vector == other);
    }
}

TYPED_TEST_P(VectorTest, isATableAndAPointer)
{
    EXPECT_EQ(sizeof(Vector<TypeParam>), 2 * sizeof(void*));
    EXPECT_TRUE(std::has_virtual_destructor_v<Vector<TypeParam>>);
}

REGISTER_TYPED_TEST_SUITE_P(VectorTest, isEmptyByDefault, hasASizeAndValueInitialisedElements,
                            isNotMadeFromANumberByChance, keepsElementsInOrder, givesItsMemory,
                            resizesWithValueInitialisedElements, reservesWithoutAChange, clears, copiesDeeply,
                            assignsDeeply, comparesSizesThenElements, isATableAndAPointer);

} // namespace mox::testing
