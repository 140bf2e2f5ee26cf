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
#include "Core/private/filters/leafRows.h"
#include "Core/private/filters/pointKernel.h"

namespace mox {

/// Phases of a recursive filter: from the input image, or from what the filter wrote before. Only the second may
/// read and write one image.
struct InputToOutput {};
struct OutputToOutput {};

/// What the leaves of one phase share: the views, and the threads' row caches. When both views are on one image and
/// the kernel reaches beyond the voxel, what a neighbouring leaf may still read is held back until `flush`, and rows
/// are read as copies, unless the kernel has no use for a row that it has written.
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
        filters::Scratch<InputView> scratch;
    };

    RecursiveImageContext(InputView const& input, OutputView const& output, filters::Use const& use,
                          filters::Filter const* run = nullptr)
        : input_(input)
        , output_(output)
        , use_(use)
        , run_(run)
        , holdsBack_(std::is_same_v<Phase, OutputToOutput> && use.reach != filters::Reach() &&
                     input.isOnSameImage(output))
    {
    }

    InputView const& input() const { return input_; }
    OutputView const& output() const { return output_; }

    filters::Borrowed<Caches> borrowCaches()
    {
        using Source = typename InputCache::Row::Source;
        Source const source = holdsBack_ && !use_.readsAhead ? Source::copied : Source::shared;
        return {store_, [this, source] { return std::make_unique<Caches>(input_, output_, source); }};
    }

    /// The part of a leaf that may be written at once; none where all may.
    std::optional<access::SafeBox> safeBox(access::Block const& leaf) const
    {
        return holdsBack_ ? std::optional(filters::safeBox(leaf, use_.reach, output_.sizes())) : std::nullopt;
    }

    /// Null in a context of a test.
    filters::Filter const* run() const { return run_; }

    /// Writes what was held back. To be called on one thread, after the parallel loop.
    void flush()
    {
        for (auto* const item : store_.all()) {
            static_cast<Caches*>(item)->output.flushQueue();
        }
    }

private:
    InputView const& input_;
    OutputView const& output_;
    filters::Use use_;
    filters::Filter const* run_;
    bool holdsBack_;
    filters::ThreadStore store_;
};

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
            filters::RowSource source(caches->input, caches->scratch, leaf);
            filters::RowTarget target(caches->output, leaf, box, context_.run());
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
        if (iterations_ == 0) {
            return;
        }
        memory::InMemoryImage temporaryImage;
        boost::shared_ptr<OutputView> temporary;
        if (usesTemporaryImage(sizes)) {
            access::allocate(temporaryImage, output_->voxelType(), sizes);
            temporary = boost::make_shared<OutputView>(temporaryImage, output_->border());
        }
        // What reads its own output reads voxels of the output's type.
        if constexpr (std::is_same_v<In, Out>) {
            if (iterations_ > 1 || input_->isOnSameImage(*output_)) {
                iterate(sizes, temporary != nullptr ? *temporary : *output_);
                return;
            }
        }
        assert(iterations_ == 1);
        Phase<InputToOutput, InputView> phase(*this, *input_, *output_);
        forEachSlice(Dimensions(), sizes, [&](filters::Slice const& slice) { phase.run(sizes, slice); });
    }

private:
    /// The limit counts voxels, not bytes.
    bool usesTemporaryImage(access::Sizes const& sizes) const
    {
        int const limit = getPublicInterface() != nullptr ? getPublicInterface()->getMaximumExtraMemoryUsage() : 0;
        return iterations_ > 1 && limit > 0 && sizes.numOfVoxels() < static_cast<uint64>(limit) << 20U;
    }

    template <class Tag, class SourceView>
    class Phase {
    public:
        Phase(RecursiveImageFilter& filter, SourceView const& source, OutputView const& target)
            : filter_(filter)
            , context_(source, target, filters::useOf(filter.kernel_), &filter)
            , body_(filter.kernel_, context_)
        {
        }

        void run(access::Sizes const& sizes, filters::Slice const& slice)
        {
            filter_.forEachLeaf(Dimensions(), sizes, slice, body_);
            if (std::is_same_v<Tag, OutputToOutput> && !filter_.isStopped()) {
                context_.flush();
            }
        }

    private:
        using Context = RecursiveImageContext<typename SourceView::Voxel, Out, Arch, Tag>;

        RecursiveImageFilter& filter_;
        Context context_;
        TbbBodyRecursiveImage<Kernel, Context> body_;
    };

    /// With an image that takes turns with the output, or is the output.
    void iterate(access::Sizes const& sizes, OutputView const& other)
    {
        if (input_->isOnSameImage(*output_)) {
            iterateFrom<OutputToOutput>(sizes, other);
        } else {
            iterateFrom<InputToOutput>(sizes, other);
        }
    }

    template <class FirstTag>
    void iterateFrom(access::Sizes const& sizes, OutputView const& other)
    {
        bool const takesTurns = &other != output_.get();
        auto const writesOutput = [&](unsigned int i) { return !takesTurns || (iterations_ - i) % 2 == 1; };
        Phase<FirstTag, InputView> first(*this, *input_, writesOutput(0) ? *output_ : other);
        Phase<OutputToOutput, OutputView> toOutput(*this, other, *output_);
        Phase<OutputToOutput, OutputView> toOther(*this, *output_, other);
        forEachSlice(Dimensions(), sizes, [&](filters::Slice const& slice) {
            first.run(sizes, slice);
            for (unsigned int i = 1; i < iterations_ && !isStopped(); ++i) {
                (writesOutput(i) ? toOutput : toOther).run(sizes, slice);
            }
        });
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
