#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>

#include <gtest/gtest.h>

#include "testing/Enumerators.h"

namespace mox::segmentation {

namespace {

testing::Enumerators const features = {
    {"COOC_AngularSecondMoment", COOC_AngularSecondMoment},
    {"COOC_AngularSecondMomentMean", COOC_AngularSecondMomentMean},
    {"COOC_AngularSecondMomentStddev", COOC_AngularSecondMomentStddev},
    {"COOC_AngularSecondMomentRange", COOC_AngularSecondMomentRange},
    {"COOC_Contrast", COOC_Contrast},
    {"COOC_ContrastMean", COOC_ContrastMean},
    {"COOC_ContrastStddev", COOC_ContrastStddev},
    {"COOC_ContrastRange", COOC_ContrastRange},
    {"COOC_Correlation", COOC_Correlation},
    {"COOC_CorrelationMean", COOC_CorrelationMean},
    {"COOC_CorrelationStddev", COOC_CorrelationStddev},
    {"COOC_CorrelationRange", COOC_CorrelationRange},
    {"COOC_SumOfSquares", COOC_SumOfSquares},
    {"COOC_SumOfSquaresMean", COOC_SumOfSquaresMean},
    {"COOC_SumOfSquaresStddev", COOC_SumOfSquaresStddev},
    {"COOC_SumOfSquaresRange", COOC_SumOfSquaresRange},
    {"COOC_InverseDifferenceMoment", COOC_InverseDifferenceMoment},
    {"COOC_InverseDifferenceMomentMean", COOC_InverseDifferenceMomentMean},
    {"COOC_InverseDifferenceMomentStddev", COOC_InverseDifferenceMomentStddev},
    {"COOC_InverseDifferenceMomentRange", COOC_InverseDifferenceMomentRange},
    {"COOC_SumAverage", COOC_SumAverage},
    {"COOC_SumAverageMean", COOC_SumAverageMean},
    {"COOC_SumAverageStddev", COOC_SumAverageStddev},
    {"COOC_SumAverageRange", COOC_SumAverageRange},
    {"COOC_SumVariance", COOC_SumVariance},
    {"COOC_SumVarianceMean", COOC_SumVarianceMean},
    {"COOC_SumVarianceStddev", COOC_SumVarianceStddev},
    {"COOC_SumVarianceRange", COOC_SumVarianceRange},
    {"COOC_SumEntropy", COOC_SumEntropy},
    {"COOC_SumEntropyMean", COOC_SumEntropyMean},
    {"COOC_SumEntropyStddev", COOC_SumEntropyStddev},
    {"COOC_SumEntropyRange", COOC_SumEntropyRange},
    {"COOC_Entropy", COOC_Entropy},
    {"COOC_EntropyMean", COOC_EntropyMean},
    {"COOC_EntropyStddev", COOC_EntropyStddev},
    {"COOC_EntropyRange", COOC_EntropyRange},
    {"COOC_DifferenceVariance", COOC_DifferenceVariance},
    {"COOC_DifferenceVarianceMean", COOC_DifferenceVarianceMean},
    {"COOC_DifferenceVarianceStddev", COOC_DifferenceVarianceStddev},
    {"COOC_DifferenceVarianceRange", COOC_DifferenceVarianceRange},
    {"COOC_DifferenceEntropy", COOC_DifferenceEntropy},
    {"COOC_DifferenceEntropyMean", COOC_DifferenceEntropyMean},
    {"COOC_DifferenceEntropyStddev", COOC_DifferenceEntropyStddev},
    {"COOC_DifferenceEntropyRange", COOC_DifferenceEntropyRange},
    {"COOC_InformationMeasuresCorrelation1", COOC_InformationMeasuresCorrelation1},
    {"COOC_InformationMeasuresCorrelation1Mean", COOC_InformationMeasuresCorrelation1Mean},
    {"COOC_InformationMeasuresCorrelation1Stddev", COOC_InformationMeasuresCorrelation1Stddev},
    {"COOC_InformationMeasuresCorrelation1Range", COOC_InformationMeasuresCorrelation1Range},
    {"COOC_InformationMeasuresCorrelation2", COOC_InformationMeasuresCorrelation2},
    {"COOC_InformationMeasuresCorrelation2Mean", COOC_InformationMeasuresCorrelation2Mean},
    {"COOC_InformationMeasuresCorrelation2Stddev", COOC_InformationMeasuresCorrelation2Stddev},
    {"COOC_InformationMeasuresCorrelation2Range", COOC_InformationMeasuresCorrelation2Range},
    {"HISTO_Mean", HISTO_Mean},
    {"HISTO_Stddev", HISTO_Stddev},
    {"HISTO_Variance", HISTO_Variance},
    {"HISTO_Skewness", HISTO_Skewness},
    {"HISTO_Kurtosis", HISTO_Kurtosis},
    {"HISTO_Peak", HISTO_Peak},
    {"HISTO_Quantile10", HISTO_Quantile10},
    {"HISTO_Quantile25", HISTO_Quantile25},
    {"HISTO_Quantile50", HISTO_Quantile50},
    {"HISTO_Quantile75", HISTO_Quantile75},
    {"HISTO_Quantile90", HISTO_Quantile90},
    {"HISTO_QuantileR1", HISTO_QuantileR1},
    {"HISTO_QuantileR2", HISTO_QuantileR2},
    {"HISTO_QuantileR3", HISTO_QuantileR3},
    {"HISTO_QuantileR4", HISTO_QuantileR4},
    {"HISTO_QuantileR5", HISTO_QuantileR5},
    {"HISTO_QuantileR6", HISTO_QuantileR6}};

TEST(TextureFeatureTypes, hasATableOfSixtyNine)
{
    EXPECT_EQ(features.size(), 69U);
    testing::expectTable(getEnumInfo<TextureFeatureTypes>(), "TextureFeatureTypes", features);
}

} // namespace

} // namespace mox::segmentation
