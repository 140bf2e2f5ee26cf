#include "benchmarks/Cases.h"

#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>

#include "benchmarks/texturePlanes.h"

namespace mox::benchmarks {

namespace {

using namespace segmentation;

std::vector<int> const thirteenMeans = {COOC_AngularSecondMomentMean,
                                        COOC_ContrastMean,
                                        COOC_CorrelationMean,
                                        COOC_SumOfSquaresMean,
                                        COOC_InverseDifferenceMomentMean,
                                        COOC_SumAverageMean,
                                        COOC_SumVarianceMean,
                                        COOC_SumEntropyMean,
                                        COOC_EntropyMean,
                                        COOC_DifferenceVarianceMean,
                                        COOC_DifferenceEntropyMean,
                                        COOC_InformationMeasuresCorrelation1Mean,
                                        COOC_InformationMeasuresCorrelation2Mean};
std::vector<int> const threeMeans = {COOC_ContrastMean, COOC_InverseDifferenceMomentMean, COOC_EntropyMean};
std::vector<int> const histogramMeasures = {HISTO_Mean,       HISTO_Stddev,     HISTO_Variance,   HISTO_Skewness,
                                            HISTO_Kurtosis,   HISTO_Peak,       HISTO_Quantile10, HISTO_Quantile25,
                                            HISTO_Quantile50, HISTO_Quantile75, HISTO_Quantile90};

Case textureCase(std::vector<int> const& group, unsigned int radius, double binSize)
{
    std::string types;
    for (int const type : group) {
        types += std::to_string(type) + ' ';
    }
    auto const reference = [=](std::vector<double> const& voxels, Size const& size) {
        std::vector<double> planes;
        for (auto const& plane : texturePlanes(textureRecipe(group, radius, binSize), voxels, size)) {
            for (double const feature : plane) {
                planes.push_back(static_cast<float>(feature));
            }
        }
        return planes;
    };
    return {"TextureFeatureExtraction2D",
            MOX_UINT8,
            MOX_FLOAT32,
            {1024, 1024, 1},
            {{"textureFeaturesGroup", types},
             {"directionCollection", "1 0 0 1 1 1 1 -1"},
             {"radius", std::to_string(radius)},
             {"binSizeCooccurrence", std::to_string(binSize)}},
            reference};
}

} // namespace

std::vector<Case> textureCases()
{
    std::vector<Case> cases;
    for (unsigned int const radius : {3U, 5U, 10U, 20U}) {
        cases.push_back(textureCase(thirteenMeans, radius, 16));
        cases.push_back(textureCase(threeMeans, radius, 16));
    }
    for (double const binSize : {8.0, 4.0}) { // 32 and 64 levels
        cases.push_back(textureCase(thirteenMeans, 5, binSize));
        cases.push_back(textureCase(threeMeans, 5, binSize));
    }
    cases.push_back(textureCase(histogramMeasures, 5, 16));
    return cases;
}

} // namespace mox::benchmarks
