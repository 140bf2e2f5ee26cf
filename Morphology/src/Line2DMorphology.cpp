#include <Moxelcore/Morphology/Line2DMorphology.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Morphology/private/family.h"
#include "Morphology/private/requireFinite.h"

namespace mox::morphology {

namespace {

Line2D lineOf(Line2DMorphology const& algorithm)
{
    return {algorithm.orientationAngle, algorithm.elementSize};
}

Steps stepsOf(Line2DMorphology const& algorithm, access::Sizes const& sizes)
{
    return {{lineOf(algorithm).offsets(sizes), 1, Symmetry::none}};
}

FamilyRegistration<stepsOf, ErosionLine2D, DilationLine2D, OpeningLine2D, ClosingLine2D> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ErosionLine2D)
MOX_DEFINE_ALGORITHM(DilationLine2D)
MOX_DEFINE_ALGORITHM(OpeningLine2D)
MOX_DEFINE_ALGORITHM(ClosingLine2D)

void Line2DMorphology::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(orientationAngle, "orientationAngle", 10.0);
    declareInput(elementSize, "elementSize", 3U);
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

void Line2DMorphology::applyAllRules()
{
    requireFinite(orientationAngle, "Morphology/src/Line2DMorphology");
    BaseAlgorithm::applyAllRules();
}

AlgoBorderInfluence Line2DMorphology::getAlgoBorderInfluence() const
{
    requireFinite(orientationAngle, "Morphology/src/Line2DMorphology");
    return lineOf(*this).influence();
}

} // namespace mox::morphology
