#include <Moxelcore/Morphology/Line3DMorphology.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Morphology/private/family.h"
#include "Morphology/private/requireFinite.h"

namespace mox::morphology {

namespace {

Line3D lineOf(Line3DMorphology const& algorithm)
{
    return {algorithm.thetaAngle, algorithm.phiAngle, algorithm.elementSize};
}

Steps stepsOf(Line3DMorphology const& algorithm, access::Sizes const& sizes)
{
    return {{lineOf(algorithm).offsets(sizes), 1, Symmetry::none}};
}

FamilyRegistration<stepsOf, ErosionLine3D, DilationLine3D, OpeningLine3D, ClosingLine3D> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ErosionLine3D)
MOX_DEFINE_ALGORITHM(DilationLine3D)
MOX_DEFINE_ALGORITHM(OpeningLine3D)
MOX_DEFINE_ALGORITHM(ClosingLine3D)

void Line3DMorphology::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(thetaAngle, "thetaAngle", 0.0);
    declareInput(phiAngle, "phiAngle", 0.0);
    declareInput(elementSize, "elementSize", 3U);
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

void Line3DMorphology::applyAllRules()
{
    requireFinite(thetaAngle, "Morphology/src/Line3DMorphology");
    requireFinite(phiAngle, "Morphology/src/Line3DMorphology");
    BaseAlgorithm::applyAllRules();
}

AlgoBorderInfluence Line3DMorphology::getAlgoBorderInfluence() const
{
    requireFinite(thetaAngle, "Morphology/src/Line3DMorphology");
    requireFinite(phiAngle, "Morphology/src/Line3DMorphology");
    return lineOf(*this).influence();
}

} // namespace mox::morphology
