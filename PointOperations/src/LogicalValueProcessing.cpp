#include <Moxelcore/PointOperations/LogicalValueProcessing.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "PointOperations/private/LogicalOperators.h"
#include "PointOperations/private/LogicalScalarGeneric.h"
#include "PointOperations/private/runOnePass.h"

namespace mox::point_operations {

namespace {

struct LogicalValueProcessingScalarDispatcher {
    template <class T>
    static void run(LogicalValueProcessing& algorithm)
    {
        auto const value = static_cast<T>(algorithm.inputValue.get());
        dispatchLogical(algorithm.logicalOperator, "PointOperations/src/LogicalValueProcessing_Scalar",
                        [&]<class Operator>() {
                            runOnePass<T>(algorithm, LogicalValueProcessingScalarGeneric<T>(Operator(), value));
                        });
    }
};

using ScalarLogicalValueProcessingRunner =
    ScalarOneTypeRunner<LogicalValueProcessing, LogicalValueProcessingScalarDispatcher, IntegerVoxels>;

Registration<LogicalValueProcessing, ScalarLogicalValueProcessingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(LogicalValueProcessing)

void LogicalValueProcessing::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(IntegerVoxels()));
    declareInput(inputValue, "inputValue", 0);
    declareInput(logicalOperator, "logicalOperator", LOGICAL_AND, isAnEnumOf<BinaryLogicalOperatorType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

AlgoBorderInfluence LogicalValueProcessing::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
