#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace mox::point_operations {

namespace arithmetic {

/// The type in which C++ computes with two voxels.
template <class A, class B>
using Common = decltype(A() + B());

/// Integers are computed in the unsigned type, where an overflow wraps, and read in the type itself.
template <std::integral C>
using Wrapping = std::make_unsigned_t<C>;

template <class T>
using BitsOf = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;

// The quotients are written without a branch, so that loops over them are vectorised.

/// 0 where the divisor is 0 of either sign. A NaN divisor is not.
template <std::floating_point C>
C quotient(C a, C b)
{
    using Bits = BitsOf<C>;
    Bits const kept = Bits(0) - static_cast<Bits>(b != C(0));
    return std::bit_cast<C>(static_cast<Bits>(std::bit_cast<Bits>(static_cast<C>(a / b)) & kept));
}

/// Integers of 8 and 16 bits, whose quotients are exact in float.
inline int narrowQuotient(int a, int b)
{
    int const isNil = b == 0;
    auto const q = static_cast<int>(static_cast<float>(a) / static_cast<float>(b + isNil));
    return q & (isNil - 1);
}

/// Integers of 32 bits, whose quotients are exact in double. A divisor of -1 negates, and the lowest stays the lowest.
inline int wideQuotient(int a, int b)
{
    int const isNil = b == 0;
    int const negates = b == -1;
    auto const q = static_cast<int>(static_cast<double>(a) / static_cast<double>(b + isNil + 2 * negates));
    auto const sign = static_cast<unsigned int>(-negates);
    return static_cast<int>(((static_cast<unsigned int>(q) ^ sign) - sign) & static_cast<unsigned int>(isNil - 1));
}

template <std::integral C>
C quotient(C a, C b)
{
    using U = Wrapping<C>;
    if (std::is_signed_v<C> && b == static_cast<C>(-1)) {
        return static_cast<C>(U(0) - static_cast<U>(a));
    }
    return b == 0 ? C(0) : static_cast<C>(a / b);
}

template <class A, class B>
auto divided(A a, B b)
{
    using C = Common<A, B>;
    if constexpr (sizeof(A) <= 2 && sizeof(B) <= 2) {
        return narrowQuotient(a, b);
    } else if constexpr (std::is_same_v<C, int>) {
        return wideQuotient(a, b);
    } else {
        return quotient(static_cast<C>(a), static_cast<C>(b));
    }
}

template <class A, class B>
using Wider = std::conditional_t<(sizeof(A) >= sizeof(B)), A, B>;

/// A type that holds every value of both.
template <class A, class B>
concept ComparableInWider = std::is_signed_v<A>
== std::is_signed_v<B> || (std::is_signed_v<A> && sizeof(A) > sizeof(B)) ||
    (std::is_signed_v<B> && sizeof(B) > sizeof(A));

/// Where no type holds both, the unsigned operand is not above the result's signed type unless it is the larger: it
/// may be lowered to that type's largest value.
template <std::unsigned_integral U, std::signed_integral S>
S lesserOfMixed(U a, S b)
{
    constexpr auto most = static_cast<U>(std::numeric_limits<S>::max());
    auto const lowered = static_cast<S>(a < most ? a : most);
    return lowered < b ? lowered : b;
}

/// Likewise a negative operand may be raised to 0.
template <std::unsigned_integral U, std::signed_integral S>
U greaterOfMixed(U a, S b)
{
    auto const raised = static_cast<U>(b > 0 ? b : S(0));
    return raised > a ? raised : a;
}

/// Integers are compared by value.
template <std::integral A, std::integral B>
auto lesser(A a, B b)
{
    if constexpr (ComparableInWider<A, B>) {
        using W = Wider<A, B>;
        return static_cast<W>(b) < static_cast<W>(a) ? static_cast<W>(b) : static_cast<W>(a);
    } else if constexpr (std::is_unsigned_v<A>) {
        return lesserOfMixed(a, b);
    } else {
        return lesserOfMixed(b, a);
    }
}

template <std::integral A, std::integral B>
auto greater(A a, B b)
{
    if constexpr (ComparableInWider<A, B>) {
        using W = Wider<A, B>;
        return static_cast<W>(a) < static_cast<W>(b) ? static_cast<W>(b) : static_cast<W>(a);
    } else if constexpr (std::is_unsigned_v<A>) {
        return greaterOfMixed(a, b);
    } else {
        return greaterOfMixed(b, a);
    }
}

/// With a float: the first operand unless the second is less, so that a NaN of the first stays.
template <class A, class B>
auto lesser(A a, B b)
{
    using C = Common<A, B>;
    return static_cast<C>(b) < static_cast<C>(a) ? static_cast<C>(b) : static_cast<C>(a);
}

template <class A, class B>
auto greater(A a, B b)
{
    using C = Common<A, B>;
    return static_cast<C>(a) < static_cast<C>(b) ? static_cast<C>(b) : static_cast<C>(a);
}

/// What `Wrapping` is for integers, and the type itself for floats.
template <class C>
struct Computing {
    using Type = C;
};

template <std::integral C>
struct Computing<C> {
    using Type = Wrapping<C>;
};

/// The operands in the type that they are computed in.
template <class A, class B, class Operation>
auto computed(A a, B b, Operation const& operation)
{
    using C = Common<A, B>;
    using Type = typename Computing<C>::Type;
    return static_cast<C>(operation(static_cast<Type>(static_cast<C>(a)), static_cast<Type>(static_cast<C>(b))));
}

} // namespace arithmetic

// The operators of two voxels. `kind` is that of their type promotion.

struct ArithmeticOperator_AddTag {
    static constexpr int kind = 0;
    template <class A, class B>
    static auto apply(A a, B b)
    {
        return arithmetic::computed(a, b, [](auto x, auto y) { return x + y; });
    }
};

struct ArithmeticOperator_SubtractTag {
    static constexpr int kind = 0;
    template <class A, class B>
    static auto apply(A a, B b)
    {
        return arithmetic::computed(a, b, [](auto x, auto y) { return x - y; });
    }
};

struct ArithmeticOperator_MultiplyTag {
    static constexpr int kind = 1;
    template <class A, class B>
    static auto apply(A a, B b)
    {
        return arithmetic::computed(a, b, [](auto x, auto y) { return x * y; });
    }
};

struct ArithmeticOperator_DivideTag {
    static constexpr int kind = 0;
    template <class A, class B>
    static auto apply(A a, B b)
    {
        return arithmetic::divided(a, b);
    }
};

struct ArithmeticOperator_MinimumTag {
    static constexpr int kind = 2;
    template <class A, class B>
    static auto apply(A a, B b)
    {
        return arithmetic::lesser(a, b);
    }
};

struct ArithmeticOperator_MaximumTag {
    static constexpr int kind = 3;
    template <class A, class B>
    static auto apply(A a, B b)
    {
        return arithmetic::greater(a, b);
    }
};

} // namespace mox::point_operations
