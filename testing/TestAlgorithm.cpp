#include "testing/TestAlgorithm.h"

#include "Core/private/declare.h"
#include "Core/private/runners.h"

namespace mox::testing {

namespace {

class ScalarTestAlgorithmRunner final : public ScalarRunner<TestAlgorithm> {
private:
    void execute(TestAlgorithm& algorithm) const override { algorithm.work(algorithm); }
};

RunnerRegistration<TestAlgorithm, ScalarTestAlgorithmRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(TestAlgorithm)

void TestAlgorithm::init()
{
    declareInput(input, "input", nullptr);
    declareInput(number, "number", 0.0);
    declareOutput(output, "output", nullptr);
}

AlgoBorderInfluence TestAlgorithm::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::testing
