#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <optional>
#include <type_traits>
#include <vector>

#include "Core/private/filters/leafRows.h"
#include "Morphology/private/RowProgram.h"
#include "Morphology/private/RowReductionSimd.h"
#include "Morphology/private/holdsUnordered.h"

namespace mox::morphology {

namespace details {

/// One sweep of a program over a leaf.
template <class Functor, class Source>
class RowSweep {
public:
    using T = typename Source::Voxel;

    /// Voxels may be regrouped where any order of comparisons gives the same.
    RowSweep(RowProgram const& program, std::span<StageExtent const> extents, bool mayRegroup,
             access::Block const& leaf, Source& source)
        : program_(program)
        , mayRegroup_(mayRegroup)
        , source_(source)
        , image_(source.image())
        , columns_(static_cast<int>(leaf.getNumOfColumns()))
        , rows_(static_cast<int>(leaf.getNumOfRows()))
        , plans_(static_cast<int>(leaf.getNumOfPlans()))
    {
        for (StageExtent const& extent : extents) {
            stages_.emplace_back(extent, columns_, rows_);
        }
        layOut();
    }

    template <class Target>
    void run(Target& target)
    {
        int firstRow = 0;
        int firstPlan = 0;
        for (StageRows const& stage : stages_) {
            firstRow = std::min(firstRow, stage.least.row - stage.most.row);
            firstPlan = std::min(firstPlan, stage.least.plan - stage.most.plan);
        }
        for (int z = firstPlan; z < plans_; ++z) {
            for (int y = firstRow; y < rows_; ++y) {
                if (target.isStopped()) {
                    return;
                }
                makeRows(y, z, target);
            }
        }
    }

private:
    /// The rows of a stage that are kept, as wide as they are needed.
    struct StageRows {
        StageRows(StageExtent const& extent, int columns, int rows)
            : least(extent.around.least)
            , most(extent.around.most)
            , width(columns + most.column - least.column)
            , rowsKept(extent.plansKept == 1 ? extent.rowsKept : rows + most.row - least.row)
            , plansKept(extent.plansKept)
            , begins(static_cast<std::size_t>(rowsKept) * static_cast<std::size_t>(plansKept))
        {
        }

        /// Row y of plan z is made next.
        void moveTo(int y, int z)
        {
            newestRow = y;
            newestPlan = z;
            newestRowSlot = (y - least.row) % rowsKept;
            newestPlanSlot = (z - least.plan) % plansKept;
        }

        /// Of a row that is kept. No division: this is asked for each tap of each row.
        std::size_t slotOf(int y, int z) const
        {
            int const row = newestRowSlot - newestRow + y;
            if (plansKept == 1) {
                return static_cast<std::size_t>(row < 0 ? row + rowsKept : row);
            }
            int const plan = newestPlanSlot - newestPlan + z;
            return static_cast<std::size_t>((plan < 0 ? plan + plansKept : plan) * rowsKept + row);
        }

        kernel::Offset3D least;
        kernel::Offset3D most;
        int width;
        int rowsKept;
        int plansKept;
        std::vector<T const*> begins;
        int newestRow = 0;
        int newestPlan = 0;
        int newestRowSlot = 0;
        int newestPlanSlot = 0;
    };

    void layOut()
    {
        // Not a multiple of a page, at which rows would drive each other out of the cache.
        auto const strideOf = [](StageRows const& stage) {
            return (static_cast<std::size_t>(stage.width) * sizeof(T) / 64 + 1) * 64 / sizeof(T) + 64 / sizeof(T);
        };
        std::size_t count = 0;
        for (StageRows const& stage : inBetween()) {
            count += stage.begins.size() * strideOf(stage);
        }
        T* next = source_.scratch(count);
        for (StageRows& stage : inBetween()) {
            for (T const*& begin : stage.begins) {
                begin = next;
                next += strideOf(stage);
            }
        }
    }

    /// All stages but the image and the result.
    std::span<StageRows> inBetween() { return std::span(stages_).subspan(1, stages_.size() - 2); }

    /// For row (y, z) of the result, whether it is in the leaf or before it.
    template <class Target>
    void makeRows(int y, int z, Target& target)
    {
        for (std::size_t k = 0; k < stages_.size(); ++k) {
            StageRows& stage = stages_[k];
            int const row = y + stage.most.row;
            int const plan = z + stage.most.plan;
            if (row < stage.least.row || plan < stage.least.plan) {
                continue;
            }
            stage.moveTo(row, plan);
            if (k == 0) {
                std::size_t const slot = stage.slotOf(row, plan);
                stage.begins[slot] =
                    source_.row(slot, stage.least.column, row, plan, static_cast<unsigned int>(stage.width));
                nextOfImage_ = source_.ahead(row + 1, plan);
            } else if (k == program_.last()) {
                target.writeRow(row, plan, [&](T* out) {
                    reduce(k, row, plan, out, {nullptr, target.ahead(row + 1, plan)});
                });
            } else {
                makeRow(k, row, plan);
            }
        }
    }

    void makeRow(std::size_t k, int y, int z)
    {
        StageRows const& stage = stages_[k];
        T* const out = const_cast<T*>(stage.begins[stage.slotOf(y, z)]); // of the scratch memory
        Ahead<T> const ahead{k == 1 ? nextOfImage_ : nullptr, out};
        if (!program_.stages()[k].endsIteration) {
            reduce(k, y, z, out, ahead);
            return;
        }
        constexpr T outside = Functor::template outside<T>;
        if (y < image_.firstRow || y >= image_.endRow || z < image_.firstPlan || z >= image_.endPlan) {
            std::fill_n(out, stage.width, outside);
            return;
        }
        reduce(k, y, z, out, ahead);
        int const before = std::clamp(image_.firstColumn - stage.least.column, 0, stage.width);
        int const end = std::clamp(image_.endColumn - stage.least.column, before, stage.width);
        std::fill(out, out + before, outside);
        std::fill(out + end, out + stage.width, outside);
    }

    void reduce(std::size_t k, int y, int z, T* out, Ahead<T> const& ahead)
    {
        Stage const& stage = program_.stages()[k];
        StageRows const& made = stages_[k];
        seen_.clear();
        for (Tap const& tap : stage.taps) {
            StageRows const& read = stages_[tap.stage];
            T const* const begin = read.begins[read.slotOf(y + tap.offset.row, z + tap.offset.plan)];
            seen_.push_back(begin + made.least.column + tap.offset.column - read.least.column);
        }
        auto const width = static_cast<unsigned int>(made.width);
        if constexpr (std::is_floating_point_v<T>) {
            if (stage.passesOverNan) {
                RowReductionSimd<Functor>::pairOverNan(seen_.data(), out, width, ahead);
                return;
            }
        }
        if (mayRegroup_ && RowReductionSimd<Functor>::isRun(std::span<T const* const>(seen_))) {
            RowReductionSimd<Functor>::run(seen_.front(), seen_.size(), out, width, ahead);
            return;
        }
        RowReductionSimd<Functor>::row(seen_.data(), seen_.size(), out, width, ahead);
    }

    RowProgram const& program_;
    bool mayRegroup_;
    Source& source_;
    filters::Bounds image_;
    int columns_;
    int rows_;
    int plans_;
    std::vector<StageRows> stages_;
    std::vector<T const*> seen_;
    T const* nextOfImage_ = nullptr;
};

} // namespace details

/// Runs a program over a leaf. With a second one, that is for the leaves that hold voxels for which the first is not
/// right: those are found before anything is written.
template <class Functor>
class RowProgramKernel {
public:
    RowProgramKernel(RowProgram program, filters::LeafShape const& leaf)
        : programs_{std::move(program)}
        , leaf_(leaf)
    {
        extents_.push_back(extentsOf(programs_.front()));
    }

    /// For a chain, which stands for a number of iterations.
    RowProgramKernel(RowProgram folded, RowProgram literal, filters::LeafShape const& leaf, unsigned int iterations)
        : RowProgramKernel(std::move(folded), leaf)
    {
        programs_.push_back(std::move(literal));
        extents_.push_back(extentsOf(programs_.back()));
        iterations_ = iterations;
    }

    filters::Use use() const { return {reach().reach(), false, leaf_, iterations_}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        std::size_t chosen = 0;
        bool mayRegroup = true;
        if constexpr (std::is_floating_point_v<T>) {
            mayRegroup = programs_.size() > 1 && !holdsUnordered(leaf, reach(), source);
            chosen = programs_.size() > 1 && !mayRegroup ? 1 : 0;
        }
        details::RowSweep<Functor, Source>(programs_[chosen], extents_[chosen], mayRegroup, leaf, source).run(target);
    }

private:
    OffsetBox const& reach() const { return extents_.front().front().around; }

    std::vector<RowProgram> programs_;
    std::vector<std::vector<StageExtent>> extents_;
    filters::LeafShape leaf_;
    unsigned int iterations_ = 1;
};

} // namespace mox::morphology
