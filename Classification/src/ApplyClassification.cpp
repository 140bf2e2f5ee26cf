#include <Moxelcore/Classification/ApplyClassification.h>

#include <limits>

#include "Classification/private/modelInUse.h"
#include "Core/private/Helper/raise.h"
#include "Core/private/Rules/RuleAssertInterpretation.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleSetInterpretation.h"
#include "Core/private/access/RowCaches.h"
#include "Core/private/declare.h"
#include "Core/private/filters/StableInput.h"
#include "Core/private/filters/fixedView.h"
#include "Core/private/runners.h"
#include "Segmentation/private/TextureFilter.h"

namespace mox::classification {

namespace {

constexpr char const* source = "Classification/private/ApplyClassificationPrivate";

using access::Position;
using access::Sizes;
using segmentation::TextureFeature;
using segmentation::TexturePlan;

/// The features of the classification space, in its order: ascending in the learning space.
std::vector<TextureFeature> usedFeatures(TextureClassificationModelPrivate const& model)
{
    if (model.textureFeaturesGroup.empty()) {
        helper::raise<InvalidCall>(source, "The measures group is empty.");
    }
    auto const all = segmentation::expandFeatures(model.textureFeaturesGroup, model.directionCollection.size());
    std::vector<TextureFeature> used;
    for (std::size_t f = 0; f < all.size(); ++f) {
        if (model.classifier->isUsedFeature(static_cast<int>(f))) {
            used.push_back(all[f]);
        }
    }
    return used;
}

template <class Out>
class LabelSink final : public segmentation::FeatureRowSink {
public:
    LabelSink(LDAClassifier const& classifier, access::View<Out> const& view)
        : classifier_(classifier)
        , cache_(view)
    {
    }

    void write(Position const& first, std::size_t count, std::vector<double const*> const& rows) override
    {
        classes_.resize(count);
        classifier_.classifyRow(rows, count, classes_.data(), work_);
        auto& row = cache_.getRow(0, static_cast<unsigned int>(count), first);
        Out* const out = row.voxels();
        for (std::size_t x = 0; x < count; ++x) {
            out[x] = static_cast<Out>(classes_[x] + 1);
        }
        cache_.flush(row);
    }

private:
    LDAClassifier const& classifier_;
    access::RowCacheReadWrite<access::View<Out>> cache_;
    std::vector<unsigned int> classes_;
    std::vector<double> work_;
};

template <class Out>
void requireLabels(unsigned int numOfClasses)
{
    constexpr auto most = static_cast<uint64>(std::numeric_limits<Out>::max());
    if (numOfClasses > most) {
        helper::raise<RuntimeError>(source, "The model has ", numOfClasses, " classes. The output's voxel type ",
                                    helper::getText(voxelTypeOf<Out>), " has no more than ", most, " labels");
    }
}

template <class Out>
void classify(ApplyClassification& algorithm)
{
    auto const& model = ModelAccess::get(*algorithm.classificationModel.get());
    LDAClassifier const& classifier = classifierOf(model, source);
    TexturePlan const plan(model, usedFeatures(model), source);
    requireLabels<Out>(model.numOfClasses);
    ImageModel& output = *algorithm.classifiedImage.get();
    filters::StableInput const input(*algorithm.input.get(), output);
    Sizes sizes = Sizes::of(input.image());
    sizes.spectralSeries = std::min(sizes.spectralSeries, 1U); // the result has no further ones
    Sizes outputSizes = sizes;
    outputSizes.spectralSeries = 1;
    segmentation::resizeOutput(output, outputSizes, source);
    auto const view = fixedView<Out, SimdVec::arch_scalar_tag>(output);
    segmentation::TextureFilter(&algorithm, plan, input.image()).run(sizes, [&] {
        return std::make_unique<LabelSink<Out>>(classifier, *view);
    });
}

class ScalarApplyClassificationRunner final : public ScalarRunner<ApplyClassification> {
private:
    void execute(ApplyClassification& algorithm) const override
    {
        if (!dispatch(RealVoxels(), algorithm.input.get()->getVoxelType(), []<class T>() {})) {
            return;
        }
        dispatch(IntegerVoxels(), algorithm.classifiedImage.get()->getVoxelType(),
                 [&]<class Out>() { classify<Out>(algorithm); });
    }
};

Registration<ApplyClassification, ScalarApplyClassificationRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ApplyClassification)

void ApplyClassification::init()
{
    std::vector<ImageInterpretation> const accepted = {INTERPRETATION_LABEL, INTERPRETATION_VALUE};
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>());
    declareInput(classificationModel, "classificationModel", nullptr, rule<RuleAssertNotNull>());
    declareOutput(classifiedImage, "classifiedImage", nullptr, rule<RuleAssertNotNull>(),
                  rule<RuleAssertInterpretation>(accepted), rule<RuleSetInterpretation>(INTERPRETATION_LABEL));
}

AlgoBorderInfluence ApplyClassification::getAlgoBorderInfluence() const
{
    return borderInfluenceOf(classificationModel);
}

} // namespace mox::classification
