#include <Moxelcore/PointOperations/ArithmeticValueProcessing.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameSizeAndCalibration.h"
#include "Core/private/Rules/RuleEnforceTypePromotionImageValue.h"
#include "Core/private/declare.h"
#include "Core/private/filters/PointFilter.h"
#include "Core/private/runners.h"
#include "PointOperations/private/ArithmeticRows.h"
#include "PointOperations/private/ArithmeticValueProcessingScalarGeneric.h"

namespace mox::point_operations {

namespace {

constexpr char const* source = "PointOperations/src/ArithmeticValueProcessing";

class ScalarArithmeticValueProcessingRunner final : public ScalarRunner<ArithmeticValueProcessing> {
private:
    void execute(ArithmeticValueProcessing& algorithm) const override
    {
        ImageModel const& input = *algorithm.input.get();
        ImageModel& output = *algorithm.output.get();
        VoxelTypes const imageType = input.getVoxelType();
        VoxelTypes const numberType = rules::typeOfNumber(algorithm.inputValue);
        ArithmeticValueProcessingScalarGeneric const kernel(
            arithmeticRow(algorithm.arithmeticOperator, imageType, numberType, source), imageType,
            output.getVoxelType(), numberType, algorithm.inputValue);
        filters::PointFilter filter(&algorithm, kernel.row());
        filter.addInput(input);
        filter.setOutput(output);
        filter.run(Filter3dTag());
    }
};

Registration<ArithmeticValueProcessing, ScalarArithmeticValueProcessingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ArithmeticValueProcessing)

void ArithmeticValueProcessing::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(inputValue, "inputValue", 0.0);
    declareInput(arithmeticOperator, "arithmeticOperator", ARITHMETIC_ADD, isAnEnumOf<ArithmeticOperatorType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(), rule<RuleEnforceSameSizeAndCalibration>(input));
}

/// The promotion depends on the operator, so that its rule is attached for the run alone. It stays when a rule fails.
void ArithmeticValueProcessing::applyAllRules()
{
    int const kind = promotionKind(arithmeticOperator, source);
    rule<RuleEnforceTypePromotionImageValue>(input, inputValue, kind)(output);
    BaseAlgorithm::applyAllRules();
    PropertyAccess::removeLastRule(output);
}

AlgoBorderInfluence ArithmeticValueProcessing::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
