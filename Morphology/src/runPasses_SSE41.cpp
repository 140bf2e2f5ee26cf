#include <array>

#include "Morphology/private/ColumnsReductionSimd.h"
#include "Morphology/private/NeighborhoodToValueSimd.h"
#include "Morphology/private/RowProgramKernel.h"
#include "Morphology/private/chains.h"
#include "Morphology/private/lists.h"
#include "Morphology/private/runPasses.h"

namespace mox::morphology {

template <class Functor>
struct Kernels<SimdVec::arch_128_tag, Functor> {
    using Square = Neighborhood8ColumnsReductionSimd<Functor>;
    using Cube = Neighborhood26PlansReductionSimd<Functor>;
    template <class Tag, class Payload>
    using InPlane = Neighborhood2dToValueSimd<Functor, Tag, Payload>;
    template <class Tag, class Payload>
    using InSpace = Neighborhood3dToValueSimd<Functor, Tag, Payload>;

    /// Large elements as row programs; small ones, and those too large for that, as they stand.
    template <class T, class Run>
    static void forEachSweep(Steps const& steps, access::Sizes const& sizes, Run&& run)
    {
        for (Chain const& chain : chainsOf(steps)) {
            if (auto kernel = kernelOf<T>(chain, sizes)) {
                run(details::Sweep<T, SimdVec::arch_128_tag>{std::move(kernel), isInPlane(chain), chain.repetitions});
                continue;
            }
            for (Step const& step : chain.steps) {
                run(details::sweepOf<T, SimdVec::arch_128_tag, Functor>(step, chain.repetitions));
            }
        }
    }

private:
    template <class T>
    using KernelPointer = std::unique_ptr<LeafKernel<T, SimdVec::arch_128_tag>>;

    static bool isInPlane(Chain const& chain) { return details::isInPlane(chain.steps.front().element); }

    /// Null where the chain has no program.
    template <class T>
    static KernelPointer<T> kernelOf(Chain const& chain, access::Sizes const& sizes)
    {
        if (isFoldable(chain)) {
            if (!foldingPays(chain, sizes.columns)) {
                return nullptr;
            }
            auto const iterations = static_cast<unsigned int>(numOfIterations(chain.steps));
            std::array programs{foldedProgram(chain.steps), literalProgram(chain.steps)};
            auto const leaf = leafFor(programs, sizes, sizeof(T), filters::numOfThreads());
            return leaf ? make<T>(std::move(programs[0]), std::move(programs[1]), *leaf, iterations) : nullptr;
        }
        auto program = listProgram(chain.steps.front().element, std::is_floating_point_v<T>);
        if (!program) {
            return nullptr;
        }
        auto const leaf = leafFor({&*program, 1}, sizes, sizeof(T), filters::numOfThreads());
        return leaf ? make<T>(std::move(*program), *leaf) : nullptr;
    }

    template <class T, class... Argument>
    static KernelPointer<T> make(Argument&&... argument)
    {
        using Kernel = RowProgramKernel<Functor>;
        return std::make_unique<LeafKernelOf<T, SimdVec::arch_128_tag, Kernel>>(
            Kernel(std::forward<Argument>(argument)...));
    }
};

#define MOX_INSTANTIATE(T)                                                                                             \
    template void runPasses<T, SimdVec::arch_128_tag>(BaseAlgorithm&, ImageModel const&, ImageModel&,                  \
                                                      std::vector<Pass> const&);
MOX_INSTANTIATE(unsigned char)
MOX_INSTANTIATE(unsigned short)
MOX_INSTANTIATE(unsigned int)
MOX_INSTANTIATE(signed char)
MOX_INSTANTIATE(short)
MOX_INSTANTIATE(int)
MOX_INSTANTIATE(float)
MOX_INSTANTIATE(double)
#undef MOX_INSTANTIATE

} // namespace mox::morphology
