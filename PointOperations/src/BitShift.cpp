#include <Moxelcore/PointOperations/BitShift.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "PointOperations/private/BitShiftScalarGeneric.h"
#include "PointOperations/private/runOnePass.h"

namespace mox::point_operations {

namespace {

enum ShiftDirection { left, right };

struct BitShiftScalarDispatcher {
    template <class T>
    static void run(BitShift& algorithm)
    {
        unsigned int const count = algorithm.shiftCount;
        switch (algorithm.shiftDirection.get()) {
        case left:
            return runOnePass<T>(algorithm, BitShiftScalarGeneric<T, BitShiftOperator_LeftTag>(count));
        case right:
            return runOnePass<T>(algorithm, BitShiftScalarGeneric<T, BitShiftOperator_RightTag>(count));
        default:
            helper::raise<InvalidCall>("PointOperations/src/BitShift",
                                       "The provided shiftDirection is unknow (value=", algorithm.shiftDirection.get(),
                                       ")");
        }
    }
};

using ScalarBitShiftRunner = ScalarOneTypeRunner<BitShift, BitShiftScalarDispatcher, IntegerVoxels>;

Registration<BitShift, ScalarBitShiftRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(BitShift)

void BitShift::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(IntegerVoxels()));
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
    shiftCount = 1;
    shiftDirection = left;
}

AlgoBorderInfluence BitShift::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
