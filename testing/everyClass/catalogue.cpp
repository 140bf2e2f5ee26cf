#include "testing/everyClass/catalogue.h"

#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace mox::testing {

namespace {

/// The 28 classes of morphology do with their defaults.
void appendMorphology(std::vector<Entry>& entries)
{
    for (std::string const operation : {"Erosion", "Dilation", "Opening", "Closing"}) {
        for (std::string const element : {"2D", "Disk2D", "Line2D", "3D", "Ball3D", "Disk3D", "Line3D"}) {
            entries.push_back({operation + element});
        }
    }
}

void appendPointOperations(std::vector<Entry>& entries)
{
    entries.insert(entries.end(),
                   {{"ArithmeticImageProcessing", Extent::volume, true, false},
                    {"ArithmeticValueProcessing", Extent::volume, true, false, {{"inputValue", "2.5"}}},
                    {"LogicalImageProcessing", Extent::volume, false},
                    {"LogicalValueProcessing", Extent::volume, false, true, {{"inputValue", "29"}}},
                    {"LogicalNotProcessing", Extent::volume, false},
                    {"BitShift", Extent::volume, false},
                    {"InvertImage", Extent::volume, false},
                    {"MaskImageProcessing",
                     Extent::volume,
                     true,
                     true,
                     {},
                     {{"inputBinary", Content::sparse, MOX_UINT8, INTERPRETATION_BINARY}}},
                    {"Anamorphosis",
                     Extent::volume,
                     true,
                     true,
                     {{"inputRange", "0 90"}, {"step", "30"}, {"lut", "10 11 12 13.9"}, {"highIntensity", "99"}}},
                    {"GradientMagnitude3D"},
                    {"IntensityExtrema", Extent::volume, true, false},
                    {"Decimate2D", Extent::volume, true, false},
                    {"BorderConditionExtrapole", Extent::volume, true, false, {{"zoomFactor", "1.5"}}}});
}

/// A hit is a voxel that is set, with three neighbours or more: a mild erosion, which several passes end.
std::string lutOfThePlane()
{
    std::string text;
    for (unsigned int pattern = 0; pattern < 512; ++pattern) {
        bool const isSet = (pattern >> 4U & 1U) != 0;
        text += isSet && std::popcount(pattern) > 3 ? '1' : '0';
    }
    return text;
}

void appendSegmentation(std::vector<Entry>& entries)
{
    // In space a hit is a voxel that is set and has at most one neighbour, in the column or the row beside it.
    entries.insert(entries.end(), {{"Threshold", Extent::volume, true, false, {{"lowLevel", "60"}}},
                                   {"Labeling",
                                    Extent::plane,
                                    true,
                                    false,
                                    {},
                                    {{"input", Content::sparse}, {"output", Content::noise, MOX_UINT32}}},
                                   {"ApplyMorphologicalLut2D",
                                    Extent::volume,
                                    true,
                                    true,
                                    {{"morphologicalLut", lutOfThePlane()}},
                                    {{"input", Content::sparse}}},
                                   {"ApplyMorphologicalLut3D",
                                    Extent::volume,
                                    true,
                                    true,
                                    {{"morphologicalLut", "8192 24576 12288 73728 9216"}},
                                    {{"input", Content::sparse}}}});
}

using Values = std::vector<std::pair<std::string, std::string>>;

Values textureRecipe()
{
    using namespace segmentation;
    std::string group;
    for (auto const feature : {COOC_Contrast, COOC_EntropyMean, COOC_CorrelationRange, HISTO_Mean, HISTO_QuantileR3}) {
        group += std::to_string(feature) + ' ';
    }
    return {{"radius", "2"}, {"textureFeaturesGroup", group}, {"directionCollection", "1 0 0 1"}};
}

void appendTextures(std::vector<Entry>& entries)
{
    std::string const modelFile = MOXELCORE_SOURCE_DIR "/Classification/test/golden/model.txt";
    entries.insert(
        entries.end(),
        {{"TextureFeatureExtraction2D",
          Extent::costlyPlane,
          true,
          false,
          textureRecipe(),
          {{"output", Content::noise, MOX_FLOAT32}}},
         {"CreateTextureClassification2D", Extent::plane, true, false, textureRecipe()},
         {"TextureTraining2D",
          Extent::costlyPlane,
          true,
          false,
          {},
          {{"mask", Content::labels, MOX_UINT8, INTERPRETATION_LABEL}}},
         {"ReadTextureClassificationModel", Extent::plane, true, false, {{"pathClassificationFile", modelFile}}},
         {"ApplyClassification", Extent::costlyPlane, true, false}});
}

void appendRegistration(std::vector<Entry>& entries)
{
    Values const robustFit = {{"transformationType", "AFFINE"}, {"robustEstimation", "1"}, {"confidence", "0.1"}};
    entries.insert(
        entries.end(),
        {{"LandmarkRegistration2D", Extent::plane, true, false, robustFit},
         {"LandmarkRegistration3D", Extent::plane, true, false, robustFit},
         {"ShapeBasedMatching2D",
          Extent::costlyPlane,
          true,
          false,
          {{"numOfLevel", "2"}, {"rotationStep", "90"}, {"scaleBegin", "1"}, {"scaleEnd", "1.5"}, {"scaleStep", "0.5"}},
          {{"templateGradientX", Content::noise, std::nullopt, std::nullopt, Extent::part},
           {"templateGradientY", Content::noise, std::nullopt, std::nullopt, Extent::part},
           {"mask", Content::sparse, MOX_UINT8, INTERPRETATION_BINARY, Extent::part}}}});
}

std::vector<Entry> makeCatalogue()
{
    std::vector<Entry> entries;
    appendMorphology(entries);
    appendPointOperations(entries);
    appendSegmentation(entries);
    appendTextures(entries);
    appendRegistration(entries);
    return entries;
}

} // namespace

ImageEntry Entry::imageOf(std::string const& property) const
{
    auto const found =
        std::find_if(images.begin(), images.end(), [&](ImageEntry const& image) { return image.property == property; });
    ImageEntry image = found != images.end() ? *found : ImageEntry{property};
    image.extent = image.extent.value_or(extent);
    return image;
}

std::vector<Entry> const& catalogue()
{
    static std::vector<Entry> const entries = makeCatalogue();
    return entries;
}

Entry const& entryOf(std::string const& className)
{
    auto const& entries = catalogue();
    auto const found =
        std::find_if(entries.begin(), entries.end(), [&](Entry const& entry) { return entry.className == className; });
    if (found == entries.end()) {
        throw std::out_of_range("the catalogue has no entry for " + className);
    }
    return *found;
}

} // namespace mox::testing
