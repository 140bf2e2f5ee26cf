#include <Moxelcore/Morphology/Disk3DMorphology.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Morphology/private/family.h"
#include "Morphology/private/requireFinite.h"

namespace mox::morphology {

namespace {

TiltedDisk diskOf(Disk3DMorphology const& algorithm)
{
    return {algorithm.thetaAngle, algorithm.phiAngle, algorithm.elementSize};
}

Steps stepsOf(Disk3DMorphology const& algorithm, access::Sizes const& sizes)
{
    return {{diskOf(algorithm).offsets(sizes), 1, Symmetry::none}};
}

FamilyRegistration<stepsOf, ErosionDisk3D, DilationDisk3D, OpeningDisk3D, ClosingDisk3D> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ErosionDisk3D)
MOX_DEFINE_ALGORITHM(DilationDisk3D)
MOX_DEFINE_ALGORITHM(OpeningDisk3D)
MOX_DEFINE_ALGORITHM(ClosingDisk3D)

void Disk3DMorphology::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(thetaAngle, "thetaAngle", 0.0);
    declareInput(phiAngle, "phiAngle", 0.0);
    declareInput(elementSize, "elementSize", 3U);
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

void Disk3DMorphology::applyAllRules()
{
    requireFinite(thetaAngle, "Morphology/src/Disk3DMorphology");
    requireFinite(phiAngle, "Morphology/src/Disk3DMorphology");
    BaseAlgorithm::applyAllRules();
}

AlgoBorderInfluence Disk3DMorphology::getAlgoBorderInfluence() const
{
    requireFinite(thetaAngle, "Morphology/src/Disk3DMorphology");
    requireFinite(phiAngle, "Morphology/src/Disk3DMorphology");
    return diskOf(*this).influence();
}

} // namespace mox::morphology
