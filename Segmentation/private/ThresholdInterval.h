#pragma once

#include <cmath>
#include <concepts>
#include <limits>
#include <type_traits>

namespace mox::segmentation {

/// The voxels v of type T for which neither `low > double(v)` nor `double(v) > high`. An end that is NaN bounds
/// nothing, and a NaN voxel belongs to every interval, the empty one included.
template <class T>
class ThresholdInterval;

/// Conversion to double is monotone, so that the accepted integers are one interval of their own type. Both ends are
/// found once, with the very comparison of the definition; a voxel then costs one subtraction and one comparison.
template <std::integral T>
class ThresholdInterval<T> {
public:
    ThresholdInterval(double low, double high)
    {
        auto const isBelow = [&](T voxel) { return low > static_cast<double>(voxel); };
        auto const isAbove = [&](T voxel) { return static_cast<double>(voxel) > high; };
        if (isBelow(highest) || isAbove(lowest)) {
            return;
        }
        T const first = lowestWhere([&](T voxel) { return !isBelow(voxel); });
        T const last = isAbove(highest) ? static_cast<T>(lowestWhere(isAbove) - 1) : highest;
        empty_ = first > last;
        first_ = static_cast<U>(first);
        span_ = static_cast<U>(static_cast<U>(last) - first_);
    }

    bool isEmpty() const { return empty_; }

    /// Unless the interval is empty.
    bool contains(T voxel) const { return static_cast<U>(static_cast<U>(voxel) - first_) <= span_; }

private:
    using U = std::make_unsigned_t<T>;

    static constexpr T lowest = std::numeric_limits<T>::lowest();
    static constexpr T highest = std::numeric_limits<T>::max();

    /// For a condition that holds from some value on, up to the highest.
    template <class Condition>
    static T lowestWhere(Condition const& holds)
    {
        auto const valueAt = [](U offset) { return static_cast<T>(static_cast<U>(static_cast<U>(lowest) + offset)); };
        U begin = 0;
        U end = std::numeric_limits<U>::max();
        while (begin < end) {
            U const middle = static_cast<U>(begin + (end - begin) / 2);
            if (holds(valueAt(middle))) {
                end = middle;
            } else {
                begin = static_cast<U>(middle + 1);
            }
        }
        return valueAt(begin);
    }

    bool empty_ = true;
    U first_ = 0;
    U span_ = 0;
};

/// The ends are rounded inwards to T, so that voxels are compared in their own type.
template <std::floating_point T>
class ThresholdInterval<T> {
public:
    ThresholdInterval(double low, double high)
        : low_(static_cast<T>(low))
        , high_(static_cast<T>(high))
    {
        constexpr T infinity = std::numeric_limits<T>::infinity();
        if (static_cast<double>(low_) < low) {
            low_ = std::nextafter(low_, infinity);
        }
        if (static_cast<double>(high_) > high) {
            high_ = std::nextafter(high_, -infinity);
        }
    }

    /// No interval is: each admits NaN.
    bool isEmpty() const { return false; }

    /// `|` rather than `||`, which would keep the loop from being vectorised.
    bool contains(T voxel) const { return !((low_ > voxel) | (voxel > high_)); }

private:
    T low_;
    T high_;
};

} // namespace mox::segmentation
