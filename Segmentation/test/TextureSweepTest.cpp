#include "Segmentation/private/TextureSweep.h"

#include <gmock/gmock.h>

#include <Moxelcore/Core/Exception.h>

#include <numeric>
#include <random>

#include "Core/private/access/Region.h"
#include "testing/Images.h"
#include "testing/TestImage.h"
#include "testing/references/texture.h"

namespace mox::segmentation {

namespace {

using testing::Sizes;

constexpr char const* source = "Test";

TextureRecipe recipeOf(std::vector<int> const& types)
{
    TextureRecipe recipe;
    recipe.radius = 3;
    for (int const type : types) {
        recipe.textureFeaturesGroup.push_back(static_cast<TextureFeatureTypes>(type));
    }
    for (auto const& direction : {std::pair(1, 0), {0, 1}, {1, 1}, {1, -1}}) {
        recipe.directionCollection.push_back({direction.first, direction.second});
    }
    for (double const ratio : {-1.0, 0.0, 0.05, 0.3, 1.0, 0.02}) {
        recipe.userQuantileRatioHistogram.push_back(ratio);
    }
    return recipe;
}

TextureRecipe recipeOfAll()
{
    std::vector<int> types(HISTO_QuantileR6 + 1);
    std::iota(types.begin(), types.end(), 0);
    return recipeOf(types);
}

/// No voxel lies outside the histogram.
TextureRecipe recipeOfWideRange()
{
    TextureRecipe recipe = recipeOfAll();
    recipe.minGreyLevelHistogram = -3e9;
    recipe.maxGreyLevelHistogram = 3e9;
    recipe.binSizeHistogram = 1e6;
    return recipe;
}

int mirrored(int x, int size)
{
    int const folded = (x < 0 ? -1 - x : x) % (2 * size);
    return folded < size ? folded : 2 * size - 1 - folded;
}

access::Region regionOf(unsigned int x, unsigned int y, unsigned int columns, unsigned int rows)
{
    return {{y, y + rows}, {x, x + columns}, {0, 1}, {0, 1}, {0, 1}};
}

bool isNear(double found, double wanted, TextureFeature const& feature)
{
    // Square roots of what a subtraction leaves have half the digits: the last measure by the reference, standard
    // deviations over directions by definition, for values of some thousands.
    double const slack = !feature.isCooccurrence()                            ? 1e-8
                         : feature.across() == TextureFeature::Across::stddev ? 2e-5
                         : feature.measure() == 12                            ? 1e-8
                                                                              : 1e-10;
    return std::abs(found - wanted) <= 1e-10 * std::abs(wanted) + slack;
}

/// Compares a block of an image, row by row, with the windows computed one by one.
template <class T>
void compare(TextureRecipe const& recipe, Sizes const& sizes, std::vector<T> const& voxels, access::Region const& block,
             std::size_t everyColumn = 1)
{
    auto const image = testing::makeImage(sizes, voxels);
    TexturePlan const plan(recipe, allFeatures(recipe, source), source);
    TextureSweep sweep(plan, *image);
    sweep.begin(block);
    auto const grey = [&](int x, int y) {
        auto const column = static_cast<std::size_t>(mirrored(x, static_cast<int>(sizes.columns)));
        auto const row = static_cast<std::size_t>(mirrored(y, static_cast<int>(sizes.rows)));
        return static_cast<double>(voxels[row * sizes.columns + column]);
    };
    for (unsigned int y = 0; y < block.getNumOfRows(); ++y) {
        std::size_t const count = block.getNumOfColumns();
        sweep.compute(static_cast<int>(y), 0, count);
        for (std::size_t x = 0; x < count; x += everyColumn) {
            auto const wanted = testing::textureReference(recipe, grey, static_cast<int>(block.getBeginColumn() + x),
                                                          static_cast<int>(block.getBeginRow() + y));
            ASSERT_EQ(wanted.size(), sweep.rows().size());
            for (std::size_t f = 0; f < wanted.size(); ++f) {
                double const found = sweep.rows()[f][x];
                ASSERT_TRUE(isNear(found, wanted[f], plan.features[f]))
                    << "type " << plan.features[f].type << " at " << x << ' ' << y << ": " << found << " for "
                    << wanted[f];
            }
        }
    }
}

/// Smooth ground, noise, and a uniform block in the middle.
template <class T>
std::vector<T> texturedVoxels(std::mt19937& random, Sizes const& sizes, int most)
{
    std::vector<T> voxels;
    for (unsigned int y = 0; y < sizes.rows; ++y) {
        for (unsigned int x = 0; x < sizes.columns; ++x) {
            bool const isUniform = x > sizes.columns / 3 && y > sizes.rows / 3;
            auto const noise = static_cast<int>(random() % 60);
            int const value = isUniform ? 77 : x % 7 < 3 ? noise : noise + static_cast<int>(x * 5 + y * 3);
            voxels.push_back(static_cast<T>(value % (most + 1)));
        }
    }
    return voxels;
}

TEST(TextureSweep, agreesWithTheMatricesForAllFeatures)
{
    std::mt19937 random(1);
    Sizes const sizes{24, 14, 1, 1, 1};
    compare(recipeOfAll(), sizes, texturedVoxels<unsigned char>(random, sizes, 255), regionOf(0, 0, 24, 14), 2);
}

TEST(TextureSweep, agreesWithTheMatricesForRandomRecipes)
{
    std::mt19937 random(2);
    for (int round = 0; round < 40; ++round) {
        TextureRecipe recipe = recipeOfAll();
        recipe.radius = 1 + static_cast<unsigned int>(random() % 6);
        recipe.minGreyLevelCooccurrence = static_cast<double>(random() % 40) + 0.25;
        recipe.maxGreyLevelCooccurrence = 120 + static_cast<double>(random() % 140);
        recipe.binSizeCooccurrence = std::array{8.0, 13.7, 16.0, 32.0, 64.0, 300.0}[random() % 6];
        recipe.binSizeHistogram = std::array{1.0, 4.0, 3.7, 0.5, 300.0}[random() % 5];
        recipe.directionCollection.clear();
        auto const r = static_cast<int>(recipe.radius);
        while (recipe.directionCollection.size() < 3) {
            auto const step = [&] { return static_cast<int>(random() % static_cast<unsigned int>(2 * r + 1)) - r; };
            math::Vector2<int> const direction(step(), step());
            if (!pairWindow(r, direction).empty()) {
                recipe.directionCollection.push_back(direction);
            }
        }
        Sizes const sizes{1 + static_cast<unsigned int>(random() % 30), 1 + static_cast<unsigned int>(random() % 20), 1,
                          1, 1};
        auto const voxels = texturedVoxels<unsigned char>(random, sizes, 255);
        unsigned int const x = static_cast<unsigned int>(random()) % sizes.columns;
        unsigned int const y = static_cast<unsigned int>(random()) % sizes.rows;
        compare(recipe, sizes, voxels, regionOf(x, y, sizes.columns - x, sizes.rows - y), 5);
    }
}

TEST(TextureSweep, agreesWithTheMatricesForWindowsWiderThanTheImage)
{
    std::mt19937 random(3);
    for (Sizes const& sizes : {Sizes{1, 1, 1, 1, 1}, Sizes{2, 3, 1, 1, 1}, Sizes{5, 1, 1, 1, 1}}) {
        TextureRecipe recipe = recipeOfAll();
        recipe.radius = 8;
        compare(recipe, sizes, testing::randomVoxels<unsigned char>(random, sizes.numOfVoxels()),
                regionOf(0, 0, sizes.columns, sizes.rows));
    }
}

TEST(TextureSweep, agreesWithTheMatricesForLargeWindowsAndManyLevels)
{
    std::mt19937 random(4);
    Sizes const sizes{70, 50, 1, 1, 1};
    auto const voxels = texturedVoxels<unsigned short>(random, sizes, 2000);
    TextureRecipe recipe = recipeOfAll();
    recipe.radius = 20;
    compare(recipe, sizes, voxels, regionOf(10, 20, 50, 2), 24);
    recipe.radius = 4;
    recipe.maxGreyLevelCooccurrence = 399; // 400 levels, whose cells need more than 16 bits
    recipe.binSizeCooccurrence = 1;
    recipe.maxGreyLevelHistogram = 65535;
    compare(recipe, sizes, voxels, regionOf(10, 20, 30, 1), 29);
}

TEST(TextureSweep, agreesWithTheMatricesOfOneLevel)
{
    std::mt19937 random(5);
    Sizes const sizes{12, 8, 1, 1, 1};
    TextureRecipe recipe = recipeOfAll();
    recipe.binSizeCooccurrence = 1000;
    recipe.binSizeHistogram = 1000;
    compare(recipe, sizes, testing::randomVoxels<unsigned char>(random, sizes.numOfVoxels()), regionOf(0, 0, 12, 8));
}

template <class T>
class TextureSweepTyped : public ::testing::Test {
};

using RealTypes = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(TextureSweepTyped, RealTypes);

TYPED_TEST(TextureSweepTyped, readsEveryType)
{
    std::mt19937 random(6);
    Sizes const sizes{17, 6, 1, 1, 1};
    TextureRecipe recipe = recipeOf({COOC_Contrast, COOC_EntropyMean, COOC_SumAverageRange, HISTO_Mean, HISTO_Peak});
    recipe.minGreyLevelHistogram = -1e30; // all but NaN and infinity
    recipe.maxGreyLevelHistogram = 1e30;
    recipe.binSizeHistogram = 1e29;
    recipe.minGreyLevelCooccurrence = -100;
    compare(recipe, sizes, testing::randomVoxels<TypeParam>(random, sizes.numOfVoxels()), regionOf(2, 1, 13, 4));
}

TEST(TextureSweep, isExactOnUniformGround)
{
    Sizes const sizes{30, 9, 1, 1, 1};
    std::mt19937 random(7);
    auto voxels = testing::randomVoxels<unsigned char>(random, sizes.numOfVoxels());
    for (unsigned int y = 0; y < 9; ++y) {
        std::fill_n(voxels.begin() + y * 30 + 10, 20, static_cast<unsigned char>(130)); // the windows come from noise
    }
    auto const image = testing::makeImage(sizes, voxels);
    TextureRecipe const recipe = recipeOfAll();
    TexturePlan const plan(recipe, allFeatures(recipe, source), source);
    TextureSweep sweep(plan, *image);
    sweep.begin(regionOf(0, 0, 30, 9));
    sweep.compute(4, 0, 30);
    auto const values = [&](TextureFeatureTypes type) {
        auto const at = std::find(plan.features.begin(), plan.features.end(), TextureFeature{type, 0});
        return sweep.rows()[static_cast<std::size_t>(at - plan.features.begin())][20];
    };
    EXPECT_EQ(values(COOC_AngularSecondMoment), 1.0);
    EXPECT_EQ(values(COOC_Contrast), 0.0);
    EXPECT_EQ(values(COOC_Correlation), 0.0);
    EXPECT_EQ(values(COOC_SumOfSquares), 0.0);
    EXPECT_EQ(values(COOC_InverseDifferenceMoment), 1.0);
    EXPECT_EQ(values(COOC_SumAverage), 2 * 8 * 256.0);
    EXPECT_EQ(values(COOC_SumVariance), 0.0);
    EXPECT_EQ(values(COOC_Entropy), std::log(16.0) * 16);
    EXPECT_EQ(values(COOC_SumEntropy), std::log(16.0) * 16);
    EXPECT_EQ(values(COOC_DifferenceVariance), 0.0);
    EXPECT_EQ(values(COOC_InformationMeasuresCorrelation1), 0.0);
    EXPECT_FALSE(std::signbit(values(COOC_InformationMeasuresCorrelation1)));
    EXPECT_EQ(values(COOC_InformationMeasuresCorrelation2), 0.0);
    EXPECT_EQ(values(COOC_EntropyStddev), 0.0);
    EXPECT_EQ(values(HISTO_Variance), 0.0);
    EXPECT_EQ(values(HISTO_Kurtosis), 0.0);
    EXPECT_EQ(values(HISTO_Mean), 130.5);
    EXPECT_EQ(values(HISTO_Peak), 130.5);
}

TEST(TextureSweep, givesTheSameForPartsOfRowsAndForRowsLeftOut)
{
    std::mt19937 random(8);
    Sizes const sizes{50, 40, 1, 1, 1};
    auto const image = testing::makeImage(sizes, testing::randomVoxels<short>(random, sizes.numOfVoxels()));
    TextureRecipe const recipe = recipeOfWideRange();
    TexturePlan const plan(recipe, allFeatures(recipe, source), source);
    TextureSweep whole(plan, *image);
    TextureSweep part(plan, *image);
    whole.begin(regionOf(0, 0, 50, 40));
    part.begin(regionOf(0, 0, 50, 40));
    for (int const y : {0, 1, 5, 8, 30, 31, 39}) {
        whole.compute(y, 0, 50);
        part.compute(y, 13, 21);
        for (std::size_t f = 0; f < plan.features.size(); ++f) {
            for (std::size_t x = 0; x < 21; ++x) {
                ASSERT_EQ(part.rows()[f][x], whole.rows()[f][x + 13]);
            }
        }
    }
}

TEST(TextureSweep, readsImagesWithoutPointers)
{
    std::mt19937 random(9);
    Sizes const sizes{20, 9, 1, 1, 1};
    auto const voxels = testing::randomVoxels<int>(random, sizes.numOfVoxels());
    auto const inMemory = testing::makeImage(sizes, voxels);
    testing::TestImage application;
    testing::fill(application, sizes, voxels);
    TextureRecipe const recipe = recipeOfWideRange();
    TexturePlan const plan(recipe, allFeatures(recipe, source), source);
    TextureSweep a(plan, *inMemory);
    TextureSweep b(plan, application);
    a.begin(regionOf(0, 0, 20, 9));
    b.begin(regionOf(0, 0, 20, 9));
    a.compute(0, 0, 20);
    b.compute(0, 0, 20);
    for (std::size_t f = 0; f < plan.features.size(); ++f) {
        ASSERT_TRUE(std::equal(a.rows()[f], a.rows()[f] + 20, b.rows()[f]));
    }
}

TEST(TextureSweep, refusesAWindowWithoutIntensities)
{
    Sizes const sizes{20, 3, 1, 1, 1};
    std::vector<unsigned char> voxels(60, 10);
    std::fill_n(voxels.begin() + 30, 10, static_cast<unsigned char>(200));
    auto const image = testing::makeImage(sizes, voxels);
    TextureRecipe recipe = recipeOf({HISTO_Mean});
    recipe.radius = 1;
    recipe.minGreyLevelHistogram = 100;
    TexturePlan const plan(recipe, allFeatures(recipe, source), source);
    TextureSweep sweep(plan, *image);
    sweep.begin(regionOf(0, 0, 20, 3));
    EXPECT_THROW(sweep.compute(1, 0, 20), InvalidCall);
    sweep.compute(1, 9, 11);
    EXPECT_EQ(sweep.rows()[0][5], 200.5);
}

} // namespace

} // namespace mox::segmentation
