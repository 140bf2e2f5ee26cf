#include <Moxelcore/Morphology/Neighborhood3DMorphology.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Morphology/private/family.h"

namespace mox::morphology {

namespace {

Steps stepsOf(Neighborhood3DMorphology const& algorithm, access::Sizes const&)
{
    switch (algorithm.neighborhood3D) {
    case MOX_NEIGHBORHOOD3D_6:
        return {{access::Neighborhood3D_6Tag(), algorithm.nbIter}};
    case MOX_NEIGHBORHOOD3D_18:
        return {{access::Neighborhood3D_18Tag(), algorithm.nbIter}};
    default:
        return {{CubeElement(), algorithm.nbIter}};
    }
}

FamilyRegistration<stepsOf, Erosion3D, Dilation3D, Opening3D, Closing3D> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(Erosion3D)
MOX_DEFINE_ALGORITHM(Dilation3D)
MOX_DEFINE_ALGORITHM(Opening3D)
MOX_DEFINE_ALGORITHM(Closing3D)

void Neighborhood3DMorphology::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(nbIter, "nbIter", 3U, rule<RuleAssertNotNull>());
    declareInput(neighborhood3D, "neighborhood3D", MOX_NEIGHBORHOOD3D_26, isAnEnumOf<Neighborhood3DType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence Neighborhood3DMorphology::getAlgoBorderInfluence() const
{
    return {nbIter, nbIter, nbIter, 0, 0};
}

} // namespace mox::morphology
