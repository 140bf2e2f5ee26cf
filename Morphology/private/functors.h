#pragma once

#include <limits>

namespace mox::morphology::details {

// The candidate replaces the running value only when the strict comparison holds. So equal values never replace, a
// NaN candidate never does, and a NaN that comes first stays: on floating voxels the order of reading counts.

struct DilationFunctor {
    template <class T>
    static constexpr T outside = std::numeric_limits<T>::lowest();

    /// Of a floating type, the value that wins against nothing.
    template <class T>
    static constexpr T worst = -std::numeric_limits<T>::infinity();

    template <class T>
    constexpr T operator()(T running, T candidate) const
    {
        return running < candidate ? candidate : running;
    }
};

struct ErosionFunctor {
    template <class T>
    static constexpr T outside = std::numeric_limits<T>::max();

    template <class T>
    static constexpr T worst = std::numeric_limits<T>::infinity();

    template <class T>
    constexpr T operator()(T running, T candidate) const
    {
        return candidate < running ? candidate : running;
    }
};

} // namespace mox::morphology::details
