#include <Moxelcore/Segmentation/Threshold.h>

#include "Core/private/Rules/RuleAssertDimension.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameSizeAndCalibration.h"
#include "Core/private/Rules/RuleSetInterpretation.h"
#include "Core/private/declare.h"
#include "Core/private/filters/RecursiveImageFilter.h"
#include "Core/private/filters/fixedView.h"
#include "Core/private/runners.h"
#include "Segmentation/private/ThresholdScalarGeneric.h"

namespace mox::segmentation {

namespace {

template <class In, class Out>
void runFilter(Threshold& algorithm)
{
    using Arch = SimdVec::arch_scalar_tag;
    using Kernel = ThresholdScalarGeneric<In>;
    Kernel const kernel(algorithm.lowLevel, algorithm.highLevel);
    RecursiveImageFilter3d<In, Out, Arch, Kernel> filter(&algorithm, kernel);
    filter.setInput(fixedView<In, Arch>(*algorithm.input.get()));
    filter.setOutput(fixedView<Out, Arch>(*algorithm.output.get()));
    filter.run();
}

class ScalarThresholdRunner final : public ScalarRunner<Threshold> {
private:
    void execute(Threshold& algorithm) const override
    {
        dispatch(RealVoxels(), algorithm.input.get()->getVoxelType(), [&]<class In>() {
            dispatch(NarrowVoxels(), algorithm.output.get()->getVoxelType(),
                     [&]<class Out>() { runFilter<In, Out>(algorithm); });
        });
    }
};

Registration<Threshold, ScalarThresholdRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(Threshold)

void Threshold::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()),
                 rule<RuleAssertDimension>(SPECTRAL_SERIES, 1U));
    declareInput(lowLevel, "lowLevel", 0.0);
    declareInput(highLevel, "highLevel", 255.0);
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(), rule<RuleEnforceSameSizeAndCalibration>(input),
                  rule<RuleAssertType>(NarrowVoxels()), rule<RuleSetInterpretation>(INTERPRETATION_BINARY));
}

AlgoBorderInfluence Threshold::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::segmentation
