#include <Moxelcore/Morphology/ApplyMorphologicalLut3D.h>

#include "Morphology/private/applyMorphologicalLut.h"

namespace mox::morphology {

namespace {

using ScalarApplyMorphologicalLut3DRunner =
    ScalarOneTypeRunner<ApplyMorphologicalLut3D,
                        ApplyMorphologicalLutScalarDispatcher<LutCodes3D, ImageToImageFilter3dWithReduction>,
                        RealVoxels>;
Registration<ApplyMorphologicalLut3D, ScalarApplyMorphologicalLut3DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ApplyMorphologicalLut3D)

void ApplyMorphologicalLut3D::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(morphologicalLut, "morphologicalLut", morphologicalLut.get(), rule<RuleAssertLutSize>());
    declareInput(matchingFlag, "matchingFlag", MatchingActionTypes::SET_ONE, isAnEnumOf<MatchingActionTypes>());
    declareInput(noMatchingFlag, "noMatchingFlag", MatchingActionTypes::SET_ZERO, isAnEnumOf<MatchingActionTypes>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence ApplyMorphologicalLut3D::getAlgoBorderInfluence() const
{
    unsigned int const infinity = AlgoBorderInfluence::infinity;
    return {infinity, infinity, infinity, 0, 0};
}

} // namespace mox::morphology
