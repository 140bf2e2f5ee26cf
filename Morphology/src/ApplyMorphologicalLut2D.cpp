#include <Moxelcore/Morphology/ApplyMorphologicalLut2D.h>

#include "Morphology/private/applyMorphologicalLut.h"

namespace mox::morphology {

namespace {

using ScalarApplyMorphologicalLut2DRunner =
    ScalarOneTypeRunner<ApplyMorphologicalLut2D,
                        ApplyMorphologicalLutScalarDispatcher<LutCodes2D, ImageToImageFilter2dWithReduction>,
                        RealVoxels>;
Registration<ApplyMorphologicalLut2D, ScalarApplyMorphologicalLut2DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ApplyMorphologicalLut2D)

void ApplyMorphologicalLut2D::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(morphologicalLut, "morphologicalLut", morphologicalLut.get(), rule<RuleAssertLutSize>());
    declareInput(matchingFlag, "matchingFlag", MatchingActionTypes::SET_ONE, isAnEnumOf<MatchingActionTypes>());
    declareInput(noMatchingFlag, "noMatchingFlag", MatchingActionTypes::SET_ZERO, isAnEnumOf<MatchingActionTypes>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence ApplyMorphologicalLut2D::getAlgoBorderInfluence() const
{
    unsigned int const infinity = AlgoBorderInfluence::infinity;
    return {infinity, infinity, 0, 0, 0};
}

} // namespace mox::morphology
