#pragma once

#include <cmath>
#include <concepts>
#include <cstddef>
#include <limits>
#include <type_traits>

namespace mox::point_operations {

/// The square root of the sum of the squares.
template <class T>
class GradientEuclideanScalarGeneric {
public:
    void row(T const* x, T const* y, T const* z, T* out, std::size_t count) const
    {
#pragma GCC ivdep // out is the same row as an input or does not overlap it
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = converted(std::sqrt(square(x[i]) + square(y[i]) + square(z[i])));
        }
    }

private:
    static double square(T component)
    {
        return static_cast<double>(component) * static_cast<double>(component);
    }

    static T converted(double amplitude)
    {
        if constexpr (std::is_floating_point_v<T>) {
            return static_cast<T>(amplitude);
        } else if constexpr (sizeof(T) < 8) {
            constexpr auto largest = static_cast<double>(std::numeric_limits<T>::max());
            return static_cast<T>(amplitude < largest ? amplitude : largest);
        } else {
            constexpr auto bound = static_cast<double>(std::numeric_limits<T>::max()); // rounds up, out of range
            return amplitude < bound ? static_cast<T>(amplitude) : std::numeric_limits<T>::max();
        }
    }
};

/// The largest absolute value.
template <class T>
class GradientMaximumScalarGeneric {
public:
    void row(T const* x, T const* y, T const* z, T* out, std::size_t count) const
    {
#pragma GCC ivdep // out is the same row as an input or does not overlap it
        for (std::size_t i = 0; i < count; ++i) {
            auto const ofTwo = larger(magnitude(x[i]), magnitude(y[i]));
            out[i] = converted(larger(ofTwo, magnitude(z[i])));
        }
    }

private:
    template <class U>
    static U larger(U a, U b)
    {
        return a < b ? b : a;
    }

    static auto magnitude(T component)
    {
        if constexpr (std::is_floating_point_v<T>) {
            return std::abs(component);
        } else if constexpr (std::is_unsigned_v<T>) {
            return component;
        } else {
            using U = std::make_unsigned_t<T>;
            auto const bits = static_cast<U>(component);
            return static_cast<U>(component < 0 ? U(0) - bits : bits);
        }
    }

    template <class U>
    static T converted(U amplitude)
    {
        if constexpr (std::signed_integral<T>) {
            constexpr auto largest = static_cast<U>(std::numeric_limits<T>::max());
            return static_cast<T>(amplitude < largest ? amplitude : largest);
        } else {
            return amplitude;
        }
    }
};

} // namespace mox::point_operations
