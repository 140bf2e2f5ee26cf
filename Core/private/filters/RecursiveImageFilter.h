#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/InMemoryImage.h>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <cassert>
#include <optional>
#include <type_traits>
#include <utility>

#include "Core/private/filters/Filter.h"
#include "Core/private/filters/Reach.h"
#include "Core/private/filters/pointKernel.h"

namespace mox {

/// Phases of a recursive filter: from the input image, or from what the filter wrote before. Only the second may
/// read and write one image.
struct InputToOutput {};
struct OutputToOutput {};

/// What the leaves of one phase share: the views, and the threads' row caches. When both views are on one image and
/// the kernel reaches beyond the voxel, rows are read as copies, and what a neighbouring leaf may still read is
/// held back until `flush`.
template <class In, class Out, class Arch, class Phase>
class RecursiveImageContext {
public:
    using InputView = ArchView<In, Arch>;
    using OutputView = ArchView<Out, Arch>;
    using InputCache = access::RowCacheRead<InputView>;
    using OutputCache = access::RowCacheReadWrite<OutputView>;

    struct Caches final : filters::ThreadStore::Item {
        Caches(InputView const& inputView, OutputView const& outputView, typename InputCache::Row::Source source)
            : input(inputView, source)
            , output(outputView)
        {
        }

        InputCache input;
        OutputCache output;
    };

    RecursiveImageContext(InputView const& input, OutputView const& output, filters::Reach const& reach)
        : input_(input)
        , output_(output)
        , reach_(reach)
        , holdsBack_(std::is_same_v<Phase, OutputToOutput> && reach != filters::Reach() && input.isOnSameImage(output))
    {
    }

    InputView const& input() const { return input_; }
    OutputView const& output() const { return output_; }

    filters::Borrowed<Caches> borrowCaches()
    {
        using Source = typename InputCache::Row::Source;
        return {store_, [this] {
                    return std::make_unique<Caches>(input_, output_, holdsBack_ ? Source::copied : Source::shared);
                }};
    }

    /// The part of a leaf that may be written at once; none where all may.
    std::optional<access::SafeBox> safeBox(access::Block const& leaf) const
    {
        return holdsBack_ ? std::optional(filters::safeBox(leaf, reach_, output_.sizes())) : std::nullopt;
    }

    /// Writes what was held back. To be called on one thread, after the parallel loop.
    void flush()
    {
        for (auto const& item : store_.takeAll()) {
            static_cast<Caches&>(*item).output.flushQueue();
        }
    }

private:
    InputView const& input_;
    OutputView const& output_;
    filters::Reach reach_;
    bool holdsBack_;
    filters::ThreadStore store_;
};

namespace filters {

/// Where a neighbourhood kernel reads: rows relative to its leaf, in slots of its choice, extended beyond the image.
template <class InputCache>
class RowSource {
public:
    RowSource(InputCache& cache, access::Block const& leaf)
        : cache_(cache)
        , leaf_(leaf)
    {
    }

    /// `length` voxels from column x on. They stay valid until the slot is used again.
    auto const* row(std::size_t slot, int x, int y, int z, unsigned int length)
    {
        return cache_.getRow(slot, length, leaf_, x, y, z, 0, 0).voxels();
    }

private:
    InputCache& cache_;
    access::Block const& leaf_;
};

/// Where a neighbourhood kernel writes: the rows of its leaf, one after the other, each complete before the next.
/// Row y of plan z may be written once the kernel no longer reads that row through the image.
template <class OutputCache>
class RowTarget {
public:
    RowTarget(OutputCache& cache, access::Block const& leaf, std::optional<access::SafeBox> const& box)
        : cache_(cache)
        , leaf_(leaf)
        , box_(box)
    {
    }

    /// Calls `fill` with the memory for row (y, z), as long as the leaf is wide, then flushes it.
    template <class Fill>
    void writeRow(int y, int z, Fill&& fill)
    {
        using ReadBack = typename OutputCache::Row::ReadBack;
        access::SafeBox const* const box = box_ ? &*box_ : nullptr;
        auto& row = cache_.getRow(0, leaf_.getNumOfColumns(), leaf_, 0, y, z, 0, 0, ReadBack::no, box);
        fill(row.voxels());
        cache_.flush(row, box);
    }

private:
    OutputCache& cache_;
    access::Block const& leaf_;
    std::optional<access::SafeBox> const& box_;
};

/// How far a kernel reads; point kernels do not tell and reach nowhere.
template <class Kernel>
Reach reachOf(Kernel const& kernel)
{
    if constexpr (requires { kernel.reach(); }) {
        return kernel.reach();
    } else {
        return {};
    }
}

} // namespace filters

/// Applies a kernel to a leaf, in 2D and in 3D: a point kernel row by row, a neighbourhood kernel by its operation
/// on leaves, `kernel(leaf, source, target)`.
template <class Kernel, class Context>
class TbbBodyRecursiveImage final : public filters::LeafWork {
public:
    TbbBodyRecursiveImage(Kernel const& kernel, Context& context)
        : kernel_(kernel)
        , context_(context)
    {
    }

    void operator()(access::Block const& leaf) override
    {
        using In = typename Context::InputView::Voxel;
        using Out = typename Context::OutputView::Voxel;
        auto const caches = context_.borrowCaches();
        if constexpr (filters::PointKernel<Kernel, In, Out>) {
            filters::applyToRows(kernel_, leaf, context_.input(), context_.output(), caches->input, caches->output);
        } else {
            auto const box = context_.safeBox(leaf);
            filters::RowSource source(caches->input, leaf);
            filters::RowTarget target(caches->output, leaf, box);
            kernel_(leaf, source, target);
        }
    }

private:
    Kernel const& kernel_;
    Context& context_;
};

/// Feeds its output back as its input for a number of iterations. Input and output may be one image. With more than
/// one iteration and memory for it, a temporary image takes turns with the output; otherwise the iterations work in
/// place. The result is the same.
template <class In, class Out, class Arch, class Kernel, class Dimensions>
class RecursiveImageFilter : public filters::Filter {
public:
    using InputView = ArchView<In, Arch>;
    using OutputView = ArchView<Out, Arch>;

    RecursiveImageFilter(BaseAlgorithm* owner, Kernel const& kernel)
        : Filter(owner)
        , kernel_(kernel)
    {
    }

    /// One pass of a longer run.
    RecursiveImageFilter(filters::PassSequence& run, Kernel const& kernel)
        : Filter(run)
        , kernel_(kernel)
    {
    }

    ~RecursiveImageFilter() override { detach(); }

    void setInput(boost::shared_ptr<InputView> view) { input_ = std::move(view); }
    void setOutput(boost::shared_ptr<OutputView> view) { output_ = std::move(view); }
    /// 1 unless set. More than one needs input and output voxels of one type.
    void setIterations(unsigned int iterations) { iterations_ = iterations; }

    void run()
    {
        access::Sizes const sizes = output_->sizes();
        announce(uint64{iterations_} * sizes.numOfVoxels());
        memory::InMemoryImage temporaryImage;
        boost::shared_ptr<OutputView> temporary;
        if (usesTemporaryImage(sizes)) {
            access::allocate(temporaryImage, output_->voxelType(), sizes);
            temporary = boost::make_shared<OutputView>(temporaryImage, output_->border());
        }
        forEachSlice(Dimensions(), sizes,
                     [&](filters::Slice const& slice) { runSlice(sizes, slice, temporary.get()); });
    }

private:
    /// The limit counts voxels, not bytes.
    bool usesTemporaryImage(access::Sizes const& sizes) const
    {
        int const limit = getPublicInterface() != nullptr ? getPublicInterface()->getMaximumExtraMemoryUsage() : 0;
        return iterations_ > 1 && limit > 0 && sizes.numOfVoxels() < static_cast<uint64>(limit) << 20U;
    }

    void runSlice(access::Sizes const& sizes, filters::Slice const& slice, OutputView const* temporary)
    {
        bool intoTemporary = temporary != nullptr && iterations_ % 2 == 0; // so that the last goes to the output
        for (unsigned int i = 0; i < iterations_ && !isStopped(); ++i) {
            OutputView const& target = intoTemporary ? *temporary : *output_;
            if (i == 0) {
                runFirst(sizes, slice, target);
            } else {
                OutputView const& writtenLast = temporary == nullptr || intoTemporary ? *output_ : *temporary;
                runPhase<OutputToOutput>(sizes, slice, writtenLast, target);
            }
            intoTemporary = temporary != nullptr && !intoTemporary;
        }
    }

    void runFirst(access::Sizes const& sizes, filters::Slice const& slice, OutputView const& target)
    {
        if (input_->isOnSameImage(*output_)) {
            runPhase<OutputToOutput>(sizes, slice, *input_, target);
        } else {
            runPhase<InputToOutput>(sizes, slice, *input_, target);
        }
    }

    template <class Phase, class SourceView>
    void runPhase(access::Sizes const& sizes, filters::Slice const& slice, SourceView const& source,
                  OutputView const& target)
    {
        // What reads its own output reads voxels of the output's type.
        if constexpr (std::is_same_v<Phase, InputToOutput> || std::is_same_v<In, Out>) {
            using PhaseContext = RecursiveImageContext<typename SourceView::Voxel, Out, Arch, Phase>;
            PhaseContext context(source, target, filters::reachOf(kernel_));
            TbbBodyRecursiveImage<Kernel, PhaseContext> body(kernel_, context);
            forEachLeaf(Dimensions(), sizes, slice, body);
            if (std::is_same_v<Phase, OutputToOutput> && !isStopped()) {
                context.flush();
            }
        } else {
            assert(false);
        }
    }

    Kernel const& kernel_;
    boost::shared_ptr<InputView> input_;
    boost::shared_ptr<OutputView> output_;
    unsigned int iterations_ = 1;
};

template <class In, class Out, class Arch, class Kernel>
using RecursiveImageFilter2d = RecursiveImageFilter<In, Out, Arch, Kernel, Filter2dTag>;
template <class In, class Out, class Arch, class Kernel>
using RecursiveImageFilter3d = RecursiveImageFilter<In, Out, Arch, Kernel, Filter3dTag>;

} // namespace mox
