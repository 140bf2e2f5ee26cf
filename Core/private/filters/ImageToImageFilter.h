#pragma once

#include <boost/shared_ptr.hpp>

#include <utility>

#include "Core/private/filters/Filter.h"
#include "Core/private/filters/pointKernel.h"

namespace mox {

/// What the leaves of one slice share: the views, and the threads' row caches.
template <class In, class Out, class Arch>
class ImageToImageContext {
public:
    using InputView = ArchView<In, Arch>;
    using OutputView = ArchView<Out, Arch>;

    struct Caches final : filters::ThreadStore::Item {
        Caches(InputView const& inputView, OutputView const& outputView)
            : input(inputView)
            , output(outputView)
        {
        }

        access::RowCacheRead<InputView> input;
        access::RowCacheReadWrite<OutputView> output;
    };

    ImageToImageContext(InputView const& input, OutputView const& output)
        : input_(input)
        , output_(output)
    {
    }

    InputView const& input() const { return input_; }
    OutputView const& output() const { return output_; }

    filters::Borrowed<Caches> borrowCaches()
    {
        return {store_, [this] { return std::make_unique<Caches>(input_, output_); }};
    }

private:
    InputView const& input_;
    OutputView const& output_;
    filters::ThreadStore store_;
};

/// Applies a point kernel to a leaf, in 2D and in 3D.
template <class Kernel, class Context>
class TbbBodyImageToImage final : public filters::LeafWork {
public:
    TbbBodyImageToImage(Kernel const& kernel, Context& context)
        : kernel_(kernel)
        , context_(context)
    {
    }

    void operator()(access::Block const& leaf) override
    {
        auto const caches = context_.borrowCaches();
        filters::applyToRows(kernel_, leaf, context_.input(), context_.output(), caches->input, caches->output);
    }

private:
    Kernel const& kernel_;
    Context& context_;
};

/// Carries a point kernel from a typed runner to the last voxel: one input image, one output image of the same
/// sizes, which may be the same image.
template <class In, class Out, class Arch, class Kernel, class Dimensions, class Reduction>
class ImageToImageFilter : public filters::Filter {
public:
    using InputView = ArchView<In, Arch>;
    using OutputView = ArchView<Out, Arch>;

    ImageToImageFilter(BaseAlgorithm* owner, Kernel const& kernel)
        : Filter(owner)
        , kernel_(kernel)
    {
    }

    ~ImageToImageFilter() override { detach(); }

    void setInput(boost::shared_ptr<InputView> view) { input_ = std::move(view); }
    void setOutput(boost::shared_ptr<OutputView> view) { output_ = std::move(view); }

    void run()
    {
        access::Sizes const sizes = output_->sizes();
        announce(sizes.numOfVoxels());
        forEachSlice(Dimensions(), sizes, [&](filters::Slice const& slice) {
            using SliceContext = ImageToImageContext<In, Out, Arch>;
            SliceContext context(*input_, *output_);
            TbbBodyImageToImage<Kernel, SliceContext> body(kernel_, context);
            forEachLeaf(Dimensions(), sizes, slice, body);
        });
    }

private:
    Kernel const& kernel_;
    boost::shared_ptr<InputView> input_;
    boost::shared_ptr<OutputView> output_;
};

template <class In, class Out, class Arch, class Kernel>
using ImageToImageFilter2d = ImageToImageFilter<In, Out, Arch, Kernel, Filter2dTag, FilterWithoutReductionTag>;
template <class In, class Out, class Arch, class Kernel>
using ImageToImageFilter3d = ImageToImageFilter<In, Out, Arch, Kernel, Filter3dTag, FilterWithoutReductionTag>;

} // namespace mox
