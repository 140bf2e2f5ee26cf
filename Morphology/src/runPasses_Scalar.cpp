#include "Core/private/forEachRealVoxel.h"
#include "Morphology/private/ColumnsReduction.h"
#include "Morphology/private/NeighborhoodToValue.h"
#include "Morphology/private/runPasses.h"

namespace mox::morphology {

template <class Functor>
struct Kernels<SimdVec::arch_scalar_tag, Functor> {
    using Square = Neighborhood8ColumnsReduction<Functor>;
    using Cube = Neighborhood26PlansReduction<Functor>;
    template <class Tag, class Payload>
    using InPlane = Neighborhood2dToValue<Functor, Tag, Payload>;
    template <class Tag, class Payload>
    using InSpace = Neighborhood3dToValue<Functor, Tag, Payload>;

    template <class T, class Run>
    static void forEachSweep(Steps const& steps, access::Sizes const&, Run&& run)
    {
        for (Step const& step : steps) {
            run(details::sweepOf<T, SimdVec::arch_scalar_tag, Functor>(step));
        }
    }
};

#define MOX_INSTANTIATE(T)                                                                                             \
    template void runPasses<T, SimdVec::arch_scalar_tag>(BaseAlgorithm&, ImageModel const&, ImageModel&,               \
                                                         std::vector<Pass> const&);
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::morphology
