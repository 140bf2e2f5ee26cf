#include <Moxelcore/Classification/TextureTraining2D.h>

#include <gmock/gmock.h>

#include <boost/archive/text_oarchive.hpp>

#include <sstream>
#include <thread>

#include "Classification/private/modelFile.h"
#include "Classification/test/textureScene.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestImage.h"
#include "testing/references/texture.h"

namespace mox::testing {

namespace {

using classification::LDAClassifier;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string contentOf(TextureClassificationModel const& model)
{
    return classification::modelFile::compose(ModelAccess::get(model), classification::WRITE_MODE_BINARY);
}

Sizes const sizes{24, 18, 1, 1, 1};

TEST(TextureTraining2D, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = TextureTraining2D::New();
    EXPECT_STREQ(algorithm->getInputProperty(0)->getName().c_str(), "input");
    EXPECT_STREQ(algorithm->getInputProperty(1)->getName().c_str(), "mask");
    EXPECT_STREQ(algorithm->getInputProperty(2)->getName().c_str(), "finalizeTraining");
    EXPECT_STREQ(algorithm->getOutputProperty(0)->getName().c_str(), "classificationModel");
    EXPECT_TRUE(algorithm->finalizeTraining);
    EXPECT_EQ(algorithm->getAlgoBorderInfluence().getNumOfVoxels(COLUMNS_BEGIN), 0U);
    auto const model = createModel(richGroup);
    algorithm->classificationModel = model.get();
    EXPECT_EQ(algorithm->getAlgoBorderInfluence().getNumOfVoxels(COLUMNS_BEGIN), 2U);
    EXPECT_EQ(algorithm->getAlgoBorderInfluence().getNumOfVoxels(PLANS_BEGIN), 0U);
}

/// Without the feature that happens to be constant: rounding decides about the rest of its variance.
std::vector<int> const varyingGroup(richGroup.begin(), richGroup.end() - 1);

/// A model that is fed with the features of the labelled voxels, one window after the other.
std::string trainedByHand(std::vector<unsigned char> const& voxels, ImageModel const& mask)
{
    auto const model = createModel(varyingGroup);
    auto& content = ModelAccess::get(*model);
    auto const labels = voxelsOf<unsigned char>(mask);
    auto const mirrored = [](int i, int size) { return i < 0 ? -1 - i : i >= size ? 2 * size - 1 - i : i; };
    auto const grey = [&](int x, int y) {
        auto const column = static_cast<std::size_t>(mirrored(x, 24));
        return static_cast<double>(voxels[static_cast<std::size_t>(mirrored(y, 18)) * 24 + column]);
    };
    for (int i = 0; i < 24 * 18; ++i) {
        if (labels[static_cast<std::size_t>(i)] != 0) {
            auto const features = textureReference(content, grey, i % 24, i / 24);
            content.classifier->update(
                Eigen::Map<Eigen::VectorXd const>(features.data(), static_cast<Eigen::Index>(features.size())),
                labels[static_cast<std::size_t>(i)] - 1);
        }
    }
    content.classifier->finalize();
    return classification::modelFile::compose(content, classification::WRITE_MODE_TEXT);
}

/// The numbers of two texts agree but for rounding, all else to the letter.
void expectNearlyEqual(std::string const& a, std::string const& b)
{
    std::istringstream first(a);
    std::istringstream second(b);
    std::string wordA;
    std::string wordB;
    while (first >> wordA) {
        ASSERT_TRUE(second >> wordB);
        if (wordA != wordB) {
            ASSERT_NEAR(std::stod(wordA), std::stod(wordB), 1e-7 * (1 + std::abs(std::stod(wordA))));
        }
    }
    EXPECT_FALSE(second >> wordB);
}

TEST(TextureTraining2D, learnsTheFeaturesOfTheLabelledVoxels)
{
    auto const voxels = stripes<unsigned char>(sizes);
    auto const input = makeImage(sizes, voxels);
    auto const mask = halvesMask<unsigned char>(sizes);
    auto const model = createModel(varyingGroup);
    train(*model, *input, *mask);
    expectNearlyEqual(classification::modelFile::compose(ModelAccess::get(*model), classification::WRITE_MODE_TEXT),
                      trainedByHand(voxels, *mask));
}

TEST(TextureTraining2D, learnsTheSameFromEveryMaskType)
{
    auto const input = makeImage(sizes, stripes<short>(sizes));
    auto const wanted = createModel(richGroup);
    train(*wanted, *input, *halvesMask<unsigned char>(sizes));
    for (VoxelTypes const type : voxelTypesOf(IntegerVoxels())) {
        dispatch(IntegerVoxels(), type, [&]<class T>() {
            auto const model = createModel(richGroup);
            train(*model, *input, *halvesMask<T>(sizes));
            EXPECT_EQ(contentOf(*model), contentOf(*wanted)) << type;
        });
    }
}

TEST(TextureTraining2D, learnsFromSeveralImagesBeforeItIsFinalized)
{
    Sizes const twice{24, 18, 2, 1, 1};
    auto const voxels = stripes<unsigned char>(twice);
    auto const both = makeImage(twice, voxels);
    auto const maskOfBoth = halvesMask<unsigned char>(twice);
    auto const atOnce = createModel(richGroup);
    train(*atOnce, *both, *maskOfBoth);

    auto const inSteps = createModel(richGroup);
    auto const middle = voxels.begin() + static_cast<std::ptrdiff_t>(sizes.numOfVoxels());
    auto const mask = halvesMask<unsigned char>(sizes);
    train(*inSteps, *makeImage(sizes, std::vector<unsigned char>(voxels.begin(), middle)), *mask, false);
    train(*inSteps, *makeImage(sizes, std::vector<unsigned char>(middle, voxels.end())), *mask, true);
    EXPECT_EQ(contentOf(*inSteps), contentOf(*atOnce));
}

TEST(TextureTraining2D, learnsNothingFromAMaskOfZeros)
{
    auto const model = createModel(richGroup);
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    auto const mask = makeImage(sizes, std::vector<unsigned char>(sizes.numOfVoxels()));
    mask->setInterpretation(INTERPRETATION_BINARY);
    train(*model, *input, *mask);
    EXPECT_EQ(ModelAccess::get(*model).classifier->getClassicationSpaceDimension(), 1);
}

TEST(TextureTraining2D, leavesTheModelAloneForVoxelsThatItDoesNotTake)
{
    auto const model = createModel(richGroup);
    std::string const before = contentOf(*model);
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    train(*model, *input, *halvesMask<float>(sizes));
    EXPECT_EQ(contentOf(*model), before);
    memory::InMemoryImage complex;
    complex.allocate(MOX_COMPLEX_FLOAT32, 24, 18, 1, 1, 1);
    train(*model, complex, *halvesMask<unsigned char>(sizes));
    EXPECT_EQ(contentOf(*model), before);
}

TEST(TextureTraining2D, tellsWhatIsWrong)
{
    auto const model = createModel(richGroup);
    std::string const before = contentOf(*model);
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    auto const mask = halvesMask<int64>(sizes);
    auto const refusalWith = [&](auto exception, ImageModel const& aMask) {
        return refusal<typename decltype(exception)::type>([&] { train(*model, *input, aMask); });
    };
    std::type_identity<RuleException> const rule;
    std::type_identity<BadIndex> const badIndex;
    mask->setInterpretation(INTERPRETATION_VALUE);
    EXPECT_THAT(refusalWith(rule, *mask), HasSubstr("Interpretation must be one of the following items : binary, "
                                                    "label. Current interpretation is value"));
    mask->setInterpretation(INTERPRETATION_LABEL);
    EXPECT_THAT(refusalWith(rule, *halvesMask<int>({24, 17, 1, 1, 1})), HasSubstr("Images don't have the same size"));
    for (int64 const label : {int64{3}, int64{-1}, int64{1} << 33U, (int64{1} << 32U) + 1}) {
        auto labels = voxelsOf<int64>(*mask);
        labels.back() = label;
        auto const wrong = makeImage(sizes, labels);
        wrong->setInterpretation(INTERPRETATION_LABEL);
        EXPECT_THAT(refusalWith(badIndex, *wrong), HasSubstr("index must be less than 2")) << label;
    }
    EXPECT_EQ(contentOf(*model), before) << "labels are checked before anything is learnt";

    TextureClassificationModel empty;
    EXPECT_THAT(refusal<InvalidCall>([&] { train(empty, *input, *mask); }), HasSubstr("The classifier is invalid."));
    ModelAccess::get(*model).directionCollection.clear();
    EXPECT_THAT(refusal<InvalidCall>([&] { train(*model, *input, *mask); }),
                HasSubstr("The direction collection is empty."));
    ModelAccess::get(*model).directionCollection = directionsOf({{9, 0}, {1, 0}});
    EXPECT_THAT(refusal<InvalidCall>([&] { train(*model, *input, *mask); }),
                HasSubstr("The <9,0> direction is imcompatible with the radius."));
}

TEST(TextureTraining2D, doesNotTrainAFinalizedModel)
{
    auto const model = createModel(richGroup);
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    auto const mask = halvesMask<unsigned char>(sizes);
    train(*model, *input, *mask);
    EXPECT_THAT(refusal<RuntimeError>([&] { train(*model, *input, *mask); }),
                HasSubstr("Cannot update of model that has been finalized"));
    auto const nothing = makeImage(sizes, std::vector<unsigned char>(sizes.numOfVoxels()));
    nothing->setInterpretation(INTERPRETATION_LABEL);
    EXPECT_NO_THROW(train(*model, *input, *nothing, false)) << "no voxel with a label is met";
}

TEST(TextureTraining2D, asksForEachOfItsProperties)
{
    auto const model = createModel(richGroup);
    auto const input = makeImage(sizes, stripes<unsigned char>(sizes));
    auto const mask = halvesMask<unsigned char>(sizes);
    auto const algorithm = TextureTraining2D::New();
    expectNullRefused(*algorithm, "input");
    algorithm->input = input.get();
    expectNullRefused(*algorithm, "mask");
    algorithm->mask = mask.get();
    expectNullRefused(*algorithm, "classificationModel");
    algorithm->classificationModel = model.get();
    EXPECT_NO_THROW(algorithm->run());
}

TEST(TextureTraining2D, reportsItsProgressAndIsNotFinalizedWhenCancelled)
{
    TestImage input;
    Sizes const tall{24, 400, 1, 1, 1};
    fill(input, tall, stripes<unsigned char>(tall));
    auto const mask = halvesMask<unsigned char>(tall);
    auto const model = createModel(richGroup);
    auto const algorithm = TextureTraining2D::New();
    algorithm->input = &input;
    algorithm->mask = mask.get();
    algorithm->classificationModel = model.get();
    input.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::microseconds(300)); };
    RecordingInteraction cancelling;
    cancelling.cancelAtPoll = 2;
    algorithm->run(&cancelling);
    EXPECT_LT(cancelling.notified.back(), 100.0);
    EXPECT_THROW(ModelAccess::get(*model).classifier->isUsedFeature(0), InvalidCall);
    input.beforeRowOperation = [] {};
    RecordingInteraction watching;
    algorithm->run(&watching);
    EXPECT_EQ(watching.notified.back(), 100.0);
    EXPECT_NO_THROW(ModelAccess::get(*model).classifier->isUsedFeature(0));
}

} // namespace

} // namespace mox::testing
