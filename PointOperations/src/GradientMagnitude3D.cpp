#include <Moxelcore/PointOperations/GradientMagnitude3D.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertSameSize.h"
#include "Core/private/Rules/RuleAssertSameType.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/declare.h"
#include "Core/private/filters/ImagesToImageFilter.h"
#include "Core/private/runners.h"
#include "PointOperations/private/GradientMagnitudeScalarGeneric.h"

namespace mox::point_operations {

namespace {

template <class T, class Kernel>
void runFilter(GradientMagnitude3D& algorithm, Kernel const& kernel)
{
    ImagesToImageFilter<Kernel, Filter3dTag, T, T, T, T> filter(&algorithm, kernel);
    filter.setInput(*algorithm.input1.get(), *algorithm.input2.get(), *algorithm.input3.get());
    filter.setOutput(*algorithm.output.get());
    filter.run();
}

class ScalarGradientMagnitude3DRunner final : public ScalarRunner<GradientMagnitude3D> {
private:
    void execute(GradientMagnitude3D& algorithm) const override
    {
        dispatch(RealVoxels(), algorithm.input1.get()->getVoxelType(), [&]<class T>() {
            switch (int const mode = algorithm.outputMode) {
            case GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN:
                return runFilter<T>(algorithm, GradientEuclideanScalarGeneric<T>());
            case GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS:
                return runFilter<T>(algorithm, GradientMaximumScalarGeneric<T>());
            default:
                helper::raise<InvalidCall>("PointOperations/src/GradientMagnitude3D_Scalar",
                                           "The provided gradient outputMode is an unknown (value=", mode, ").");
            }
        });
    }
};

Registration<GradientMagnitude3D, ScalarGradientMagnitude3DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(GradientMagnitude3D)

void GradientMagnitude3D::init()
{
    declareInput(input1, "input1", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(input2, "input2", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertSameType>(input1),
                 rule<RuleAssertSameSize>(input1));
    declareInput(input3, "input3", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertSameType>(input1),
                 rule<RuleAssertSameSize>(input1));
    declareInput(outputMode, "outputMode", GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN,
                 hasNamesOf<GradientMagnitudeOutputType>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input1), rule<RuleEnforceSameInterpretation>(input1));
}

AlgoBorderInfluence GradientMagnitude3D::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
