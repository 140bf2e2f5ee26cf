#include "Morphology/private/ColumnsReductionSimd.h"
#include "Morphology/private/NeighborhoodToValueSimd.h"
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
