#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "Core/private/filters/leafRows.h"
#include "Morphology/private/RowProgram.h"

namespace mox::morphology {

/// The rows of a stage that are kept during a sweep over a leaf: in the plane a ring of rows, in space a ring of plans
/// with all rows that the leaf needs of them.
template <class T>
class StageRows {
public:
    StageRows(StageExtent const& extent, int columns, int rows, filters::Bounds const& image)
        : least_(extent.around.least)
        , most_(extent.around.most)
        , made_{least_.column, columns + most_.column}
        , kept_(made_)
        , isInPlane_(extent.plansKept == 1)
        , rowsKept_(isInPlane_ ? extent.rowsKept : rows + most_.row - least_.row)
        , plansKept_(extent.plansKept)
        , begins_(numOfRows() * (isInPlane_ ? 2 : 1))
        , rowOrigin_(isInPlane_ ? 0 : -least_.row)
        , newestPlan_(least_.plan)
    {
        if (extent.isOutsideBesideImage) {
            made_.first = std::clamp(image.firstColumn, kept_.first, kept_.end);
            made_.end = std::clamp(image.endColumn, made_.first, kept_.end);
        }
        if (!extent.isReadBesideImage) {
            kept_ = made_;
        }
    }

    /// The columns that are made. Those kept beside them are the value outside.
    int firstMade() const { return made_.first; }
    int endMade() const { return made_.end; }
    unsigned int width() const { return static_cast<unsigned int>(made_.end - made_.first); }

    int firstKept() const { return kept_.first; }
    std::size_t widthKept() const { return static_cast<std::size_t>(kept_.end - kept_.first); }
    std::size_t numOfRows() const { return static_cast<std::size_t>(rowsKept_) * static_cast<std::size_t>(plansKept_); }

    bool keepsMoreThanIsMade() const { return widthKept() != width(); }

    /// Rows run ahead of those of the result by as many as the stage is read further on.
    int rowFor(int rowOfResult) const { return rowOfResult + most_.row; }
    int planFor(int planOfResult) const { return planOfResult + most_.plan; }
    /// The first row and plan of the result with which a row is made.
    int startRow() const { return least_.row - most_.row; }
    int startPlan() const { return least_.plan - most_.plan; }
    bool hasRowFor(int rowOfResult, int planOfResult) const
    {
        return rowOfResult >= startRow() && planOfResult >= startPlan();
    }

    /// Row y of plan z is made next: the row after the last one, or the first of the next plan.
    void moveTo(int y, int z)
    {
        if (isInPlane_) {
            newestRowSlot_ = y == least_.row || newestRowSlot_ + 1 == rowsKept_ ? 0 : newestRowSlot_ + 1;
            rowOrigin_ = newestRowSlot_ + rowsKept_ - y;
        } else if (z != newestPlan_) {
            newestPlan_ = z;
            newestPlanSlot_ = newestPlanSlot_ + 1 == plansKept_ ? 0 : newestPlanSlot_ + 1;
        }
    }

    /// The number of the row that is made next.
    std::size_t slot(int y, int z) const { return isInPlane_ ? static_cast<std::size_t>(newestRowSlot_) : index(y, z); }

    void setRow(std::size_t slot, T const* begin)
    {
        begins_[slot] = begin;
        if (isInPlane_) {
            begins_[slot + numOfRows()] = begin;
        }
    }

    /// The beginning of a kept row.
    T const* row(int y, int z) const { return begins_[index(y, z)]; }

private:
    /// No division and in the plane no branch: this is asked for each tap of each row. There the rows are listed twice,
    /// so that those before the newest one lie before it in the list too. Of four rows kept, when row 9 is the newest:
    ///
    ///     slot     0  1  2  3 | 4  5  6  7
    ///     row      8  9  6  7 | 8  9  6  7      6 to 9 are the list's 2 to 5
    std::size_t index(int y, int z) const
    {
        if (isInPlane_) {
            return static_cast<std::size_t>(rowOrigin_ + y);
        }
        int const plan = newestPlanSlot_ - newestPlan_ + z;
        return static_cast<std::size_t>((plan < 0 ? plan + plansKept_ : plan) * rowsKept_ + rowOrigin_ + y);
    }

    struct Columns {
        int first;
        int end;
    };

    kernel::Offset3D least_;
    kernel::Offset3D most_;
    Columns made_;
    Columns kept_;
    bool isInPlane_;
    int rowsKept_;
    int plansKept_;
    std::vector<T const*> begins_;
    int rowOrigin_;
    int newestPlan_;
    int newestRowSlot_ = 0;
    int newestPlanSlot_ = 0;
};

} // namespace mox::morphology
