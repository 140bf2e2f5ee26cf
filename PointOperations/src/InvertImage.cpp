#include <Moxelcore/PointOperations/InvertImage.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "PointOperations/private/InvertImageScalarGeneric.h"
#include "PointOperations/private/runOnePass.h"

namespace mox::point_operations {

namespace {

struct InvertImageScalarDispatcher {
    template <class T>
    static void run(InvertImage& algorithm)
    {
        bool const isBinary = algorithm.input.get()->getInterpretation() == INTERPRETATION_BINARY;
        runOnePass<T>(algorithm, InvertImageScalarGeneric<T>(isBinary ? T(1) : static_cast<T>(-1)));
    }
};

using ScalarInvertImageRunner = ScalarOneTypeRunner<InvertImage, InvertImageScalarDispatcher, IntegerVoxels>;

Registration<InvertImage, ScalarInvertImageRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(InvertImage)

void InvertImage::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(IntegerVoxels()));
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence InvertImage::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
