#pragma once

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "Core/private/filters/Filter.h"
#include "Core/private/filters/leafRows.h"
#include "Core/private/filters/pointKernel.h"

namespace mox {

/// What the leaves of one run share: the views, and the threads' row caches.
template <class InputTypes, class OutputTypes, class Arch>
class ManyToManyImageContext;

template <class... In, class... Out, class Arch>
class ManyToManyImageContext<TypeVector<In...>, TypeVector<Out...>, Arch> {
public:
    /// Throws `boost::bad_any_cast` for a view of another type than the lists tell.
    ManyToManyImageContext(std::vector<boost::any> const& inputs, std::vector<boost::any> const& outputs,
                           filters::Filter const* run)
        : inputs_(viewsOf<In...>(inputs, std::index_sequence_for<In...>()))
        , outputs_(viewsOf<Out...>(outputs, std::index_sequence_for<Out...>()))
        , run_(run)
    {
    }

    /// Calls the kernel with the leaf, a source per input, a target per output, then the value that it adds to, if any.
    template <class Kernel, class... Value>
    void apply(Kernel const& kernel, access::Block const& leaf, Value&... value)
    {
        filters::Borrowed<Caches> const caches(store_, [this] { return std::make_unique<Caches>(*this); });
        std::optional<access::SafeBox> const everywhere;
        auto const bindSource = [&](auto&... input) {
            return std::tuple(filters::RowSource(input.rows, input.scratch, leaf)...);
        };
        auto const bindTarget = [&](auto&... rows) {
            return std::tuple(filters::RowTarget(rows, leaf, everywhere, run_)...);
        };
        auto sources = std::apply(bindSource, caches->inputs);
        auto targets = std::apply(bindTarget, caches->outputs);
        std::apply(
            [&](auto&... source) {
                std::apply([&](auto&... target) { kernel(leaf, source..., target..., value...); }, targets);
            },
            sources);
    }

private:
    template <class T>
    using ViewPointer = boost::shared_ptr<ArchView<T, Arch>>;

    template <class View>
    struct InputCache {
        explicit InputCache(View const& view)
            : rows(view)
        {
        }

        access::RowCacheRead<View> rows;
        filters::Scratch<View> scratch;
    };

    struct Caches final : filters::ThreadStore::Item {
        explicit Caches(ManyToManyImageContext const& context)
            : inputs(cachesOf<InputCache<ArchView<In, Arch>>...>(context.inputs_))
            , outputs(cachesOf<access::RowCacheReadWrite<ArchView<Out, Arch>>...>(context.outputs_))
        {
        }

        template <class... Cache, class Views>
        static std::tuple<Cache...> cachesOf(Views const& views)
        {
            return std::apply([](auto const&... view) { return std::tuple<Cache...>(Cache(*view)...); }, views);
        }

        std::tuple<InputCache<ArchView<In, Arch>>...> inputs;
        std::tuple<access::RowCacheReadWrite<ArchView<Out, Arch>>...> outputs;
    };

    template <class... T, std::size_t... index>
    static std::tuple<ViewPointer<T>...> viewsOf(std::vector<boost::any> const& views, std::index_sequence<index...>)
    {
        return {boost::any_cast<ViewPointer<T>>(views.at(index))...};
    }

    std::tuple<ViewPointer<In>...> inputs_;
    std::tuple<ViewPointer<Out>...> outputs_;
    filters::Filter const* run_;
    filters::ThreadStore store_;
};

/// Applies a kernel to a leaf, in 2D and in 3D.
template <class Kernel, class Context>
class TbbBodyManyToManyImage final : public filters::LeafWork {
public:
    TbbBodyManyToManyImage(Kernel const& kernel, Context& context)
        : kernel_(kernel)
        , context_(context)
    {
    }

    void operator()(access::Block const& leaf) override { context_.apply(kernel_, leaf); }

private:
    Kernel const& kernel_;
    Context& context_;
};

/// The same with a value of the kernel's: `Kernel::Value` is nothing gathered when default-constructed, and has
/// `join(Value const&)`, which must not throw.
template <class Kernel, class Context>
class TbbBodyManyToManyImageWithReduction final : public filters::Reduction {
public:
    TbbBodyManyToManyImageWithReduction(Kernel const& kernel, Context& context)
        : kernel_(kernel)
        , context_(context)
    {
    }

    void fold(access::Block const& leaf) override { context_.apply(kernel_, leaf, value_); }

    std::unique_ptr<Reduction> fresh() const override
    {
        return std::make_unique<TbbBodyManyToManyImageWithReduction>(kernel_, context_);
    }

    void join(Reduction& following) noexcept override
    {
        value_.join(static_cast<TbbBodyManyToManyImageWithReduction const&>(following).value_);
    }

    typename Kernel::Value& value() { return value_; }

private:
    Kernel const& kernel_;
    Context& context_;
    typename Kernel::Value value_;
};

/// Carries a kernel from a typed runner to the last voxel of a list of output images, made of a list of input images.
/// They may be of other sizes; what is split into leaves is a region that the runner gives. An output must not be an
/// input too.
///
/// A kernel is called as `kernel(leaf, source..., target...)`, one that has a `Value` to gather as `kernel(leaf,
/// source..., target..., value)`.
template <class InputTypes, class OutputTypes, class Arch, class Kernel, class Dimensions>
class ManyToManyImageFilter : public filters::Filter {
public:
    ManyToManyImageFilter(BaseAlgorithm* owner, Kernel const& kernel)
        : Filter(owner)
        , kernel_(kernel)
    {
    }

    /// One pass of a longer run.
    ManyToManyImageFilter(filters::PassSequence& run, Kernel const& kernel)
        : Filter(run)
        , kernel_(kernel)
    {
    }

    ~ManyToManyImageFilter() override { detach(); }

    /// Views in the order of the type lists, each a `boost::shared_ptr` to the `ArchView` of its type.
    void addInput(boost::any view) { inputs_.push_back(std::move(view)); }
    void addOutput(boost::any view) { outputs_.push_back(std::move(view)); }
    void setRegion(access::Region const& region) { region_ = region; }

    /// Returns the value, if the kernel gathers one.
    auto run()
    {
        announce(region_.numOfVoxels());
        using RunContext = ManyToManyImageContext<InputTypes, OutputTypes, Arch>;
        RunContext context(inputs_, outputs_, this);
        if constexpr (requires { typename Kernel::Value; }) {
            TbbBodyManyToManyImageWithReduction<Kernel, RunContext> body(kernel_, context);
            forEachSliceBySpectrum(Dimensions(), region_, [&](filters::Slice const& slice) {
                reduceLeaves(Dimensions(), region_, slice, body);
            });
            return std::move(body.value());
        } else {
            TbbBodyManyToManyImage<Kernel, RunContext> body(kernel_, context);
            forEachSliceBySpectrum(Dimensions(), region_, [&](filters::Slice const& slice) {
                forEachLeaf(Dimensions(), region_, slice, body);
            });
        }
    }

private:
    Kernel const& kernel_;
    std::vector<boost::any> inputs_;
    std::vector<boost::any> outputs_;
    access::Region region_;
};

template <class InputTypes, class OutputTypes, class Arch, class Kernel>
using ManyToManyImageFilter2d = ManyToManyImageFilter<InputTypes, OutputTypes, Arch, Kernel, Filter2dTag>;
template <class InputTypes, class OutputTypes, class Arch, class Kernel>
using ManyToManyImageFilter3d = ManyToManyImageFilter<InputTypes, OutputTypes, Arch, Kernel, Filter3dTag>;

/// With a kernel that gathers a value.
template <class InputTypes, class OutputTypes, class Arch, class Kernel>
    requires requires
    {
        typename Kernel::Value;
    }
using ManyToManyImageFilter2dWithReduction = ManyToManyImageFilter2d<InputTypes, OutputTypes, Arch, Kernel>;

/// The same with one input and one output of the same sizes.
template <class In, class Out, class Arch, class Kernel>
using ImageToImageFilter2dWithReduction =
    ManyToManyImageFilter2dWithReduction<TypeVector<In>, TypeVector<Out>, Arch, Kernel>;
template <class In, class Out, class Arch, class Kernel>
using ImageToImageFilter3dWithReduction = ManyToManyImageFilter3d<TypeVector<In>, TypeVector<Out>, Arch, Kernel>;

} // namespace mox
