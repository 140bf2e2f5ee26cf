#include "benchmarks/classification.h"

#include <Moxelcore/Classification/ApplyClassification.h>
#include <Moxelcore/Classification/CreateTextureClassification2D.h>
#include <Moxelcore/Classification/TextureTraining2D.h>
#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "benchmarks/Images.h"
#include "benchmarks/texturePlanes.h"

namespace mox::benchmarks {

namespace {

using namespace segmentation;
using classification::TextureClassificationModel;
using memory::InMemoryImage;
using Image = std::unique_ptr<InMemoryImage>;
using Model = std::unique_ptr<TextureClassificationModel>;

constexpr unsigned int numOfClasses = 5;
constexpr unsigned int radius = 5;
constexpr double levelWidth = 16;
constexpr Size lessonSize{48, 24, 1};
constexpr Size cropSize{37, 23, 1};
constexpr Size size{1024, 1024, 1};

std::vector<int> const tenFeatures = {COOC_AngularSecondMomentMean,
                                      COOC_ContrastMean,
                                      COOC_CorrelationMean,
                                      COOC_InverseDifferenceMomentMean,
                                      COOC_SumAverageMean,
                                      COOC_EntropyMean,
                                      HISTO_Mean,
                                      HISTO_Stddev,
                                      HISTO_Skewness,
                                      HISTO_Quantile50};

Image noise(Size const& extent, unsigned int levels)
{
    auto image = std::make_unique<InMemoryImage>();
    fillWithNoise(*image, MOX_UINT8, extent, levels);
    return image;
}

/// The classes are noise of 16, 32, ... 256 levels.
Image lesson(unsigned int classIndex)
{
    return noise(lessonSize, 16U << classIndex);
}

/// Every voxel has a label, from `first` to `last`.
Image mask(Size const& extent, unsigned int first, unsigned int last)
{
    Image image = noise(extent, last - first + 1);
    image->setInterpretation(INTERPRETATION_LABEL);
    std::vector<unsigned char> row(extent.columns);
    for (unsigned int y = 0; y < extent.rows; ++y) {
        image->readRowAt(extent.columns, row.data(), 0, y, 0, 0, 0);
        for (unsigned char& label : row) {
            label = static_cast<unsigned char>(label + first);
        }
        image->writeRowAt(extent.columns, row.data(), 0, y, 0, 0, 0);
    }
    return image;
}

/// Makes the model select all features: only its file can tell it to be content with features that separate the
/// classes no better than others do.
void selectAllFeatures(TextureClassificationModel& model)
{
    auto const path = std::filesystem::temp_directory_path() / "moxelcore-benchmark.xml";
    model.write(path.c_str(), classification::WRITE_MODE_XML, true);
    std::ifstream in(path);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    std::string const tag = "<increase_ratio>";
    std::size_t const value = text.find(tag) + tag.size();
    text.replace(value, text.find('<', value) - value, "-1");
    std::ofstream(path) << text;
    model.read(path.c_str());
    std::filesystem::remove(path);
}

Model untrainedModel()
{
    TextureRecipe const recipe = textureRecipe(tenFeatures, radius, levelWidth);
    Vector<int> group;
    for (int const type : tenFeatures) {
        group.push_back(type);
    }
    TextureClassificationModel* model = nullptr;
    auto const create = classification::CreateTextureClassification2D::New();
    create->numOfClasses = numOfClasses;
    create->radius = radius;
    create->textureFeaturesGroup = group;
    create->directionCollection = recipe.directionCollection;
    create->binSizeCooccurrence = levelWidth;
    create->classificationModel = &model;
    create->run();
    return Model(model);
}

Model trainedModel()
{
    Model model = untrainedModel();
    selectAllFeatures(*model);
    for (unsigned int c = 0; c < numOfClasses; ++c) {
        Image const input = lesson(c);
        Image const labels = mask(lessonSize, c + 1, c + 1);
        auto const training = classification::TextureTraining2D::New();
        training->input = input.get();
        training->mask = labels.get();
        training->finalizeTraining = c + 1 == numOfClasses;
        training->classificationModel = model.get();
        training->run();
    }
    return model;
}

/// The class whose mean is nearest at each voxel of the crop, by the definition of all that leads there.
std::vector<double> expectedLabels()
{
    TextureRecipe const recipe = textureRecipe(tenFeatures, radius, levelWidth);
    auto const planes = texturePlanes(recipe, voxelsOf(*noise(cropSize, 256)), cropSize);
    std::vector<std::vector<std::vector<double>>> lessons;
    for (unsigned int c = 0; c < numOfClasses; ++c) {
        lessons.push_back(texturePlanes(recipe, voxelsOf(*lesson(c)), lessonSize));
    }
    std::vector<std::array<double, numOfClasses>> squares(cropSize.numOfVoxels());
    auto const count = static_cast<double>(lessonSize.numOfVoxels());
    for (std::size_t f = 0; f < planes.size(); ++f) {
        std::array<double, numOfClasses> means = {};
        double variance = 0;
        for (unsigned int c = 0; c < numOfClasses; ++c) {
            for (double const v : lessons[c][f]) {
                means[c] += v / count;
            }
            for (double const v : lessons[c][f]) {
                variance += (v - means[c]) * (v - means[c]) / (count * numOfClasses);
            }
        }
        for (std::size_t i = 0; i < squares.size(); ++i) {
            for (unsigned int c = 0; c < numOfClasses; ++c) {
                squares[i][c] += (planes[f][i] - means[c]) * (planes[f][i] - means[c]) / variance;
            }
        }
    }
    std::vector<double> labels;
    for (auto const& distances : squares) {
        labels.push_back(
            static_cast<double>(std::min_element(distances.begin(), distances.end()) - distances.begin() + 1));
    }
    return labels;
}

boost::shared_ptr<classification::ApplyClassification>
classifier(InMemoryImage const& input, TextureClassificationModel const& model, InMemoryImage& labels)
{
    labels.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    auto apply = classification::ApplyClassification::New();
    apply->input = &input;
    apply->classificationModel = &model;
    apply->classifiedImage = &labels;
    return apply;
}

void check(TextureClassificationModel const& model)
{
    Image const crop = noise(cropSize, 256);
    InMemoryImage labels;
    classifier(*crop, model, labels)->run();
    if (voxelsOf(labels) != expectedLabels()) {
        throw std::runtime_error("the labels are not those of the reference");
    }
}

/// An algorithm made ready to run, with its images and its model.
template <class Algorithm>
struct Prepared {
    boost::shared_ptr<Algorithm> algorithm;
    Model model;
    Image input;
    Image labels;
};

std::function<void()> prepareClassification()
{
    auto const prepared = std::make_shared<Prepared<classification::ApplyClassification>>();
    prepared->model = trainedModel();
    check(*prepared->model);
    prepared->input = noise(size, 256);
    prepared->labels = std::make_unique<InMemoryImage>();
    prepared->algorithm = classifier(*prepared->input, *prepared->model, *prepared->labels);
    return [prepared] { prepared->algorithm->run(); };
}

/// Each voxel is a sample.
std::function<void()> prepareTraining()
{
    check(*trainedModel());
    auto const prepared = std::make_shared<Prepared<classification::TextureTraining2D>>();
    prepared->model = untrainedModel();
    prepared->input = noise(size, 256);
    prepared->labels = mask(size, 1, numOfClasses);
    prepared->algorithm = classification::TextureTraining2D::New();
    prepared->algorithm->input = prepared->input.get();
    prepared->algorithm->mask = prepared->labels.get();
    prepared->algorithm->finalizeTraining = false;
    prepared->algorithm->classificationModel = prepared->model.get();
    return [prepared] { prepared->algorithm->run(); };
}

} // namespace

std::vector<ClassificationCase> classificationCases()
{
    return {{"ApplyClassification/uint8/1024x1024/10 features, 5 classes", size, prepareClassification},
            {"TextureTraining2D/uint8/1024x1024/10 features, 5 classes", size, prepareTraining}};
}

} // namespace mox::benchmarks
