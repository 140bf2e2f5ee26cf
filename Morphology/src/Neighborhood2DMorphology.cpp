#include <Moxelcore/Morphology/Neighborhood2DMorphology.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Morphology/private/family.h"

namespace mox::morphology {

namespace {

Steps stepsOf(Neighborhood2DMorphology const& algorithm, access::Sizes const&)
{
    if (algorithm.neighborhood2D == MOX_NEIGHBORHOOD2D_4) {
        return {{access::Neighborhood2D_4Tag(), algorithm.nbIter}};
    }
    return {{SquareElement(), algorithm.nbIter}};
}

FamilyRegistration<stepsOf, Erosion2D, Dilation2D, Opening2D, Closing2D> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(Erosion2D)
MOX_DEFINE_ALGORITHM(Dilation2D)
MOX_DEFINE_ALGORITHM(Opening2D)
MOX_DEFINE_ALGORITHM(Closing2D)

void Neighborhood2DMorphology::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(nbIter, "nbIter", 3U, rule<RuleAssertNotNull>());
    declareInput(neighborhood2D, "neighborhood2D", MOX_NEIGHBORHOOD2D_8, isAnEnumOf<Neighborhood2DType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence Neighborhood2DMorphology::getAlgoBorderInfluence() const
{
    return {nbIter, nbIter, 0, 0, 0};
}

} // namespace mox::morphology
