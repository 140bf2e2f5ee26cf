#pragma once

#include <Moxelcore/Classification/ApplyClassification.h>
#include <Moxelcore/Classification/CreateTextureClassification2D.h>
#include <Moxelcore/Classification/TextureTraining2D.h>

#include <gmock/gmock.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Classification/private/TextureClassificationModelPrivate.h"
#include "testing/Images.h"

// What the tests of training and classification share.

namespace mox::testing {

using classification::ApplyClassification;
using classification::CreateTextureClassification2D;
using classification::ModelAccess;
using classification::TextureClassificationModel;
using classification::TextureTraining2D;
using Model = std::unique_ptr<TextureClassificationModel>;

inline Vector<int> groupOf(std::vector<int> const& types)
{
    Vector<int> group;
    for (int const type : types) {
        group.push_back(type);
    }
    return group;
}

inline Vector<math::Vector2<int>> directionsOf(std::vector<math::Vector2<int>> const& directions)
{
    Vector<math::Vector2<int>> result;
    for (auto const& direction : directions) {
        result.push_back(direction);
    }
    return result;
}

/// A model of radius 2 that has learnt nothing.
inline Model createModel(std::vector<int> const& group, unsigned int numOfClasses = 2)
{
    TextureClassificationModel* model = nullptr;
    auto const algorithm = CreateTextureClassification2D::New();
    algorithm->numOfClasses = numOfClasses;
    algorithm->radius = 2;
    algorithm->textureFeaturesGroup = groupOf(group);
    algorithm->directionCollection = directionsOf({{1, 0}, {0, 1}});
    algorithm->classificationModel = &model;
    algorithm->run();
    return Model(model);
}

inline std::vector<int> const richGroup = {segmentation::COOC_Contrast,         segmentation::COOC_EntropyMean,
                                           segmentation::COOC_CorrelationRange, segmentation::HISTO_Mean,
                                           segmentation::HISTO_Skewness,        segmentation::COOC_SumAverage,
                                           segmentation::HISTO_QuantileR3};

/// Vertical stripes on the left of a picture, horizontal ones on the right, with noise.
template <class T>
std::vector<T> stripes(Sizes const& sizes)
{
    std::mt19937 random(5);
    std::vector<T> voxels;
    for (std::size_t i = 0; i < sizes.numOfVoxels(); ++i) {
        auto const x = static_cast<unsigned int>(i % sizes.columns);
        auto const y = static_cast<unsigned int>(i / sizes.columns % sizes.rows);
        unsigned int const wave = (2 * x < sizes.columns ? x : y) / 2 % 2;
        voxels.push_back(static_cast<T>(20 + 80 * wave + random() % 25));
    }
    return voxels;
}

/// Labels 1 and 2 for the two halves, 0 for three voxels of four.
template <class T>
std::unique_ptr<memory::InMemoryImage> halvesMask(Sizes const& sizes)
{
    std::vector<T> labels;
    for (std::size_t i = 0; i < sizes.numOfVoxels(); ++i) {
        labels.push_back(static_cast<T>(i % 4 != 1 ? 0 : 2 * (i % sizes.columns) < sizes.columns ? 1 : 2));
    }
    auto mask = makeImage(sizes, labels);
    mask->setInterpretation(INTERPRETATION_LABEL);
    return mask;
}

inline void train(TextureClassificationModel& model, ImageModel const& input, ImageModel const& mask,
                  bool finalizes = true)
{
    auto const algorithm = TextureTraining2D::New();
    algorithm->input = &input;
    algorithm->mask = &mask;
    algorithm->finalizeTraining = finalizes;
    algorithm->classificationModel = &model;
    algorithm->run();
}

inline void classify(TextureClassificationModel const& model, ImageModel const& input, ImageModel& output)
{
    auto const algorithm = ApplyClassification::New();
    algorithm->input = &input;
    algorithm->classificationModel = &model;
    algorithm->classifiedImage = &output;
    algorithm->run();
}

/// The text of what a call throws.
template <class E, class Call>
std::string refusal(Call&& call)
{
    try {
        call();
    } catch (E const& exception) {
        return exception.getInfo().c_str();
    }
    return "nothing thrown";
}

inline void expectNullRefused(BaseAlgorithm& algorithm, std::string const& property)
{
    std::string const text = refusal<RuleException>([&] { algorithm.run(); });
    EXPECT_THAT(text, ::testing::HasSubstr("Parameter value cannot be null"));
    EXPECT_THAT(text, ::testing::HasSubstr("Rule error in property " + property));
}

} // namespace mox::testing
