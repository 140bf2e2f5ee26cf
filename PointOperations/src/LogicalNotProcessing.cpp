#include <Moxelcore/PointOperations/LogicalNotProcessing.h>

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

struct LogicalNotProcessingScalarDispatcher {
    template <class T>
    static void run(LogicalNotProcessing& algorithm)
    {
        runOnePass<T>(algorithm, InvertImageScalarGeneric<T>(static_cast<T>(-1)));
    }
};

using ScalarLogicalNotProcessingRunner =
    ScalarOneTypeRunner<LogicalNotProcessing, LogicalNotProcessingScalarDispatcher, IntegerVoxels>;

Registration<LogicalNotProcessing, ScalarLogicalNotProcessingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(LogicalNotProcessing)

void LogicalNotProcessing::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(IntegerVoxels()));
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence LogicalNotProcessing::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
