#include <Moxelcore/Classification/ApplyClassification.h>

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <thread>

#include "Classification/test/textureScene.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestImage.h"
#include "testing/references/texture.h"

namespace mox::testing {

namespace {

using classification::LDAClassifier;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

Sizes const sizes{24, 18, 1, 1, 1};

Model trainedModel(std::vector<int> const& group = richGroup)
{
    auto model = createModel(group);
    train(*model, *makeImage(sizes, stripes<unsigned char>(sizes)), *halvesMask<unsigned char>(sizes));
    return model;
}

TEST(ApplyClassification, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = ApplyClassification::New();
    EXPECT_STREQ(algorithm->getInputProperty(0)->getName().c_str(), "input");
    EXPECT_STREQ(algorithm->getInputProperty(1)->getName().c_str(), "classificationModel");
    EXPECT_STREQ(algorithm->getOutputProperty(0)->getName().c_str(), "classifiedImage");
    EXPECT_EQ(algorithm->getAlgoBorderInfluence().getNumOfVoxels(ROWS_BEGIN), 0U);
    auto const model = createModel(richGroup);
    algorithm->classificationModel = model.get();
    EXPECT_EQ(algorithm->getAlgoBorderInfluence().getNumOfVoxels(ROWS_BEGIN), 2U);
}

/// Each window on its own, all features, those that are used.
TEST(ApplyClassification, labelsEachVoxelByItsFeatures)
{
    auto const model = trainedModel();
    auto& content = ModelAccess::get(*model);
    auto const voxels = stripes<unsigned char>(sizes);
    memory::InMemoryImage output;
    output.allocate(MOX_UINT16, 1, 1, 1, 1, 1);
    classify(*model, *makeImage(sizes, voxels), output);
    EXPECT_EQ(output.getInterpretation(), INTERPRETATION_LABEL);
    EXPECT_EQ(Sizes::of(output), sizes);
    auto const labels = voxelsOf<unsigned short>(output);
    auto const mirrored = [](int i, int size) { return i < 0 ? -1 - i : i >= size ? 2 * size - 1 - i : i; };
    auto const grey = [&](int x, int y) {
        auto const column = static_cast<std::size_t>(mirrored(x, 24));
        return static_cast<double>(voxels[static_cast<std::size_t>(mirrored(y, 18)) * 24 + column]);
    };
    ASSERT_GT(content.classifier->getClassicationSpaceDimension(), 1);
    ASSERT_LT(content.classifier->getClassicationSpaceDimension(), content.classifier->getLearningSpaceDimension());
    int right = 0;
    for (int i = 0; i < 24 * 18; ++i) {
        auto const features = textureReference(content, grey, i % 24, i / 24);
        std::vector<double> used;
        for (std::size_t f = 0; f < features.size(); ++f) {
            if (content.classifier->isUsedFeature(static_cast<int>(f))) {
                used.push_back(features[f]);
            }
        }
        auto const wanted = content.classifier->classify(
            Eigen::Map<Eigen::VectorXd const>(used.data(), static_cast<Eigen::Index>(used.size())));
        ASSERT_EQ(labels[static_cast<std::size_t>(i)], wanted + 1) << i;
        right += wanted == (i % 24 < 12 ? 0U : 1U);
    }
    EXPECT_GT(right, 24 * 18 * 9 / 10) << "stripes are told apart";
}

TEST(ApplyClassification, doesWithEachGroupOfFeatures)
{
    using namespace segmentation;
    for (std::vector<int> const& group : std::vector<std::vector<int>>{{COOC_ContrastMean},
                                                                       {COOC_Contrast},
                                                                       {HISTO_Mean, HISTO_Quantile50},
                                                                       {COOC_ContrastRange, COOC_ContrastStddev},
                                                                       {COOC_EntropyMean, COOC_Entropy}}) {
        auto const model = trainedModel(group);
        memory::InMemoryImage output;
        output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
        classify(*model, *makeImage(sizes, stripes<unsigned char>(sizes)), output);
        EXPECT_THAT(voxelsOf<unsigned char>(output), Each(::testing::AnyOf(1, 2)));
    }
}

TEST(ApplyClassification, givesTheSameLabelsInEveryTypeOfInputAndOutput)
{
    auto const model = trainedModel();
    memory::InMemoryImage output;
    output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    classify(*model, *makeImage(sizes, stripes<unsigned char>(sizes)), output);
    auto const wanted = voxelsOf<unsigned char>(output);
    for (VoxelTypes const type : voxelTypesOf(RealVoxels())) {
        dispatch(RealVoxels(), type, [&]<class T>() {
            classify(*model, *makeImage(sizes, stripes<T>(sizes)), output);
            EXPECT_EQ(voxelsOf<unsigned char>(output), wanted) << type;
        });
        dispatch(IntegerVoxels(), type, [&]<class T>() {
            memory::InMemoryImage typed;
            typed.allocate(type, 1, 1, 1, 1, 1);
            classify(*model, *makeImage(sizes, stripes<unsigned char>(sizes)), typed);
            auto const labels = voxelsOf<T>(typed);
            EXPECT_TRUE(std::equal(labels.begin(), labels.end(), wanted.begin(), wanted.end(),
                                   [](auto a, auto b) { return static_cast<int>(a) == static_cast<int>(b); }));
        });
    }
}

TEST(ApplyClassification, classifiesPlansAndTimesOfTheFirstSpectralIndex)
{
    Sizes const many{24, 18, 2, 2, 2};
    auto voxels = stripes<unsigned char>(many);
    std::fill(voxels.begin() + static_cast<std::ptrdiff_t>(voxels.size() / 2), voxels.end(),
              static_cast<unsigned char>(7));
    auto const model = trainedModel();
    memory::InMemoryImage output;
    output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    classify(*model, *makeImage(many, voxels), output);
    EXPECT_EQ(Sizes::of(output), (Sizes{24, 18, 2, 2, 1}));
    auto const labels = voxelsOf<unsigned char>(output);
    for (std::size_t plane = 0; plane < 4; ++plane) {
        auto const begin = voxels.begin() + static_cast<std::ptrdiff_t>(plane * 24 * 18);
        memory::InMemoryImage single;
        single.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
        classify(*model, *makeImage(sizes, std::vector<unsigned char>(begin, begin + 24 * 18)), single);
        auto const wanted = voxelsOf<unsigned char>(single);
        ASSERT_TRUE(
            std::equal(wanted.begin(), wanted.end(), labels.begin() + static_cast<std::ptrdiff_t>(plane * 24 * 18)));
    }
}

TEST(ApplyClassification, mayReplaceItsInput)
{
    auto const model = trainedModel();
    auto const image = makeImage(sizes, stripes<unsigned char>(sizes));
    memory::InMemoryImage output;
    output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    classify(*model, *image, output);
    classify(*model, *image, *image);
    EXPECT_EQ(voxelsOf<unsigned char>(*image), voxelsOf<unsigned char>(output));
}

TEST(ApplyClassification, doesNotDependOnTheThreads)
{
    Sizes const large{1300, 60, 1, 1, 1};
    auto const input = makeImage(large, stripes<unsigned short>(large));
    auto const model = trainedModel();
    std::vector<unsigned char> first;
    for (std::size_t const threads : {1U, 2U, 3U, 8U}) {
        tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
        memory::InMemoryImage output;
        output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
        classify(*model, *input, output);
        auto const labels = voxelsOf<unsigned char>(output);
        first = first.empty() ? labels : first;
        ASSERT_EQ(labels, first) << threads;
    }
}

TEST(ApplyClassification, takesEmptyImages)
{
    auto const model = trainedModel();
    for (Sizes const& empty : {Sizes{0, 2, 1, 1, 1}, Sizes{2, 0, 1, 1, 1}, Sizes{2, 2, 1, 0, 1}}) {
        memory::InMemoryImage output;
        output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
        classify(*model, *makeImage(empty, std::vector<unsigned char>()), output);
        EXPECT_EQ(Sizes::of(output), empty);
    }
}

TEST(ApplyClassification, leavesFloatingResultsAlone)
{
    auto const model = trainedModel();
    auto const output = makeImage({1, 1, 1, 1, 1}, std::vector<float>{42});
    classify(*model, *makeImage(sizes, stripes<unsigned char>(sizes)), *output);
    EXPECT_THAT(voxelsOf<float>(*output), ElementsAre(42));
}

TEST(ApplyClassification, refusesTypesWithFewerLabelsThanClasses)
{
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    auto const nothing = makeImage(sizes, std::vector<unsigned char>(sizes.numOfVoxels()));
    nothing->setInterpretation(INTERPRETATION_LABEL);
    auto const model = createModel({segmentation::HISTO_Mean}, 256);
    train(*model, *input, *nothing);
    auto const bytes = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
    EXPECT_THAT(refusal<RuntimeError>([&] { classify(*model, *input, *bytes); }),
                HasSubstr("The model has 256 classes. The output's voxel type uint8 has no more than 255 labels"));
    EXPECT_THAT(voxelsOf<unsigned char>(*bytes), ElementsAre(42));
    auto const words = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned short>{42});
    classify(*model, *input, *words);
    EXPECT_THAT(voxelsOf<unsigned short>(*words), Each(1)); // no class is nearer than any other
}

TEST(ApplyClassification, looksOnlyAtDirectionsThatItsFeaturesUse)
{
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    auto const model = trainedModel({segmentation::HISTO_Mean});
    ModelAccess::get(*model).directionCollection = directionsOf({{9, 0}});
    auto const output = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
    EXPECT_NO_THROW(classify(*model, *input, *output));
}

TEST(ApplyClassification, asksForEachOfItsProperties)
{
    auto const model = trainedModel();
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    memory::InMemoryImage output;
    output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    auto const algorithm = ApplyClassification::New();
    expectNullRefused(*algorithm, "input");
    algorithm->input = input.get();
    expectNullRefused(*algorithm, "classificationModel");
    algorithm->classificationModel = model.get();
    expectNullRefused(*algorithm, "classifiedImage");
    algorithm->classifiedImage = &output;
    EXPECT_NO_THROW(algorithm->run());
}

TEST(ApplyClassification, tellsWhatIsWrong)
{
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    auto const model = trainedModel();
    TestImage output;
    fill(output, {1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
    auto const run = [&] { classify(*model, *input, output); };
    output.setInterpretation(INTERPRETATION_BINARY);
    EXPECT_THAT(refusal<RuleException>(run), HasSubstr("Interpretation must be one of the following items : label, "
                                                       "value. Current interpretation is binary"));
    output.setInterpretation(INTERPRETATION_LABEL);
    output.allocates = false;
    EXPECT_THAT(refusal<RuleException>(run), HasSubstr("Output image cannot be resized"));
    output.allocates = true;
    TextureClassificationModel const empty;
    EXPECT_THAT(refusal<InvalidCall>([&] { classify(empty, *input, output); }),
                HasSubstr("The classifier is invalid."));
    auto const untrained = createModel(richGroup);
    EXPECT_THAT(refusal<InvalidCall>([&] { classify(*untrained, *input, output); }),
                HasSubstr("Call isUsedFeature while while the model is not finalized."));
    auto& content = ModelAccess::get(*model);
    auto const directions = content.directionCollection;
    content.directionCollection = directionsOf({{0, 0}, {9, 0}});
    EXPECT_THAT(refusal<InvalidCall>(run), HasSubstr("The <9,0> direction is imcompatible with the radius."));
    auto const group = content.textureFeaturesGroup;
    content.textureFeaturesGroup.clear();
    EXPECT_THAT(refusal<InvalidCall>(run), HasSubstr("The measures group is empty."));
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
    content.textureFeaturesGroup = group;
    content.directionCollection = directions;
    EXPECT_NO_THROW(run());
    content.textureFeaturesGroup.clear();
    content.textureFeaturesGroup.push_back(segmentation::COOC_EntropyMean);
    content.directionCollection.clear();
    auto const single = trainedModel({segmentation::COOC_EntropyMean});
    ModelAccess::get(*single).directionCollection.clear();
    EXPECT_THAT(refusal<InvalidCall>([&] { classify(*single, *input, output); }),
                HasSubstr("The direction collection is empty."));
}

TEST(ApplyClassification, reportsItsProgressAndStopsWhenCancelled)
{
    auto const model = trainedModel();
    TestImage input;
    Sizes const tall{24, 60, 1, 20, 1};
    fill(input, tall, stripes<unsigned char>(tall));
    memory::InMemoryImage output;
    output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    auto const algorithm = ApplyClassification::New();
    algorithm->input = &input;
    algorithm->classificationModel = model.get();
    algorithm->classifiedImage = &output;
    RecordingInteraction watching;
    algorithm->run(&watching);
    EXPECT_EQ(watching.notified.back(), 100.0);
    input.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::microseconds(300)); };
    RecordingInteraction cancelling;
    cancelling.cancelAtPoll = 2;
    algorithm->run(&cancelling);
    EXPECT_LT(cancelling.notified.back(), 100.0);
}

} // namespace

} // namespace mox::testing
