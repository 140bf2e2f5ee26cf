#include <Moxelcore/Morphology/Disk2DMorphology.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Morphology/private/family.h"

namespace mox::morphology {

namespace {

Steps stepsOf(Disk2DMorphology const& algorithm, access::Sizes const& sizes)
{
    unsigned int const size = algorithm.elementSize;
    if (size == 0 || algorithm.precision == MOX_ALGO_PRECISE) {
        return {{diskOffsets(size, sizes)}};
    }
    unsigned int const half = size / 2;
    return withoutIdle({{SquareElement(), half}, {access::Neighborhood2D_4Tag(), size - half}});
}

FamilyRegistration<stepsOf, ErosionDisk2D, DilationDisk2D, OpeningDisk2D, ClosingDisk2D> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ErosionDisk2D)
MOX_DEFINE_ALGORITHM(DilationDisk2D)
MOX_DEFINE_ALGORITHM(OpeningDisk2D)
MOX_DEFINE_ALGORITHM(ClosingDisk2D)

void Disk2DMorphology::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(elementSize, "elementSize", 3U);
    declareInput(precision, "precision", MOX_ALGO_FAST, isAnEnumOf<AlgoPrecisionType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence Disk2DMorphology::getAlgoBorderInfluence() const
{
    return {elementSize, elementSize, 0, 0, 0};
}

} // namespace mox::morphology
