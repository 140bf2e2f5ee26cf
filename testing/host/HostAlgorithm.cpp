#include "testing/host/HostAlgorithm.h"

#include <Moxelcore/Core/Enum/DecimationOp.h>
#include <Moxelcore/Core/Runnable.h>

#include "Core/private/declare.h"

namespace moxel::testing {

namespace {

class ScalarHostAlgorithmRunner final : public mox::Runnable {
public:
    void run(mox::BaseAlgorithm* algorithm) override
    {
        auto& concrete = dynamic_cast<HostAlgorithm&>(*algorithm);
        concrete.work(concrete);
    }
    bool canRun(mox::BaseAlgorithm*) override { return true; }
    mox::OptimLevelType getOptimLevel() override { return mox::OptimLevelType::SCALAR; }
};

/// Gives the output the input's sizes, where there are both.
class SameSizes final : public mox::Rules<mox::ImageModel*> {
public:
    explicit SameSizes(mox::Property<mox::ImageModel const*> const& input)
        : input_(&input)
    {
    }

    void apply(mox::PropertyValue<mox::ImageModel*>& output) override
    {
        mox::ImageModel const* const input = input_->get();
        if (input != nullptr && output.value != nullptr) {
            output.value->allocate(output.value->getVoxelType(), input->getSize(mox::COLUMNS),
                                   input->getSize(mox::ROWS), input->getSize(mox::PLANS),
                                   input->getSize(mox::TIME_SERIES), input->getSize(mox::SPECTRAL_SERIES));
        }
    }

private:
    mox::Property<mox::ImageModel const*> const* input_;
};

mox::RunnerRegistration<HostAlgorithm, ScalarHostAlgorithmRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(HostAlgorithm)

void HostAlgorithm::init()
{
    declareInput(input, "input", nullptr);
    declareInput(mode, "mode", 1, mox::hasNamesOf<mox::miscellaneous::DecimationOp>());
    declareInput(flag, "flag", true);
    declareInput(count, "count", -3);
    declareInput(large, "large", mox::uint64{18446744073709551615U});
    declareInput(label, "label", "");
    declareInput(lut, "lut", mox::Vector<unsigned char>());
    declareInput(centre, "centre", mox::math::Vector3<double>(1, 2, 0.5));
    declareInput(points, "points", nullptr);
    declareInput(transform, "transform", mox::math::Matrix3<double>());
    declareOutput(output, "output", nullptr, mox::rule<SameSizes>(input));
    declareOutput(second, "second", nullptr);
    declareOutput(mean, "mean", 0.0);
    declareOutput(extrema, "extrema", nullptr);
    declareOutput(moments, "moments", mox::math::Matrix2<double>(1, 0, 0, 1));
}

mox::AlgoBorderInfluence HostAlgorithm::getAlgoBorderInfluence() const
{
    unsigned int const infinity = mox::AlgoBorderInfluence::infinity;
    return {0, infinity, 1, 2, 3, 4, 5, 6, 7, 8};
}

void setMean(HostAlgorithm& algorithm, double mean)
{
    mox::PropertyAccess::write(algorithm.mean, mean);
}

} // namespace moxel::testing
