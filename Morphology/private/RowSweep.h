#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <type_traits>
#include <vector>

#include "Core/private/filters/leafRows.h"
#include "Morphology/private/LadderSimd.h"
#include "Morphology/private/RowProgram.h"
#include "Morphology/private/RowReductionSimd.h"
#include "Morphology/private/RunSimd.h"
#include "Morphology/private/StageRows.h"

namespace mox::morphology {

/// One sweep of a program over a leaf.
template <class Functor, class Source>
class RowSweep {
public:
    using T = typename Source::Voxel;

    /// Voxels may be regrouped where any order of comparisons gives the same.
    RowSweep(RowProgram const& program, std::span<StageExtent const> extents, bool mayRegroup,
             access::Block const& leaf, Source& source)
        : program_(program)
        , extents_(extents)
        , mayRegroup_(mayRegroup)
        , source_(source)
        , image_(source.image())
        , rows_(static_cast<int>(leaf.getNumOfRows()))
        , plans_(static_cast<int>(leaf.getNumOfPlans()))
    {
        for (StageExtent const& extent : extents) {
            stages_.emplace_back(extent, static_cast<int>(leaf.getNumOfColumns()), rows_, image_);
        }
        copiesImage_ = stages_.front().keepsMoreThanIsMade();
        layOut();
        for (std::size_t k = 0; k < stages_.size(); ++k) {
            jobs_.push_back(jobOf(k));
        }
    }

    template <class Target>
    void run(Target& target)
    {
        int firstRow = 0;
        int firstPlan = 0;
        for (Rows const& stage : stages_) {
            firstRow = std::min(firstRow, stage.startRow());
            firstPlan = std::min(firstPlan, stage.startPlan());
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
    using Rows = StageRows<T>;
    using Reduction = RowReductionSimd<Functor>;

    /// What the rows of a stage see through a tap.
    struct Sight {
        Rows const* rows;
        std::ptrdiff_t column; ///< in a kept row
        int row;
        int plan;

        T const* from(int y, int z) const { return rows->row(y + row, z + plan) + column; }
    };

    /// A stage as it is made row by row.
    struct Job {
        Stage const* stage;
        Form form; ///< `any` where a run must not be made in registers
        Rows* rows;
        std::ptrdiff_t firstMade; ///< in a kept row
        std::vector<Sight> sights;
    };

    static constexpr T outside = Functor::template outside<T>;

    /// Gives all stages but the result their rows. The image needs none where it is read in place.
    void layOut()
    {
        std::size_t const first = copiesImage_ ? 0 : 1;
        std::span const inBetween = std::span(stages_).subspan(first, program_.last() - first);
        std::vector<std::size_t> strides;
        std::size_t count = 0;
        for (Rows const& stage : inBetween) {
            strides.push_back(strideOfRow(stage.widthKept() * sizeof(T)) / sizeof(T));
            count += stage.numOfRows() * strides.back();
        }
        T* next = source_.scratch(count);
        for (std::size_t i = 0; i < inBetween.size(); ++i) {
            for (std::size_t slot = 0; slot < inBetween[i].numOfRows(); ++slot) {
                inBetween[i].setRow(slot, next);
                fillBesideImage(inBetween[i], next);
                next += strides[i];
            }
        }
    }

    /// The part of a kept row that is not made.
    static void fillBesideImage(Rows const& stage, T* kept)
    {
        T* const made = kept + (stage.firstMade() - stage.firstKept());
        std::fill(kept, made, outside);
        std::fill(made + stage.width(), kept + stage.widthKept(), outside);
    }

    /// With all that does not change from row to row.
    Job jobOf(std::size_t k)
    {
        Rows& made = stages_[k];
        StageExtent const& extent = extents_[k];
        bool const mayRun = mayRegroup_ || extent.readsNumbers;
        Job job{&program_.stages()[k],
                extent.form == Form::run && !mayRun ? Form::any : extent.form,
                &made,
                made.firstMade() - made.firstKept(),
                {}};
        for (Tap const& tap : job.stage->taps) {
            Rows const& read = stages_[tap.stage];
            job.sights.push_back(
                {&read, made.firstMade() + tap.offset.column - read.firstKept(), tap.offset.row, tap.offset.plan});
        }
        return job;
    }

    /// For row (y, z) of the result, whether it is in the leaf or before it.
    template <class Target>
    void makeRows(int y, int z, Target& target)
    {
        readImage(y, z);
        for (std::size_t k = 1; k < program_.last(); ++k) {
            if (!stages_[k].hasRowFor(y, z)) {
                continue;
            }
            T const* const next = k == 1 ? nextOfImage_ : nullptr;
            if (jobs_[k].form == Form::rung) {
                k = climb(k, y, z, next);
            } else {
                makeRow(jobs_[k], y, z, next);
            }
        }
        if (y >= 0 && z >= 0) {
            target.writeRow(y, z, [&](T* out) { reduce(jobs_.back(), y, z, out, {nullptr, target.ahead(y + 1, z)}); });
        }
    }

    void readImage(int y, int z)
    {
        Rows& image = stages_.front();
        if (!image.hasRowFor(y, z)) {
            return;
        }
        int const row = image.rowFor(y);
        int const plan = image.planFor(z);
        image.moveTo(row, plan);
        nextOfImage_ = source_.ahead(row + 1, plan);
        if (!copiesImage_) {
            std::size_t const slot = image.slot(row, plan);
            image.setRow(slot, source_.row(slot, image.firstMade(), row, plan, image.width()));
            return;
        }
        T* const out = madeRow(jobs_.front(), row, plan);
        if (isInImage(row, plan)) {
            std::copy_n(source_.row(0, image.firstMade(), row, plan, image.width()), image.width(), out);
        } else {
            std::fill_n(out, image.width(), outside);
        }
    }

    bool isInImage(int y, int z) const
    {
        return y >= image_.firstRow && y < image_.endRow && z >= image_.firstPlan && z < image_.endPlan;
    }

    /// A row in the scratch memory.
    static T* madeRow(Job const& job, int y, int z) { return const_cast<T*>(job.rows->row(y, z)) + job.firstMade; }

    /// Makes a rung and those above it together, and returns the last one.
    std::size_t climb(std::size_t first, int yOfResult, int zOfResult, T const* nextOfImage)
    {
        std::array<Rung<T>, LadderSimd<Functor>::mostRungs> rungs;
        std::size_t count = 0;
        T const* newest = nullptr;
        for (Job const* job = &jobs_[first];
             count < rungs.size() && job->form == Form::rung && job->rows->hasRowFor(yOfResult, zOfResult); ++job) {
            int const y = job->rows->rowFor(yOfResult);
            int const z = job->rows->planFor(zOfResult);
            job->rows->moveTo(y, z);
            newest = count == 0 ? job->sights[1].from(y, z) : newest;
            rungs[count++] = {job->sights[0].from(y, z), madeRow(*job, y, z)};
        }
        bool const passesOverNan = std::is_floating_point_v<T> && jobs_[first].stage->passesOverNan;
        auto const climbAll = passesOverNan ? LadderSimd<Functor>::template climb<std::is_floating_point_v<T>, T>
                                            : LadderSimd<Functor>::template climb<false, T>;
        climbAll(newest, std::span(rungs).first(count), stages_[first].width(), {nextOfImage, nullptr});
        return first + count - 1;
    }

    /// A row of a stage with which row (y, z) of the result is made.
    void makeRow(Job const& job, int yOfResult, int zOfResult, T const* nextOfImage)
    {
        int const y = job.rows->rowFor(yOfResult);
        int const z = job.rows->planFor(zOfResult);
        job.rows->moveTo(y, z);
        T* const out = madeRow(job, y, z);
        if (job.stage->endsIteration && !isInImage(y, z)) {
            std::fill_n(out, job.rows->width(), outside);
            return;
        }
        reduce(job, y, z, out, {nextOfImage, out});
    }

    void reduce(Job const& job, int y, int z, T* out, Ahead<T> const& ahead)
    {
        std::size_t const width = job.rows->width();
        if (job.form == Form::run) {
            Sight const& sight = job.sights.front();
            bool const isInPlace = sight.rows == &stages_.front() && !copiesImage_;
            std::size_t const room = isInPlace ? 0 : roomBehindRow / sizeof(T);
            std::span const row(sight.from(y, z), width + job.sights.size() - 1 + room);
            RunSimd<Functor>::run(row, job.sights.size(), out, width, ahead);
            return;
        }
        seen_.resize(job.sights.size());
        std::transform(job.sights.begin(), job.sights.end(), seen_.begin(),
                       [&](Sight const& sight) { return sight.from(y, z); });
        if constexpr (std::is_floating_point_v<T>) {
            if (job.stage->passesOverNan) {
                Reduction::pairOverNan(seen_.data(), out, width, ahead);
                return;
            }
        }
        Reduction::row(seen_.data(), seen_.size(), out, width, ahead);
    }

    RowProgram const& program_;
    std::span<StageExtent const> extents_;
    bool mayRegroup_;
    Source& source_;
    filters::Bounds image_;
    int rows_;
    int plans_;
    std::vector<Rows> stages_;
    bool copiesImage_ = false; ///< beside which the value outside is written
    std::vector<Job> jobs_;
    std::vector<T const*> seen_;
    T const* nextOfImage_ = nullptr;
};

} // namespace mox::morphology
