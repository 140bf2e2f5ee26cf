#pragma once

#include <memory>

#include "Core/private/filters/RecursiveImageFilter.h"
#include "Core/private/filters/fixedView.h"
#include "Morphology/private/functors.h"
#include "Morphology/private/passes.h"

namespace mox::morphology {

/// A kernel behind one virtual call per leaf, so that there is one filter per voxel type rather than one per kernel.
template <class T, class Arch>
class LeafKernel {
public:
    using View = ArchView<T, Arch>;
    using Source = filters::RowSource<access::RowCacheRead<View>>;
    using Target = filters::RowTarget<access::RowCacheReadWrite<View>>;

    virtual ~LeafKernel() = default;
    virtual filters::Use use() const = 0;
    virtual void operator()(access::Block const& leaf, Source& source, Target& target) const = 0;
};

template <class T, class Arch, class Kernel>
class LeafKernelOf final : public LeafKernel<T, Arch> {
public:
    using typename LeafKernel<T, Arch>::Source;
    using typename LeafKernel<T, Arch>::Target;

    explicit LeafKernelOf(Kernel kernel)
        : kernel_(std::move(kernel))
    {
    }

    filters::Use use() const override { return kernel_.use(); }
    void operator()(access::Block const& leaf, Source& source, Target& target) const override
    {
        kernel_(leaf, source, target);
    }

private:
    Kernel kernel_;
};

/// What an architecture does with the steps of a pass: `forEachSweep<T>(steps, sizes, run)` gives them as sweeps over
/// the image, one after the other; and its kernels: `Square`, `Cube`, and `InPlane` and `InSpace` for tags with their
/// lists.
template <class Arch, class Functor>
struct Kernels;

namespace details {

template <class T, class Arch, class Functor>
struct MakeKernel {
    using K = Kernels<Arch, Functor>;
    using Result = std::unique_ptr<LeafKernel<T, Arch>>;

    template <class Kernel, class... Argument>
    static Result make(Argument const&... argument)
    {
        return std::make_unique<LeafKernelOf<T, Arch, Kernel>>(Kernel(argument...));
    }

    Result operator()(SquareElement) const { return make<typename K::Square>(); }
    Result operator()(CubeElement) const { return make<typename K::Cube>(); }
    Result operator()(access::Neighborhood2D_4Tag tag) const { return inPlane(tag); }
    Result operator()(access::Neighborhood3D_6Tag tag) const { return inSpace(tag); }
    Result operator()(access::Neighborhood3D_18Tag tag) const { return inSpace(tag); }
    Result operator()(Shared<OffsetList2D> const& list) const
    {
        return make<typename K::template InPlane<access::Neighborhood2D_GenTag, OffsetList2D>>(*list);
    }
    Result operator()(Shared<OffsetList3D> const& list) const
    {
        return make<typename K::template InSpace<access::Neighborhood3D_GenTag, OffsetList3D>>(*list);
    }

private:
    template <class Tag>
    static Result inPlane(Tag)
    {
        return make<typename K::template InPlane<Tag, NoDataType>>();
    }
    template <class Tag>
    static Result inSpace(Tag)
    {
        return make<typename K::template InSpace<Tag, NoDataType>>();
    }
};

inline bool isInPlane(Element const& element)
{
    return std::holds_alternative<access::Neighborhood2D_4Tag>(element) ||
           std::holds_alternative<SquareElement>(element) || std::holds_alternative<Shared<OffsetList2D>>(element);
}

/// A kernel for a part of a pass.
template <class T, class Arch>
struct Sweep {
    std::unique_ptr<LeafKernel<T, Arch>> kernel;
    bool isInPlane;
    unsigned int repetitions;
};

/// One step as it stands: the kernel of its element, again and again.
template <class T, class Arch, class Functor>
Sweep<T, Arch> sweepOf(Step const& step, unsigned int repetitions = 1)
{
    return {std::visit(MakeKernel<T, Arch, Functor>(), step.element), isInPlane(step.element),
            repetitions * step.iterations};
}

template <class T, class Arch>
class PassRunner {
public:
    PassRunner(BaseAlgorithm& algorithm, ImageModel const& input, ImageModel& output, uint64 numOfIterations)
        : sequence_(&algorithm, numOfIterations * access::Sizes::of(output).numOfVoxels())
        , source_(&input)
        , output_(output)
    {
    }

    template <class Functor>
    void run(Steps const& steps)
    {
        Kernels<Arch, Functor>::template forEachSweep<T>(steps, access::Sizes::of(output_), [&](auto const& sweep) {
            if (sequence_.isStopped()) {
                return;
            }
            if (sweep.isInPlane) {
                run<Functor>(RecursiveImageFilter2d<T, T, Arch, LeafKernel<T, Arch>>(sequence_, *sweep.kernel), sweep);
            } else {
                run<Functor>(RecursiveImageFilter3d<T, T, Arch, LeafKernel<T, Arch>>(sequence_, *sweep.kernel), sweep);
            }
            source_ = &output_;
        });
    }

private:
    template <class Functor, class Filter>
    void run(Filter&& filter, Sweep<T, Arch> const& sweep)
    {
        filter.setInput(fixedView<T, Arch>(*source_, Functor::template outside<T>));
        filter.setOutput(fixedView<T, Arch>(output_, Functor::template outside<T>));
        filter.setIterations(sweep.repetitions);
        filter.run();
    }

    filters::PassSequence sequence_;
    ImageModel const* source_;
    ImageModel& output_;
};

} // namespace details

template <class T, class Arch>
void runPasses(BaseAlgorithm& algorithm, ImageModel const& input, ImageModel& output, std::vector<Pass> const& passes)
{
    uint64 iterations = 0;
    for (Pass const& pass : passes) {
        iterations += numOfIterations(pass.steps);
    }
    details::PassRunner<T, Arch> runner(algorithm, input, output, iterations);
    for (Pass const& pass : passes) {
        if (pass.operation == Operation::dilation) {
            runner.template run<details::DilationFunctor>(pass.steps);
        } else {
            runner.template run<details::ErosionFunctor>(pass.steps);
        }
    }
}

} // namespace mox::morphology
