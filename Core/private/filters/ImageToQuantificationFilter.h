#pragma once

#include <boost/shared_ptr.hpp>

#include <memory>
#include <optional>
#include <utility>

#include "Core/private/filters/Filter.h"
#include "Core/private/filters/Reduction.h"
#include "Core/private/filters/ThreadStore.h"
#include "Core/private/filters/pointKernel.h"

namespace mox {

/// What the leaves of one slice share: the view, and the threads' row caches.
template <class T, class Arch>
class ImageToQuantificationContext {
public:
    using InputView = ArchView<T, Arch>;

    struct Cache final : filters::ThreadStore::Item {
        explicit Cache(InputView const& view)
            : rows(view)
        {
        }

        access::RowCacheRead<InputView> rows;
    };

    explicit ImageToQuantificationContext(InputView const& input)
        : input_(input)
    {
    }

    InputView const& input() const { return input_; }

    filters::Borrowed<Cache> borrowCache()
    {
        return {threadCaches_, [this] { return std::make_unique<Cache>(input_); }};
    }

private:
    InputView const& input_;
    filters::ThreadStore threadCaches_;
};

/// Folds the voxels of leaves into a running result, which is the kernel: `row(voxels, count)` adds voxels, `join`
/// adds the result of later ones. Rows whose length is a multiple of `numOfLanes` may be given as one.
template <class Kernel, class Context>
class TbbBodyImageToQuantification final : public filters::Reduction {
public:
    explicit TbbBodyImageToQuantification(Context& context)
        : context_(context)
    {
    }

    Kernel const& result() const { return result_; }

    void fold(access::Block const& leaf) override
    {
        auto const& input = context_.input();
        unsigned int const columns = leaf.getNumOfColumns();
        unsigned int const rows = leaf.getNumOfRows();
        bool const oneStretchPerPlan =
            input.isContiguous() && columns == input.sizes().columns && columns % Kernel::numOfLanes == 0;
        auto const cache = context_.borrowCache();
        access::Position plan = access::detail::within(leaf, 0, 0, 0, 0, 0);
        for (unsigned int z = 0; z < leaf.getNumOfPlans(); ++z, ++plan.z) {
            if (oneStretchPerPlan) {
                result_.row(input.pointer(plan, columns), std::size_t{columns} * rows);
                continue;
            }
            access::Position line = plan;
            for (unsigned int y = 0; y < rows; ++y, ++line.y) {
                result_.row(cache->rows.getRow(0, columns, line).voxels(), columns);
            }
        }
    }

    std::unique_ptr<Reduction> fresh() const override
    {
        return std::make_unique<TbbBodyImageToQuantification>(context_);
    }

    void join(Reduction& following) noexcept override
    {
        result_.join(static_cast<TbbBodyImageToQuantification const&>(following).result_);
    }

private:
    Kernel result_;
    Context& context_;
};

/// Makes numbers of one image. The result depends on the image alone, not on threads: leaves and the order of their
/// joins follow from the sizes.
template <class T, class Arch, class Kernel, class Dimensions>
class ImageToQuantificationFilter : public filters::Filter {
public:
    using InputView = ArchView<T, Arch>;

    explicit ImageToQuantificationFilter(BaseAlgorithm* owner)
        : Filter(owner)
    {
    }

    ~ImageToQuantificationFilter() override { detach(); }

    void setInput(boost::shared_ptr<InputView> view) { input_ = std::move(view); }

    /// The result over the whole image; none of a run that was cancelled.
    std::optional<Kernel> run()
    {
        Kernel whole;
        access::Sizes const sizes = input_->sizes();
        announce(sizes.numOfVoxels());
        forEachSlice(Dimensions(), sizes, [&](filters::Slice const& slice) {
            using SliceContext = ImageToQuantificationContext<T, Arch>;
            SliceContext context(*input_);
            TbbBodyImageToQuantification<Kernel, SliceContext> body(context);
            reduceLeaves(Dimensions(), sizes, slice, body);
            whole.join(body.result());
        });
        return isStopped() ? std::nullopt : std::optional(whole);
    }

private:
    boost::shared_ptr<InputView> input_;
};

template <class T, class Arch, class Kernel>
using ImageToQuantificationFilter2d = ImageToQuantificationFilter<T, Arch, Kernel, Filter2dTag>;
template <class T, class Arch, class Kernel>
using ImageToQuantificationFilter3d = ImageToQuantificationFilter<T, Arch, Kernel, Filter3dTag>;

} // namespace mox
