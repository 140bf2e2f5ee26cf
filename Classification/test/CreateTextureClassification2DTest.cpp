#include <Moxelcore/Classification/CreateTextureClassification2D.h>

#include <gmock/gmock.h>

#include "Classification/test/textureScene.h"

namespace mox::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(CreateTextureClassification2D, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = CreateTextureClassification2D::New();
    std::vector<std::string> names;
    for (unsigned int i = 0; i < algorithm->getNumOfInputProperties(); ++i) {
        names.emplace_back(algorithm->getInputProperty(i)->getName().c_str());
    }
    EXPECT_THAT(names, ElementsAre("numOfClasses", "radius", "textureFeaturesGroup", "minGreyLevelCooccurrence",
                                   "maxGreyLevelCooccurrence", "binSizeCooccurrence", "directionCollection",
                                   "minGreyLevelHistogram", "maxGreyLevelHistogram", "binSizeHistogram",
                                   "userQuantileRatioHistogram"));
    EXPECT_EQ(algorithm->getOutputProperty(0)->getName(), String("classificationModel"));
    EXPECT_EQ(algorithm->numOfClasses, 2U);
    EXPECT_EQ(algorithm->radius, 5U);
    EXPECT_EQ(algorithm->classificationModel.get(), nullptr);
    EXPECT_EQ(algorithm->getAlgoBorderInfluence().getNumOfVoxels(COLUMNS_BEGIN), 0U);
}

TEST(CreateTextureClassification2D, copiesTheRecipe)
{
    TextureClassificationModel* made = nullptr;
    auto const algorithm = CreateTextureClassification2D::New();
    algorithm->numOfClasses = 3;
    algorithm->radius = 8;
    algorithm->textureFeaturesGroup = groupOf({segmentation::HISTO_Peak, segmentation::COOC_Contrast});
    algorithm->minGreyLevelCooccurrence = 1;
    algorithm->maxGreyLevelCooccurrence = 2;
    algorithm->binSizeCooccurrence = 3;
    algorithm->directionCollection = directionsOf({{1, -1}});
    algorithm->minGreyLevelHistogram = 4;
    algorithm->maxGreyLevelHistogram = 5;
    algorithm->binSizeHistogram = 6;
    Vector<double> ratios(6);
    double const given[] = {0.5, 0, -1, std::numeric_limits<double>::quiet_NaN(), 2, -0.0};
    std::copy(std::begin(given), std::end(given), ratios.begin());
    algorithm->userQuantileRatioHistogram = ratios;
    algorithm->classificationModel = &made;
    algorithm->run();
    Model const model(made);
    EXPECT_STREQ(model->getInfo().c_str(), "Number of classes: 3\n"
                                           "radius: 8\n"
                                           "textureFeaturesGroup:\n"
                                           "    HISTO_Peak\n"
                                           "    COOC_Contrast\n"
                                           "minGreyLevelCooccurrence: 1\n"
                                           "maxGreyLevelCooccurrence: 2\n"
                                           "binSizeCooccurrence: 3\n"
                                           "directionCollection:\n"
                                           "    1 -1\n"
                                           "minGreyLevelHistogram: 4\n"
                                           "maxGreyLevelHistogram: 5\n"
                                           "binSizeHistogram: 6\n"
                                           "userQuantileRatioHistogram:\n"
                                           "    0.5\n    0.3\n    0.4\n    0.6\n    2\n    0.8\n");
}

TEST(CreateTextureClassification2D, countsTheLearningDimension)
{
    auto const dimensionOf = [](std::vector<int> const& group) {
        return ModelAccess::get(*createModel(group)).classifier->getLearningSpaceDimension();
    };
    EXPECT_EQ(dimensionOf({segmentation::COOC_ContrastMean}), 1);
    EXPECT_EQ(dimensionOf({segmentation::COOC_Contrast}), 2);
    EXPECT_EQ(dimensionOf({segmentation::HISTO_Mean}), 1);
    EXPECT_EQ(dimensionOf({segmentation::HISTO_Quantile10, segmentation::COOC_InformationMeasuresCorrelation2,
                           segmentation::COOC_ContrastRange, segmentation::HISTO_QuantileR6}),
              5);
}

TEST(CreateTextureClassification2D, tellsWhatIsWrong)
{
    TextureClassificationModel* made = nullptr;
    auto const algorithm = CreateTextureClassification2D::New();
    auto const run = [&] { algorithm->run(); };
    EXPECT_THAT(refusal<RuleException>(run), HasSubstr("Parameter should not be empty."));
    algorithm->textureFeaturesGroup = groupOf({segmentation::COOC_Contrast});
    EXPECT_THAT(refusal<RuleException>(run), HasSubstr("Parameter value cannot be null"));
    algorithm->classificationModel = &made;
    EXPECT_THAT(refusal<RuntimeError>(run), HasSubstr("The learning space dimension must be greater than 0"))
        << "no directions, no features";
    algorithm->numOfClasses = 1;
    EXPECT_THAT(refusal<RuleException>(run), HasSubstr("Parameter value <1> must be greater or equal that <2>."));
    for (unsigned int const tooMany : {65537U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        algorithm->numOfClasses = tooMany;
        EXPECT_THAT(refusal<InvalidCall>(run), HasSubstr("There are too many classes.")) << tooMany;
    }
    algorithm->numOfClasses = 2;
    algorithm->textureFeaturesGroup = groupOf({70});
    EXPECT_THAT(refusal<InvalidCall>(run), HasSubstr("The enumeration value is not valid"));
    EXPECT_EQ(made, nullptr);
}

} // namespace

} // namespace mox::testing
