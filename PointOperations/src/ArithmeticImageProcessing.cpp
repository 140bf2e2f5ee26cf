#include <Moxelcore/PointOperations/ArithmeticImageProcessing.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertSameSize.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameSizeAndCalibration.h"
#include "Core/private/Rules/RuleEnforceTypePromotionImageImage.h"
#include "Core/private/declare.h"
#include "Core/private/filters/PointFilter.h"
#include "Core/private/runners.h"
#include "PointOperations/private/ArithmeticRows.h"

namespace mox::point_operations {

namespace {

constexpr char const* source = "PointOperations/src/ArithmeticImageProcessing";

class ScalarArithmeticImageProcessingRunner final : public ScalarRunner<ArithmeticImageProcessing> {
private:
    void execute(ArithmeticImageProcessing& algorithm) const override
    {
        ImageModel const& first = *algorithm.input1.get();
        ImageModel const& second = *algorithm.input2.get();
        auto const row =
            arithmeticRow(algorithm.arithmeticOperator, first.getVoxelType(), second.getVoxelType(), source);
        filters::PointFilter filter(&algorithm, row);
        filter.addInput(first);
        filter.addInput(second);
        filter.setOutput(*algorithm.output.get());
        filter.run(Filter3dTag());
    }
};

Registration<ArithmeticImageProcessing, ScalarArithmeticImageProcessingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ArithmeticImageProcessing)

void ArithmeticImageProcessing::init()
{
    declareInput(input1, "input1", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(input2, "input2", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()),
                 rule<RuleAssertSameSize>(input1));
    declareInput(arithmeticOperator, "arithmeticOperator", ARITHMETIC_ADD, isAnEnumOf<ArithmeticOperatorType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeAndCalibration>(input1));
}

/// The promotion depends on the operator, so that its rule is attached for the run alone. It stays when a rule fails.
void ArithmeticImageProcessing::applyAllRules()
{
    int const kind = promotionKind(arithmeticOperator, source);
    rule<RuleEnforceTypePromotionImageImage>(input1, input2, kind)(output);
    BaseAlgorithm::applyAllRules();
    PropertyAccess::removeLastRule(output);
}

AlgoBorderInfluence ArithmeticImageProcessing::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
