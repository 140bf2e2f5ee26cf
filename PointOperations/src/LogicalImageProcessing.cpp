#include <Moxelcore/PointOperations/LogicalImageProcessing.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertSameSize.h"
#include "Core/private/Rules/RuleAssertSameType.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Core/private/filters/ImagePairToImageFilter.h"
#include "Core/private/runners.h"
#include "PointOperations/private/LogicalOperators.h"
#include "PointOperations/private/LogicalScalarGeneric.h"

namespace mox::point_operations {

namespace {

template <class T, class Operator>
void runFilter(LogicalImageProcessing& algorithm)
{
    using Kernel = LogicalImageProcessingScalarGeneric<T, Operator>;
    Kernel const kernel;
    ImagePairToImageFilter3d<T, T, T, Kernel> filter(&algorithm, kernel);
    filter.setInput(*algorithm.input1.get(), *algorithm.input2.get());
    filter.setOutput(*algorithm.output.get());
    filter.run();
}

class ScalarLogicalImageProcessingRunner final : public ScalarRunner<LogicalImageProcessing> {
private:
    void execute(LogicalImageProcessing& algorithm) const override
    {
        dispatch(IntegerVoxels(), algorithm.input1.get()->getVoxelType(), [&]<class T>() {
            dispatchLogical(algorithm.logicalOperator, "PointOperations/src/LogicalImageProcessing_Scalar",
                            [&]<class Operator>() { runFilter<T, Operator>(algorithm); });
        });
    }
};

Registration<LogicalImageProcessing, ScalarLogicalImageProcessingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(LogicalImageProcessing)

void LogicalImageProcessing::init()
{
    declareInput(input1, "input1", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(IntegerVoxels()));
    declareInput(input2, "input2", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertSameType>(input1),
                 rule<RuleAssertSameSize>(input1));
    declareInput(logicalOperator, "logicalOperator", LOGICAL_AND, isAnEnumOf<BinaryLogicalOperatorType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input1), rule<RuleEnforceSameInterpretation>(input1));
}

AlgoBorderInfluence LogicalImageProcessing::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
