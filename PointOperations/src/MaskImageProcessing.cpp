#include <Moxelcore/PointOperations/MaskImageProcessing.h>

#include "Core/private/Rules/RuleAssertDimension.h"
#include "Core/private/Rules/RuleAssertDimensionImage.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Core/private/filters/ImagePairToImageFilter.h"
#include "Core/private/runners.h"
#include "PointOperations/private/MaskImageProcessingScalarGeneric.h"

namespace mox::point_operations {

namespace {

template <class T, class Mask>
void runFilter(MaskImageProcessing& algorithm)
{
    MaskImageProcessingScalarGeneric const kernel;
    ImagePairToImageFilter3d<T, Mask, T, MaskImageProcessingScalarGeneric> filter(&algorithm, kernel);
    filter.setInput(*algorithm.input.get(), *algorithm.inputBinary.get());
    filter.setOutput(*algorithm.output.get());
    filter.run();
}

class ScalarMaskImageProcessingRunner final : public ScalarRunner<MaskImageProcessing> {
private:
    void execute(MaskImageProcessing& algorithm) const override
    {
        dispatch(RealVoxels(), algorithm.input.get()->getVoxelType(), [&]<class T>() {
            dispatch(NarrowVoxels(), algorithm.inputBinary.get()->getVoxelType(),
                     [&]<class Mask>() { runFilter<T, Mask>(algorithm); });
        });
    }
};

Registration<MaskImageProcessing, ScalarMaskImageProcessingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(MaskImageProcessing)

void MaskImageProcessing::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(inputBinary, "inputBinary", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(NarrowVoxels()),
                 rule<RuleAssertDimensionImage>(COLUMNS, input), rule<RuleAssertDimensionImage>(ROWS, input),
                 rule<RuleAssertDimensionImage>(PLANS, input), rule<RuleAssertDimensionImage>(TIME_SERIES, input),
                 rule<RuleAssertDimension>(SPECTRAL_SERIES, 1U));
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence MaskImageProcessing::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
