#include <Moxelcore/Segmentation/TextureFeatureExtraction2D.h>

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <cstring>
#include <limits>
#include <thread>

#include "Core/private/access/Region.h"
#include "Segmentation/private/TextureSweep.h"
#include "Segmentation/private/declareTextureRecipe.h"
#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestImage.h"
#include "testing/references/texture.h"

namespace mox::testing {

namespace {

using segmentation::TextureFeatureExtraction2D;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

Vector<int> groupOf(std::vector<int> const& types)
{
    Vector<int> group;
    for (int const type : types) {
        group.push_back(type);
    }
    return group;
}

Vector<math::Vector2<int>> directionsOf(std::vector<math::Vector2<int>> const& directions)
{
    Vector<math::Vector2<int>> result;
    for (auto const& direction : directions) {
        result.push_back(direction);
    }
    return result;
}

class Extraction : public ::testing::Test {
protected:
    Extraction()
    {
        output.allocate(MOX_FLOAT32, 1, 1, 1, 1, 1);
        algorithm->output = &output;
        algorithm->radius = 1;
        algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean});
    }

    template <class E>
    std::string refusal()
    {
        try {
            algorithm->run();
        } catch (E const& exception) {
            return exception.getInfo().c_str();
        }
        return "nothing thrown";
    }

    memory::InMemoryImage output;
    boost::shared_ptr<TextureFeatureExtraction2D> algorithm = TextureFeatureExtraction2D::New();
};

// ---- contract

TEST_F(Extraction, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const fresh = TextureFeatureExtraction2D::New();
    std::vector<std::string> names;
    for (unsigned int i = 0; i < fresh->getNumOfInputProperties(); ++i) {
        names.emplace_back(fresh->getInputProperty(i)->getName().c_str());
    }
    EXPECT_THAT(names, ElementsAre("input", "radius", "textureFeaturesGroup", "minGreyLevelCooccurrence",
                                   "maxGreyLevelCooccurrence", "binSizeCooccurrence", "directionCollection",
                                   "minGreyLevelHistogram", "maxGreyLevelHistogram", "binSizeHistogram",
                                   "userQuantileRatioHistogram"));
    EXPECT_EQ(fresh->getOutputProperty(0)->getName(), String("output"));
    EXPECT_EQ(fresh->input.get(), nullptr);
    EXPECT_EQ(fresh->radius, 5U);
    EXPECT_TRUE(fresh->textureFeaturesGroup.get().empty());
    EXPECT_EQ(fresh->minGreyLevelCooccurrence, 0.0);
    EXPECT_EQ(fresh->maxGreyLevelCooccurrence, 255.0);
    EXPECT_EQ(fresh->binSizeCooccurrence, 16.0);
    EXPECT_TRUE(fresh->directionCollection.get().empty());
    EXPECT_EQ(fresh->minGreyLevelHistogram, 0.0);
    EXPECT_EQ(fresh->maxGreyLevelHistogram, 255.0);
    EXPECT_EQ(fresh->binSizeHistogram, 1.0);
    auto const ratios = fresh->userQuantileRatioHistogram.get();
    EXPECT_THAT(std::vector<double>(ratios.begin(), ratios.end()), ElementsAre(-1, -1, -1, -1, -1, -1));
}

TEST_F(Extraction, readsAsFarAsItsRadius)
{
    algorithm->radius = 9;
    auto const influence = algorithm->getAlgoBorderInfluence();
    EXPECT_EQ(influence.getNumOfVoxels(COLUMNS_BEGIN), 9U);
    EXPECT_EQ(influence.getNumOfVoxels(ROWS_END), 9U);
    EXPECT_EQ(influence.getNumOfVoxels(PLANS_END), 0U);
}

TEST_F(Extraction, refusesWhatTheRulesRefuse)
{
    auto const input = makeImage({2, 2, 1, 1, 1}, std::vector<unsigned char>(4));
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Parameter value cannot be null"));
    algorithm->input = input.get();
    algorithm->radius = 0;
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Parameter value cannot be negative or null"));
    algorithm->radius = 1;
    algorithm->textureFeaturesGroup = Vector<int>();
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Parameter should not be empty."));
    algorithm->textureFeaturesGroup = groupOf({0});
    algorithm->binSizeCooccurrence = 0;
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Rule error in property binSizeCooccurrence"));
    algorithm->binSizeCooccurrence = 1;
    algorithm->binSizeHistogram = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Rule error in property binSizeHistogram"));
    algorithm->binSizeHistogram = 1;
    algorithm->userQuantileRatioHistogram = Vector<double>(5);
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Parameter must have a size of 6. Current size is 5"));
    algorithm->userQuantileRatioHistogram = Vector<double>(6);
    output.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Current voxel type is uint8"));
}

TEST_F(Extraction, refusesFeaturesThatCannotBe)
{
    auto const input = makeImage({2, 2, 1, 1, 1}, std::vector<unsigned char>(4));
    algorithm->input = input.get();
    for (int const type : {-1, 69}) {
        algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean, type});
        EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The enumeration value is not valid"));
    }
    for (int const type : {0, 5, 51}) {
        algorithm->textureFeaturesGroup = groupOf({type});
        EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The direction collection is empty."));
    }
    algorithm->directionCollection = directionsOf({{1, 0}, {3, -4}});
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The <3,-4> direction is imcompatible with the radius."));
    algorithm->directionCollection = directionsOf({{2, 0}});
    EXPECT_EQ(refusal<InvalidCall>(), "nothing thrown");
    algorithm->binSizeCooccurrence = 0.01;
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("There are too many grey levels for a co-occurrence matrix."));
    algorithm->binSizeCooccurrence = 1e-320;
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("There are too many grey levels for a co-occurrence matrix."));
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Kurtosis});
    algorithm->binSizeHistogram = 1e-3;
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The histogram has too many classes."));
    algorithm->binSizeHistogram = 1e-310;
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The histogram isn't correctly initialized."));
    algorithm->radius = 4000000000U;
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The radius must not be greater than 1024."));
    EXPECT_EQ(output.getSize(TIME_SERIES), 1U) << "shaped by the one run that was accepted";
}

TEST_F(Extraction, refusesToCountPairsWithoutLevels)
{
    auto const input = makeImage({2, 2, 1, 1, 1}, std::vector<unsigned char>(4));
    algorithm->input = input.get();
    algorithm->textureFeaturesGroup = groupOf({segmentation::COOC_Contrast});
    algorithm->directionCollection = directionsOf({{1, 0}});
    algorithm->maxGreyLevelCooccurrence = -1;
    EXPECT_THAT(refusal<UnexpectedError>(), HasSubstr("Cooccurrence matrix used but not initialized"));
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean});
    EXPECT_THAT(refusal<UnexpectedError>(), HasSubstr("Cooccurrence matrix used but not initialized"));
    algorithm->directionCollection = directionsOf({});
    EXPECT_EQ(refusal<UnexpectedError>(), "nothing thrown");
}

TEST_F(Extraction, refusesWhatOnlyOtherFeaturesWouldUse)
{
    auto const input = makeImage({2, 2, 1, 1, 1}, std::vector<unsigned char>(4));
    algorithm->input = input.get();
    algorithm->radius = 1;
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean});
    algorithm->directionCollection = directionsOf({{1, 0}, {3, 0}});
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The <3,0> direction is imcompatible with the radius."));
    algorithm->textureFeaturesGroup = groupOf({segmentation::COOC_Contrast});
    algorithm->directionCollection = directionsOf({{1, 0}});
    algorithm->binSizeHistogram = 1e-310;
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("The histogram isn't correctly initialized."));
}

TEST_F(Extraction, leavesTheOutputAsItWasWhenItRefuses)
{
    auto const input = makeImage({4, 3, 1, 1, 1}, std::vector<unsigned char>(12));
    auto const expectUntouched = [&](char const* message) {
        output.allocate(MOX_FLOAT32, 2, 1, 1, 1, 1);
        float const voxels[] = {7, 8};
        output.writeRowAt(2, voxels, 0, 0, 0, 0, 0);
        EXPECT_THAT(refusal<InvalidCall>(), HasSubstr(message));
        EXPECT_EQ(Sizes::of(output), (Sizes{2, 1, 1, 1, 1})) << message;
        EXPECT_THAT(voxelsOf<float>(output), ::testing::ElementsAre(7, 8)) << message;
    };
    algorithm->input = input.get();
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean, segmentation::HISTO_Peak, 69});
    algorithm->directionCollection = directionsOf({{9, 9}});
    algorithm->radius = 2;
    expectUntouched("The enumeration value is not valid"); // before the direction, which does not fit either
    algorithm->textureFeaturesGroup = groupOf({segmentation::COOC_Contrast, segmentation::HISTO_Mean});
    expectUntouched("The <9,9> direction is imcompatible with the radius.");
    algorithm->directionCollection = directionsOf({});
    expectUntouched("The direction collection is empty.");
    algorithm->directionCollection = directionsOf({{1, 0}});
    algorithm->binSizeCooccurrence = 0.01;
    expectUntouched("There are too many grey levels for a co-occurrence matrix.");
}

TEST_F(Extraction, refusesMoreFeaturesThanAnImageHasTimeSeries)
{
    auto const input = makeImage({1, 1, 1, 2148, 1}, std::vector<unsigned char>(2148));
    algorithm->input = input.get();
    algorithm->textureFeaturesGroup = groupOf(std::vector<int>(1000000, segmentation::HISTO_Mean));
    EXPECT_THAT(refusal<InvalidCall>(), HasSubstr("There are too many features for the time series of an image."));
}

TEST_F(Extraction, hasNoLevelBehindTheLastInRangesThatSwallowOne)
{
    std::vector<uint64> voxels(81, std::numeric_limits<uint64>::max());
    auto const input = makeImage({9, 9, 1, 1, 1}, voxels);
    algorithm->input = input.get();
    algorithm->radius = 2;
    algorithm->textureFeaturesGroup = groupOf({segmentation::COOC_Contrast, segmentation::COOC_AngularSecondMoment});
    algorithm->directionCollection = directionsOf({{1, 0}});
    algorithm->maxGreyLevelCooccurrence = 0x1p64;
    algorithm->binSizeCooccurrence = 0x1p60;
    algorithm->run();
    auto const features = voxelsOf<float>(output);
    EXPECT_TRUE(std::all_of(features.begin(), features.begin() + 81, [](float v) { return v == 0; }));
    EXPECT_TRUE(std::all_of(features.begin() + 81, features.end(), [](float v) { return v == 1; }));
}

TEST_F(Extraction, refusesAnOutputThatCannotBeResized)
{
    auto const input = makeImage({2, 2, 1, 1, 1}, std::vector<unsigned char>(4));
    TestImage stubborn;
    fill(stubborn, {1, 1, 1, 1, 1}, std::vector<float>{42});
    stubborn.allocates = false;
    algorithm->input = input.get();
    algorithm->output = &stubborn;
    EXPECT_THAT(refusal<RuleException>(), HasSubstr("Output image cannot be resized"));
    EXPECT_THAT(voxelsOf<float>(stubborn), ElementsAre(42));
}

// ---- literal

TEST_F(Extraction, writesAPlaneForEachFeature)
{
    auto const input = makeImage({3, 1, 1, 1, 1}, std::vector<unsigned char>{0, 10, 100});
    algorithm->input = input.get();
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean, segmentation::COOC_Contrast,
                                               segmentation::HISTO_Peak, segmentation::COOC_ContrastMean});
    algorithm->directionCollection = directionsOf({{1, 0}, {0, 1}});
    algorithm->run();
    EXPECT_EQ(Sizes::of(output), (Sizes{3, 1, 1, 5, 1}));
    // The mirrored row is 0 0 10 100 100, three times over; levels 0 0 0 6 6. The disk has two pairs in either
    // direction, those across the rows of one value.
    float const mean0 = 0.5F + (0 + 0 + 10 + 0 + 0) / 5.0F;
    float const mean1 = 0.5F + (0 + 10 + 100 + 10 + 10) / 5.0F;
    float const mean2 = 0.5F + (10 + 100 + 100 + 100 + 100) / 5.0F;
    float const step = 256 * 36 / 2.0F; // one of two pairs differs by six levels
    EXPECT_THAT(voxelsOf<float>(output),
                ElementsAre(mean0, mean1, mean2, 0, step, step, 0, 0, 0, 0.5F, 10.5F, 100.5F, 0, step / 2, step / 2));
}

TEST_F(Extraction, givesARepeatedFeatureTwice)
{
    auto const input = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned char>{7});
    algorithm->input = input.get();
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean, segmentation::HISTO_Mean});
    algorithm->run();
    EXPECT_THAT(voxelsOf<float>(output), ElementsAre(7.5F, 7.5F));
}

TEST_F(Extraction, mapsSeriesToPlanesInItsOddWay)
{
    // Time t and spectral index s go to planes s (t + 1) numOfFeatures.
    for (Sizes const& sizes : {Sizes{2, 1, 1, 3, 1}, Sizes{2, 1, 2, 2, 3}}) {
        std::vector<unsigned char> voxels;
        for (unsigned int s = 0; s < sizes.spectralSeries; ++s) {
            for (unsigned int t = 0; t < sizes.timeSeries; ++t) {
                voxels.insert(voxels.end(), 2 * sizes.plans, static_cast<unsigned char>(10 * s + t));
            }
        }
        auto const input = makeImage(sizes, voxels);
        unsigned int const planes = 2 * sizes.timeSeries * sizes.spectralSeries;
        fill(output, {2, 1, sizes.plans, planes, 1}, std::vector<float>(std::size_t{2} * sizes.plans * planes, 99));
        algorithm->input = input.get();
        algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean, segmentation::HISTO_Variance});
        algorithm->run();
        std::vector<float> wanted(std::size_t{2} * sizes.plans * planes, 0);
        for (unsigned int t = 0; t < sizes.timeSeries; ++t) {
            for (unsigned int s = 0; s < sizes.spectralSeries; ++s) {
                std::fill_n(wanted.begin() + s * (t + 1) * 2 * 2 * sizes.plans, 2 * sizes.plans,
                            static_cast<float>(10 * s + t) + 0.5F);
            }
        }
        EXPECT_EQ(voxelsOf<float>(output), wanted);
    }
}

// ---- typed

template <class T>
class ExtractionTyped : public Extraction {
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(ExtractionTyped, RealTypes);

TYPED_TEST(ExtractionTyped, givesTheFeaturesOfTheSweep)
{
    std::mt19937 random(1);
    Sizes const sizes{33, 25, 1, 1, 1};
    auto const input = makeImage(sizes, randomVoxels<TypeParam>(random, sizes.numOfVoxels()));
    auto& extraction = *this->algorithm;
    extraction.input = input.get();
    extraction.radius = 2;
    extraction.textureFeaturesGroup = groupOf({segmentation::COOC_Correlation, segmentation::COOC_EntropyMean});
    extraction.directionCollection = directionsOf({{1, 0}, {1, 1}});
    this->output.allocate(MOX_FLOAT64, 1, 1, 1, 1, 1);
    extraction.run();
    auto const found = voxelsOf<double>(this->output);

    auto const recipe = segmentation::recipeOf(extraction);
    segmentation::TexturePlan const plan(recipe, allFeatures(recipe, ""), "");
    segmentation::TextureSweep sweep(plan, *input);
    sweep.begin(access::Region(sizes));
    for (std::size_t y = 0; y < 25; ++y) {
        sweep.compute(static_cast<int>(y), 0, 33);
        for (std::size_t f = 0; f < 3; ++f) {
            ASSERT_TRUE(std::equal(sweep.rows()[f], sweep.rows()[f] + 33,
                                   found.begin() + static_cast<std::ptrdiff_t>((f * 25 + y) * 33)));
        }
    }
}

// ---- run

TEST_F(Extraction, doesNotDependOnTheThreads)
{
    std::mt19937 random(2);
    Sizes const sizes{1100, 45, 2, 1, 1};
    auto const input = makeImage(sizes, randomVoxels<unsigned char>(random, sizes.numOfVoxels()));
    algorithm->input = input.get();
    algorithm->radius = 3;
    algorithm->textureFeaturesGroup = groupOf({segmentation::COOC_Entropy, segmentation::COOC_CorrelationRange,
                                               segmentation::HISTO_Kurtosis, segmentation::HISTO_Quantile25});
    algorithm->directionCollection = directionsOf({{1, 0}, {0, 1}});
    std::vector<float> first;
    for (std::size_t const threads : {1U, 2U, 3U, 8U}) {
        tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
        algorithm->run();
        auto const voxels = voxelsOf<float>(output);
        first = first.empty() ? voxels : first;
        ASSERT_EQ(std::memcmp(voxels.data(), first.data(), first.size() * sizeof(float)), 0) << threads;
    }
}

TEST_F(Extraction, mayReplaceItsInput)
{
    std::mt19937 random(3);
    std::vector<float> voxels(200);
    for (float& voxel : voxels) {
        voxel = static_cast<float>(random() % 256);
    }
    auto const input = makeImage({20, 10, 1, 1, 1}, voxels);
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Mean, segmentation::HISTO_Variance});
    algorithm->input = input.get();
    algorithm->run();
    auto const wanted = voxelsOf<float>(output);
    algorithm->output = input.get();
    algorithm->run();
    EXPECT_EQ(voxelsOf<float>(*input), wanted);
}

TEST_F(Extraction, takesEmptyImages)
{
    for (Sizes const& sizes :
         {Sizes{0, 2, 2, 1, 1}, Sizes{2, 0, 2, 1, 1}, Sizes{2, 2, 0, 1, 1}, Sizes{2, 2, 2, 0, 1}}) {
        auto const input = makeImage(sizes, std::vector<float>());
        algorithm->input = input.get();
        algorithm->run();
        EXPECT_EQ(Sizes::of(output), sizes);
    }
}

TEST_F(Extraction, reportsItsProgressAndStopsWhenCancelled)
{
    TestImage input;
    fill(input, {20, 60, 1, 20, 1}, std::vector<unsigned char>(24000, 9));
    algorithm->input = &input;
    RecordingInteraction watched;
    algorithm->run(&watched);
    EXPECT_EQ(watched.notified.back(), 100.0);
    input.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::microseconds(300)); };
    RecordingInteraction cancelling;
    cancelling.cancelAtPoll = 2;
    algorithm->run(&cancelling);
    EXPECT_LT(cancelling.notified.back(), 100.0);
    input.beforeRowOperation = [] {};
    algorithm->run();
    EXPECT_THAT(voxelsOf<float>(output), ::testing::Contains(9.5F));
}

TEST_F(Extraction, tellsOfRowsThatCannotBeReadOrWritten)
{
    TestImage input;
    fill(input, {9, 12, 1, 1, 1}, std::vector<unsigned char>(108, 9));
    algorithm->input = &input;
    for (int const k : {1, 7, 20}) {
        input.failAt(k, TestImage::Fault::returnsFalse);
        EXPECT_NE(refusal<UnexpectedError>(), "nothing thrown");
    }
    input.failAt(0, TestImage::Fault::returnsFalse);
    TestImage target;
    fill(target, {1, 1, 1, 1, 1}, std::vector<float>(1));
    algorithm->output = &target;
    target.failAt(3, TestImage::Fault::throws);
    EXPECT_THAT(refusal<UnexpectedError>(), HasSubstr("the row operation was told to fail"));
    target.failAt(0, TestImage::Fault::returnsFalse);
    algorithm->run();
    EXPECT_THAT(voxelsOf<float>(target), Each(9.5F));
}

TEST_F(Extraction, leavesComplexInputsAlone)
{
    memory::InMemoryImage input;
    input.allocate(MOX_COMPLEX_FLOAT32, 2, 2, 1, 1, 1);
    fill(output, {1, 1, 1, 1, 1}, std::vector<float>{42});
    algorithm->input = &input;
    algorithm->run();
    EXPECT_THAT(voxelsOf<float>(output), ElementsAre(42));
}

} // namespace

} // namespace mox::testing
