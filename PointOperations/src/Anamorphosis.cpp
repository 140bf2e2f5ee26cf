#include <Moxelcore/PointOperations/Anamorphosis.h>

#include <cmath>
#include <limits>

#include "Core/private/Rules/RuleAssertDimension.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/access/Sizes.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "PointOperations/private/AnamorphosisScalarGeneric.h"
#include "PointOperations/private/runOnePass.h"

namespace mox::point_operations {

namespace {

/// An image of 16-bit voxels below this size is done sooner than its results are found beforehand.
constexpr uint64 foldsFrom = 50000;

struct AnamorphosisScalarDispatcher {
    template <class T>
    static void run(Anamorphosis& algorithm)
    {
        Vector<double> const entries = algorithm.lut;
        math::Vector2<double> const range = algorithm.inputRange;
        AnamorphosisTable const table{range[0],
                                      range[1],
                                      algorithm.step,
                                      entries.data(),
                                      entries.size(),
                                      algorithm.lowIntensity,
                                      algorithm.highIntensity};
        if constexpr (sizeof(T) <= 2) {
            if (sizeof(T) == 1 || access::Sizes::of(*algorithm.input.get()).numOfVoxels() >= foldsFrom) {
                return runOnePass<T>(algorithm, FoldedAnamorphosis<T>(table));
            }
        }
        runOnePass<T>(algorithm, AnamorphosisScalarGeneric<T>(table));
    }
};

using ScalarAnamorphosisRunner = ScalarOneTypeRunner<Anamorphosis, AnamorphosisScalarDispatcher, RealVoxels>;

Registration<Anamorphosis, ScalarAnamorphosisRunner> const registration;

/// As a message shows it.
unsigned int shownSize(double numOfEntries)
{
    constexpr unsigned int most = std::numeric_limits<unsigned int>::max();
    return numOfEntries >= 0 && numOfEntries < most ? static_cast<unsigned int>(numOfEntries) : most;
}

} // namespace

MOX_DEFINE_ALGORITHM(Anamorphosis)

void Anamorphosis::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()),
                 rule<RuleAssertDimension>(SPECTRAL_SERIES, 1U));
    declareInput(inputRange, "inputRange", math::Vector2<double>(0.0, 255.0));
    declareInput(step, "step", 1.0);
    declareInput(lut, "lut", Vector<double>());
    declareInput(lowIntensity, "lowIntensity", 0.0);
    declareInput(highIntensity, "highIntensity", 0.0);
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleEnforceSameSizeCalibrationAndType>(input), rule<RuleEnforceSameInterpretation>(input));
}

void Anamorphosis::applyAllRules()
{
    BaseAlgorithm::applyAllRules();
    math::Vector2<double> const range = inputRange;
    double const wanted = std::trunc((range[1] - range[0]) / step + 1.0);
    auto const size = lut.get().size();
    if (!std::isfinite(wanted) || static_cast<double>(size) < wanted) {
        helper::raise<RuleException>("PointOperations/src/Anamorphosis",
                                     "The lut property must have a minimal size of ", shownSize(wanted),
                                     ". This current size is ", size);
    }
}

AlgoBorderInfluence Anamorphosis::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::point_operations
