#pragma once

#include <Moxelcore/Core/Enum/ArithmeticOperatorType.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>
#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <algorithm>
#include <cmath>
#include <ostream>

#include "testing/Images.h"

namespace mox::testing {

/// A voxel of any type: a wide integer, or a float, which a double holds exactly.
struct Number {
    __extension__ using Wide = __int128;

    VoxelTypes type;
    Wide whole = 0;
    double real = 0;

    bool isReal() const { return type == MOX_FLOAT32 || type == MOX_FLOAT64; }
    double asDouble() const { return isReal() ? real : static_cast<double>(whole); }
    float asFloat() const { return isReal() ? static_cast<float>(real) : static_cast<float>(whole); }

    /// The same type and value, zeros of both signs told apart, NaN equal to NaN.
    bool operator==(Number const& other) const
    {
        bool const sameReal = (std::isnan(real) && std::isnan(other.real)) ||
                              (real == other.real && std::signbit(real) == std::signbit(other.real));
        return type == other.type && whole == other.whole && sameReal;
    }
    friend std::ostream& operator<<(std::ostream& out, Number const& number)
    {
        return out << number.asDouble() << " of " << helper::getText(number.type).c_str();
    }
};

inline int bitsOf(VoxelTypes type)
{
    return static_cast<int>(8 * helper::getSizeOf(type));
}

inline bool isUnsigned(VoxelTypes type)
{
    return type <= MOX_UINT64;
}

/// Modulo the size of the type's range.
inline Number::Wide wrapped(Number::Wide value, int bits, bool isUnsignedType)
{
    Number::Wide const size = Number::Wide{1} << bits;
    Number::Wide const rest = ((value % size) + size) % size;
    return isUnsignedType || rest < size / 2 ? rest : rest - size;
}

template <class Real>
Real realResult(int arithmeticOperator, Real a, Real b)
{
    switch (arithmeticOperator) {
    case point_operations::ARITHMETIC_ADD:
        return a + b;
    case point_operations::ARITHMETIC_SUBTRACT:
        return a - b;
    case point_operations::ARITHMETIC_MULTIPLY:
        return a * b;
    case point_operations::ARITHMETIC_DIVIDE:
        return b == 0 ? Real(0) : a / b;
    case point_operations::ARITHMETIC_MINIMUM:
        return b < a ? b : a;
    default:
        return a < b ? b : a;
    }
}

/// The operands in their common type of at least 32 bits, the result still unbounded.
inline Number::Wide wholeResult(int arithmeticOperator, Number const& first, Number const& second)
{
    int const bits = std::max({32, bitsOf(first.type), bitsOf(second.type)});
    auto const decides = [&](Number const& n) { return bitsOf(n.type) == bits && isUnsigned(n.type); };
    bool const isUnsignedResult = decides(first) || decides(second);
    Number::Wide const a = wrapped(first.whole, bits, isUnsignedResult);
    Number::Wide const b = wrapped(second.whole, bits, isUnsignedResult);
    switch (arithmeticOperator) {
    case point_operations::ARITHMETIC_ADD:
        return wrapped(a + b, bits, isUnsignedResult);
    case point_operations::ARITHMETIC_SUBTRACT:
        return wrapped(a - b, bits, isUnsignedResult);
    case point_operations::ARITHMETIC_MULTIPLY: // the factors reduced first, so that the product fits
        return wrapped(wrapped(a, bits, true) * (wrapped(b, bits, true) % (Number::Wide{1} << 32)) +
                           wrapped((wrapped(a, bits, true) * (wrapped(b, bits, true) >> 32)), 32, true) *
                               (Number::Wide{1} << 32),
                       bits, isUnsignedResult);
    case point_operations::ARITHMETIC_DIVIDE:
        return b == 0 ? 0 : wrapped(a / b, bits, isUnsignedResult);
    case point_operations::ARITHMETIC_MINIMUM:
        return std::min(first.whole, second.whole);
    default:
        return std::max(first.whole, second.whole);
    }
}

/// The definition in wide arithmetic, for an output of the given type.
inline Number arithmeticReference(int arithmeticOperator, Number const& a, Number const& b, VoxelTypes output)
{
    if (a.type == MOX_FLOAT64 || b.type == MOX_FLOAT64) {
        return {output, 0, realResult<double>(arithmeticOperator, a.asDouble(), b.asDouble())};
    }
    if (a.isReal() || b.isReal()) {
        return {output, 0, realResult<float>(arithmeticOperator, a.asFloat(), b.asFloat())};
    }
    return {output, wrapped(wholeResult(arithmeticOperator, a, b), bitsOf(output), isUnsigned(output))};
}

/// The voxels of an image of one row or more, in memory order.
inline std::vector<Number> numbersOf(ImageModel const& image)
{
    std::vector<Number> numbers;
    dispatch(RealVoxels(), image.getVoxelType(), [&]<class T>() {
        for (T const voxel : voxelsOf<T>(image)) {
            if constexpr (std::is_floating_point_v<T>) {
                numbers.push_back({voxelTypeOf<T>, 0, static_cast<double>(voxel)});
            } else {
                numbers.push_back({voxelTypeOf<T>, voxel});
            }
        }
    });
    return numbers;
}

} // namespace mox::testing
