#include <Moxelcore/Segmentation/IntensityExtrema.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/declare.h"
#include "Core/private/filters/ImageToQuantificationFilter.h"
#include "Core/private/filters/fixedView.h"
#include "Core/private/runners.h"
#include "Segmentation/private/IntensityExtremaScalarGeneric.h"

namespace mox::analysis {

namespace {

struct IntensityExtremaScalarDispatcher {
    template <class T>
    static void run(IntensityExtrema& algorithm)
    {
        using Arch = SimdVec::arch_scalar_tag;
        ImageToQuantificationFilter3d<T, Arch, IntensityExtremaScalarGeneric<T>> filter(&algorithm);
        filter.setInput(fixedView<T, Arch>(*algorithm.input.get()));
        if (auto const result = filter.run()) {
            PropertyAccess::write(algorithm.outputMinimum, static_cast<double>(result->minimum()));
            PropertyAccess::write(algorithm.outputMaximum, static_cast<double>(result->maximum()));
            PropertyAccess::write(algorithm.outputMean, result->mean());
        }
    }
};

using ScalarIntensityExtremaRunner =
    ScalarOneTypeRunner<IntensityExtrema, IntensityExtremaScalarDispatcher, RealVoxels>;

Registration<IntensityExtrema, ScalarIntensityExtremaRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(IntensityExtrema)

void IntensityExtrema::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareOutput(outputMinimum, "outputMinimum", 0.0);
    declareOutput(outputMaximum, "outputMaximum", 0.0);
    declareOutput(outputMean, "outputMean", 0.0);
}

AlgoBorderInfluence IntensityExtrema::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::analysis
