#include <Moxelcore/Morphology/Ball3DMorphology.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Morphology/private/family.h"

namespace mox::morphology {

namespace {

Steps stepsOf(Ball3DMorphology const& algorithm, access::Sizes const& sizes)
{
    unsigned int const size = algorithm.elementSize;
    if (size == 0 || algorithm.precision == MOX_ALGO_PRECISE) {
        return {{ballOffsets(size, sizes)}};
    }
    auto const crosses = static_cast<unsigned int>(size * 0.6);
    auto const edged = static_cast<unsigned int>(size * 0.3);
    return withoutIdle({{access::Neighborhood3D_6Tag(), crosses},
                        {access::Neighborhood3D_18Tag(), edged},
                        {CubeElement(), size - crosses - edged}});
}

FamilyRegistration<stepsOf, ErosionBall3D, DilationBall3D, OpeningBall3D, ClosingBall3D> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ErosionBall3D)
MOX_DEFINE_ALGORITHM(DilationBall3D)
MOX_DEFINE_ALGORITHM(OpeningBall3D)
MOX_DEFINE_ALGORITHM(ClosingBall3D)

void Ball3DMorphology::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(elementSize, "elementSize", 3U);
    declareInput(precision, "precision", MOX_ALGO_FAST, isAnEnumOf<AlgoPrecisionType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence Ball3DMorphology::getAlgoBorderInfluence() const
{
    return {elementSize, elementSize, elementSize, 0, 0};
}

} // namespace mox::morphology
