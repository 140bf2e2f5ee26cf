#pragma once

#include <vector>

#include "Morphology/private/neighborhoods.h"

namespace mox::morphology {

/// The rows that an element sees from the rows of a leaf, each fetched once: in the plane a ring of as many rows as
/// the element is high, in space a ring of as many plans of the leaf as it is deep. An element holds the origin, so
/// that rows are fetched before the leaf's own row is written.
///
/// `fetch(slot, y, z)` gives a row in any form; what it gave stays valid until the slot is used again.
template <class Fetch>
class ElementRows {
public:
    using Row = std::invoke_result_t<Fetch&, std::size_t, int, int>;

    ElementRows(OffsetBox const& box, unsigned int rowsOfLeaf, Fetch fetch)
        : box_(box)
        , fetch_(std::move(fetch))
        , rows_(static_cast<int>(rowsOfLeaf))
        , height_(box.most.row - box.least.row + 1)
        , depth_(box.most.plan - box.least.plan + 1)
        , slots_(static_cast<std::size_t>(depth_ == 1 ? height_ : depth_ * (rows_ + height_ - 1)))
    {
    }

    /// To be called for the rows of the leaf in order, plan by plan.
    void moveTo(int y, int z)
    {
        y_ = y;
        z_ = z;
        if (depth_ == 1) {
            fetchRows(y == 0 ? box_.least.row : y + box_.most.row, y + box_.most.row, z + box_.most.plan);
        } else if (y == 0) {
            for (int plan = z == 0 ? box_.least.plan : z + box_.most.plan; plan <= z + box_.most.plan; ++plan) {
                fetchRows(box_.least.row, rows_ - 1 + box_.most.row, plan);
            }
        }
    }

    /// The row at an offset from the present one.
    Row const& at(int row, int plan) const { return slots_[slotOf(y_ + row, z_ + plan)]; }

private:
    std::size_t slotOf(int y, int z) const
    {
        int const row = y - box_.least.row;
        int const plan = z - box_.least.plan;
        return static_cast<std::size_t>(depth_ == 1 ? row % height_ : plan % depth_ * (rows_ + height_ - 1) + row);
    }

    void fetchRows(int first, int last, int z)
    {
        for (int y = first; y <= last; ++y) {
            std::size_t const slot = slotOf(y, z);
            slots_[slot] = fetch_(slot, y, z);
        }
    }

    OffsetBox box_;
    Fetch fetch_;
    int rows_;
    int height_;
    int depth_;
    std::vector<Row> slots_;
    int y_ = 0;
    int z_ = 0;
};

} // namespace mox::morphology
