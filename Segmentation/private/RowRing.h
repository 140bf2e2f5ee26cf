#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace mox::segmentation {

/// The rows that a window spans, kept while it moves down: row y takes the place of the row a window's height above.
template <class T>
class RowRing {
public:
    /// Forgets all rows.
    void reset(int numOfRows, std::size_t width)
    {
        width_ = width;
        owners_.assign(static_cast<std::size_t>(numOfRows), none);
        values_.resize(owners_.size() * width);
    }

    bool holds(int y) const { return owners_[slot(y)] == y; }
    T const* row(int y) const { return values_.data() + slot(y) * width_; }

    /// The place of a row that is about to be made.
    T* claim(int y)
    {
        owners_[slot(y)] = y;
        return values_.data() + slot(y) * width_;
    }

private:
    static constexpr int none = std::numeric_limits<int>::min();

    std::size_t slot(int y) const
    {
        auto const n = static_cast<int>(owners_.size());
        return static_cast<std::size_t>(((y % n) + n) % n);
    }

    std::size_t width_ = 0;
    std::vector<int> owners_;
    std::vector<T> values_;
};

} // namespace mox::segmentation
