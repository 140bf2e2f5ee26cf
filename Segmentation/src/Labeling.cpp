#include <Moxelcore/Segmentation/Labeling.h>

#include <limits>

#include "Core/private/Helper/raise.h"
#include "Core/private/Rules/RuleAssertDimension.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameSizeAndCalibration.h"
#include "Core/private/Rules/RuleSetInterpretation.h"
#include "Core/private/access/FixedBorderCondition.h"
#include "Core/private/declare.h"
#include "Core/private/filters/Filter.h"
#include "Core/private/runners.h"
#include "Segmentation/private/BlockLabeling.h"
#include "Segmentation/private/LabelWriting.h"

namespace mox::segmentation {

namespace {

/// Labels bands, numbers their components, writes the labels. The steps that depend on a voxel type depend on one
/// only: the first on the input's, the last on the output's.
class LabelingPrivate final : public filters::Filter {
public:
    explicit LabelingPrivate(Labeling& algorithm)
        : Filter(&algorithm)
        , input_(*algorithm.input.get())
        , output_(*algorithm.output.get())
        , region_(access::Sizes::of(input_))
        , rowsPerBand_(LabelBand::maxNumOfRows(region_.getNumOfColumns()))
    {
    }
    ~LabelingPrivate() override { detach(); }

    void run()
    {
        announce(2 * region_.numOfVoxels());
        dispatch(RealVoxels(), input_.getVoxelType(), [this]<class In>() { labelBands<In>(); });
    }

private:
    template <class In>
    void labelBands()
    {
        access::View<In> const view(input_, access::FixedBorderCondition<In>::create());
        typename BlockLabeling<In>::Context context{view, {}};
        BlockLabeling<In> blocks(context);
        reduceBands(region_, filters::Slice(), rowsPerBand_, blocks);
        if (!isStopped()) {
            write(blocks.takeBands());
        }
    }

    void write(LabelNumbering::Bands const& bands)
    {
        LabelNumbering const numbering(bands);
        dispatch(IntegerVoxels(), output_.getVoxelType(), [&]<class Out>() {
            requireLabels<Out>(numbering.numOfLabels());
            access::View<Out> const view(output_, access::FixedBorderCondition<Out>::create());
            LabelWriting<Out> writing(numbering, bands, view);
            forEachBand(region_, filters::Slice(), rowsPerBand_, writing);
        });
    }

    template <class Out>
    static void requireLabels(uint64 numOfLabels)
    {
        constexpr auto most = static_cast<uint64>(std::numeric_limits<Out>::max());
        if (numOfLabels > most) {
            helper::raise<RuntimeError>("Segmentation/src/Labeling", "The image has ", numOfLabels,
                                        " components. The output's voxel type ", helper::getText(voxelTypeOf<Out>),
                                        " has no more than ", most, " labels");
        }
    }

    ImageModel const& input_;
    ImageModel& output_;
    access::Region region_;
    unsigned int rowsPerBand_;
};

class ScalarLabelingRunner final : public ScalarRunner<Labeling> {
private:
    void execute(Labeling& algorithm) const override { LabelingPrivate(algorithm).run(); }
};

Registration<Labeling, ScalarLabelingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(Labeling)

void Labeling::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()),
                 rule<RuleAssertDimension>(PLANS, 1U), rule<RuleAssertDimension>(TIME_SERIES, 1U),
                 rule<RuleAssertDimension>(SPECTRAL_SERIES, 1U));
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(), rule<RuleEnforceSameSizeAndCalibration>(input),
                  rule<RuleAssertType>(IntegerVoxels()), rule<RuleSetInterpretation>(INTERPRETATION_LABEL));
}

AlgoBorderInfluence Labeling::getAlgoBorderInfluence() const
{
    return {AlgoBorderInfluence::infinity, AlgoBorderInfluence::infinity, 0, 0, 0};
}

} // namespace mox::segmentation
