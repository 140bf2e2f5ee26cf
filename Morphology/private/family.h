#pragma once

#include "Core/private/AlgoInfoAccess.h"
#include "Core/private/access/SimdVec.h"
#include "Core/private/runners.h"
#include "Morphology/private/passes.h"

namespace mox::morphology {

// The four chains.
inline constexpr Operation erosion[] = {Operation::erosion};
inline constexpr Operation dilation[] = {Operation::dilation};
inline constexpr Operation opening[] = {Operation::erosion, Operation::dilation};
inline constexpr Operation closing[] = {Operation::dilation, Operation::erosion};

/// Runs an algorithm's chain with the element that `stepsOf(algorithm, sizes)` tells.
template <auto stepsOf, auto const& chain, class Arch>
struct ChainDispatcher {
    template <class T, class Algorithm>
    static void run(Algorithm& algorithm)
    {
        ImageModel const& input = *algorithm.input.get();
        Steps const steps = stepsOf(algorithm, access::Sizes::of(input));
        runPasses<T, Arch>(algorithm, input, *algorithm.output.get(), passesOf(chain, steps));
    }
};

template <class Algorithm, auto stepsOf, auto const& chain>
struct ChainRegistration {
    using ScalarDispatcher = ChainDispatcher<stepsOf, chain, SimdVec::arch_scalar_tag>;
    using SSE41Dispatcher = ChainDispatcher<stepsOf, chain, SimdVec::arch_128_tag>;

    Registration<Algorithm, ScalarOneTypeRunner<Algorithm, ScalarDispatcher, RealVoxels>,
                 SSE41OneTypeMinMaxRunner<Algorithm, SSE41Dispatcher>>
        registration;
};

/// Enters the four algorithms of a family.
template <auto stepsOf, class Erosion, class Dilation, class Opening, class Closing>
struct FamilyRegistration {
    ChainRegistration<Erosion, stepsOf, erosion> erosionRegistration;
    ChainRegistration<Dilation, stepsOf, dilation> dilationRegistration;
    ChainRegistration<Opening, stepsOf, opening> openingRegistration;
    ChainRegistration<Closing, stepsOf, closing> closingRegistration;
};

} // namespace mox::morphology
