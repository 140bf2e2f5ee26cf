#include <Moxelcore/Core/Enum/ImageDimension.h>
#include <Moxelcore/Core/Enum/ImageInterpretation.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <gtest/gtest.h>

#include <limits>

namespace mox {

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

struct VoxelTypeFacts {
    VoxelTypes type;
    char const* text;
    unsigned int bytes;
};

class VoxelTypeText : public ::testing::TestWithParam<VoxelTypeFacts> {};

TEST_P(VoxelTypeText, tellsTypeAndSize)
{
    EXPECT_STREQ(helper::getText(GetParam().type).c_str(), GetParam().text);
    EXPECT_EQ(helper::getSizeOf(GetParam().type), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    OfAllTypes, VoxelTypeText,
    ::testing::Values(VoxelTypeFacts{MOX_UINT8, "uint8", 1}, VoxelTypeFacts{MOX_UINT16, "uint16", 2},
                      VoxelTypeFacts{MOX_UINT32, "uint32", 4}, VoxelTypeFacts{MOX_UINT64, "uint64", 8},
                      VoxelTypeFacts{MOX_INT8, "int8", 1}, VoxelTypeFacts{MOX_INT16, "int16", 2},
                      VoxelTypeFacts{MOX_INT32, "int32", 4}, VoxelTypeFacts{MOX_INT64, "int64", 8},
                      VoxelTypeFacts{MOX_FLOAT32, "float32", 4}, VoxelTypeFacts{MOX_FLOAT64, "float64", 8},
                      VoxelTypeFacts{MOX_COMPLEX_FLOAT32, "complex float32", 8},
                      VoxelTypeFacts{MOX_COMPLEX_FLOAT64, "complex float64", 16}));

TEST(VoxelTypeText, isEmptyAndOfNoSizeForAnUnknownType)
{
    for (int const value : {-1, 12, lowest, highest}) {
        EXPECT_STREQ(helper::getText(static_cast<VoxelTypes>(value)).c_str(), "") << value;
        EXPECT_EQ(helper::getSizeOf(static_cast<VoxelTypes>(value)), 0U) << value;
    }
}

TEST(ImageDimensionText, tellsTheDimension)
{
    EXPECT_STREQ(helper::getText(COLUMNS).c_str(), "columns");
    EXPECT_STREQ(helper::getText(ROWS).c_str(), "rows");
    EXPECT_STREQ(helper::getText(PLANS).c_str(), "plans");
    EXPECT_STREQ(helper::getText(TIME_SERIES).c_str(), "time series");
    EXPECT_STREQ(helper::getText(SPECTRAL_SERIES).c_str(), "spectral series");
}

TEST(ImageDimensionText, followsTheValuesFromZeroToFour)
{
    EXPECT_STREQ(helper::getText(static_cast<ImageDimension>(0)).c_str(), "columns");
    EXPECT_STREQ(helper::getText(static_cast<ImageDimension>(4)).c_str(), "spectral series");
}

TEST(ImageDimensionText, isEmptyForAnUnknownDimension)
{
    for (int const value : {-1, 5, lowest, highest}) {
        EXPECT_STREQ(helper::getText(static_cast<ImageDimension>(value)).c_str(), "") << value;
    }
}

TEST(ImageInterpretationText, tellsTheInterpretation)
{
    EXPECT_STREQ(helper::getText(static_cast<ImageInterpretation>(0)).c_str(), "binary");
    EXPECT_STREQ(helper::getText(static_cast<ImageInterpretation>(1)).c_str(), "label");
    EXPECT_STREQ(helper::getText(static_cast<ImageInterpretation>(2)).c_str(), "value");
    EXPECT_STREQ(helper::getText(INTERPRETATION_BINARY).c_str(), "binary");
    EXPECT_STREQ(helper::getText(INTERPRETATION_LABEL).c_str(), "label");
    EXPECT_STREQ(helper::getText(INTERPRETATION_VALUE).c_str(), "value");
}

TEST(ImageInterpretationText, isEmptyForAnUnknownInterpretation)
{
    for (int const value : {-1, 3, lowest, highest}) {
        EXPECT_STREQ(helper::getText(static_cast<ImageInterpretation>(value)).c_str(), "") << value;
    }
}

} // namespace

} // namespace mox
