#include <gtest/gtest.h>

#include <Moxelcore/Core/InMemoryImage.h>
#include <Moxelcore/Registration/ShapeBasedMatching2D.h>

#include <tbb/global_control.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "Registration/private/ShapeBasedMatching/Pyramid.h"
#include "Registration/private/ShapeBasedMatching/Shape.h"
#include "Registration/private/ShapeBasedMatching/Steps.h"
#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/Refusal.h"
#include "testing/TestImage.h"
#include "testing/references/shapeMatching.h"

namespace mox::registration {

namespace {

using testing::makeImage;
using testing::Matching;
using testing::MatchingResult;
using testing::Plane;
using testing::refusalOf;

access::Sizes sizesOf(Plane const& plane)
{
    return {static_cast<unsigned int>(plane.columns), static_cast<unsigned int>(plane.rows), 1, 1, 1};
}

template <class T>
std::unique_ptr<memory::InMemoryImage> imageOf(Plane const& plane)
{
    return makeImage<T>(sizesOf(plane), std::vector<T>(plane.voxels.begin(), plane.voxels.end()));
}

/// An algorithm with images of a matching as voxels of type T.
template <class T>
struct Search {
    explicit Search(Matching const& matching)
        : inputX(imageOf<T>(matching.inputX))
        , inputY(imageOf<T>(matching.inputY))
        , templateX(imageOf<T>(matching.templateX))
        , templateY(imageOf<T>(matching.templateY))
        , mask(imageOf<unsigned char>(matching.mask))
    {
        algorithm->inputGradientX = inputX.get();
        algorithm->inputGradientY = inputY.get();
        algorithm->templateGradientX = templateX.get();
        algorithm->templateGradientY = templateY.get();
        algorithm->mask = mask.get();
        algorithm->numOfLevel = matching.numOfLevels;
        algorithm->similarityMeasure = matching.isAbsolute ? 1 : 0;
    }

    MatchingResult result() const
    {
        return {algorithm->outputTx, algorithm->outputTy, algorithm->outputScale, algorithm->outputRotation};
    }

    MatchingResult run()
    {
        algorithm->run();
        return result();
    }

    std::unique_ptr<memory::InMemoryImage> inputX, inputY, templateX, templateY, mask;
    boost::shared_ptr<ShapeBasedMatching2D> algorithm = ShapeBasedMatching2D::New();
};

Plane randomPlane(std::mt19937& random, int columns, int rows)
{
    Plane plane{columns, rows, {}};
    for (int i = 0; i < columns * rows; ++i) {
        plane.voxels.push_back(static_cast<int>(random() % 15) - 7);
    }
    return plane;
}

Matching randomMatching(std::mt19937& random, int largest)
{
    auto const size = [&] { return 1 + static_cast<int>(random() % static_cast<unsigned int>(largest)); };
    int const columns = size();
    int const rows = size();
    int const templateColumns = 1 + size() / 3;
    int const templateRows = 1 + size() / 3;
    Matching matching;
    matching.inputX = randomPlane(random, columns, rows);
    matching.inputY = randomPlane(random, columns, rows);
    matching.templateX = randomPlane(random, templateColumns, templateRows);
    matching.templateY = randomPlane(random, templateColumns, templateRows);
    matching.mask = randomPlane(random, templateColumns, templateRows);
    for (double& voxel : matching.mask.voxels) {
        voxel = voxel > 0 ? 1 : 0;
    }
    return matching;
}

/// A texture whose gradients are known everywhere, so that it can be sampled turned and scaled.
struct Texture {
    double x(double u, double v) const { return std::cos(0.35 * u) + 0.8 * std::sin(0.11 * u * v * 0.1 + v * 0.2); }
    double y(double u, double v) const { return std::sin(0.27 * v + 0.05 * u) - 0.6 * std::cos(0.013 * u * u); }
};

Matching emptyMatching(int columns, int rows, int templateColumns, int templateRows)
{
    Matching matching;
    matching.inputX = {columns, rows, std::vector<double>(static_cast<std::size_t>(columns * rows))};
    matching.inputY = matching.inputX;
    matching.templateX = {templateColumns, templateRows,
                          std::vector<double>(static_cast<std::size_t>(templateColumns * templateRows))};
    matching.templateY = matching.templateX;
    matching.mask = matching.templateX;
    std::fill(matching.mask.voxels.begin(), matching.mask.voxels.end(), 1.0);
    return matching;
}

/// Noise of low contrast with the template's field drawn into it about a place.
Matching drawnMatching(int size, int templateSize, MatchingResult const& placed, int centreX, int centreY)
{
    std::mt19937 random(11);
    std::normal_distribution<double> noise(0.0, 0.3);
    Texture const texture;
    Matching matching = emptyMatching(size, size, templateSize, templateSize);
    for (int y = 0; y < templateSize; ++y) {
        for (int x = 0; x < templateSize; ++x) {
            auto const i = static_cast<std::size_t>(y * templateSize + x);
            matching.templateX.voxels[i] = texture.x(x, y);
            matching.templateY.voxels[i] = texture.y(x, y);
        }
    }
    double const angle = placed.rotation * std::numbers::pi / 180;
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            auto const i = static_cast<std::size_t>(y * size + x);
            double const u = ((x - centreX) * c + (y - centreY) * s) / placed.scale + templateSize / 2;
            double const v = (-(x - centreX) * s + (y - centreY) * c) / placed.scale + templateSize / 2;
            bool const isInside = u >= 0 && v >= 0 && u <= templateSize - 1 && v <= templateSize - 1;
            double const gx = isInside ? texture.x(u, v) : noise(random);
            double const gy = isInside ? texture.y(u, v) : noise(random);
            matching.inputX.voxels[i] = isInside ? gx * c - gy * s : gx;
            matching.inputY.voxels[i] = isInside ? gx * s + gy * c : gy;
        }
    }
    return matching;
}

TEST(ShapeBasedMatching2D, hasItsProperties)
{
    auto const algorithm = ShapeBasedMatching2D::New();
    char const* const inputs[] = {
        "inputGradientX",    "inputGradientY", "templateGradientX", "templateGradientY", "numOfLevel",
        "similarityMeasure", "mask",           "rotationBegin",     "rotationEnd",       "rotationStep",
        "scaleBegin",        "scaleEnd",       "scaleStep"};
    char const* const outputs[] = {"outputTx", "outputTy", "outputScale", "outputRotation"};
    ASSERT_EQ(algorithm->getNumOfInputProperties(), std::size(inputs));
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), std::size(outputs));
    for (unsigned int i = 0; i < std::size(inputs); ++i) {
        EXPECT_STREQ(algorithm->getInputProperty(i)->getName().c_str(), inputs[i]);
    }
    for (unsigned int i = 0; i < std::size(outputs); ++i) {
        EXPECT_STREQ(algorithm->getOutputProperty(i)->getName().c_str(), outputs[i]);
    }
    for (auto const* image : {&algorithm->inputGradientX, &algorithm->inputGradientY, &algorithm->templateGradientX,
                              &algorithm->templateGradientY, &algorithm->mask}) {
        EXPECT_EQ(image->get(), nullptr);
    }
    EXPECT_EQ(algorithm->numOfLevel, 4U);
    EXPECT_EQ(algorithm->similarityMeasure, 0);
    EXPECT_EQ(algorithm->rotationBegin, 0.0);
    EXPECT_EQ(algorithm->rotationEnd, 360.0);
    EXPECT_EQ(algorithm->rotationStep, 10.0);
    EXPECT_EQ(algorithm->scaleBegin, 0.5);
    EXPECT_EQ(algorithm->scaleEnd, 1.8);
    EXPECT_EQ(algorithm->scaleStep, 0.1);
    EXPECT_EQ(algorithm->outputTx, 0.0);
    EXPECT_EQ(algorithm->outputTy, 0.0);
    EXPECT_EQ(algorithm->outputScale, 1.0);
    EXPECT_EQ(algorithm->outputRotation, 0.0);
}

TEST(ShapeBasedMatching2D, refusesWhatItsRulesTell)
{
    Search<float> search(emptyMatching(6, 5, 3, 2));
    ShapeBasedMatching2D& algorithm = *search.algorithm;
    memory::InMemoryImage other;
    auto const expectRefusal = [&](Property<ImageModel const*>& property, ImageModel const* value, char const* text) {
        ImageModel const* const before = property.get();
        property = value;
        std::string const refusal = refusalOf(algorithm);
        EXPECT_TRUE(refusal.starts_with(std::string("#1 Error : ") + text)) << refusal;
        std::string const place = std::string("Rule error in property ") + property.getName().c_str();
        EXPECT_NE(refusal.find(place), std::string::npos) << refusal;
        property = before;
    };
    for (auto* property : {&algorithm.inputGradientX, &algorithm.inputGradientY, &algorithm.templateGradientX,
                           &algorithm.templateGradientY}) {
        expectRefusal(*property, nullptr, "Parameter value cannot be null");
    }
    other.allocate(MOX_COMPLEX_FLOAT32, 6, 5, 1, 1, 1);
    expectRefusal(algorithm.inputGradientX, &other, "Voxel type must be one of");
    expectRefusal(algorithm.templateGradientX, &other, "Voxel type must be one of");
    expectRefusal(algorithm.mask, &other, "Voxel type must be one of");
    other.allocate(MOX_FLOAT64, 6, 5, 1, 1, 1);
    expectRefusal(algorithm.inputGradientY, &other, "Images don't have the same type");
    expectRefusal(algorithm.templateGradientY, &other, "Images don't have the same type");
    expectRefusal(algorithm.mask, &other, "Images don't have the same size");
    other.allocate(MOX_FLOAT32, 6, 4, 1, 1, 1);
    expectRefusal(algorithm.inputGradientY, &other, "Images don't have the same size");
    expectRefusal(algorithm.templateGradientY, &other, "Images don't have the same size");
    algorithm.similarityMeasure = 2;
    EXPECT_TRUE(refusalOf(algorithm).starts_with("#1 Error : The enumeration value is not valid"));
    algorithm.similarityMeasure = 0;
    algorithm.mask = nullptr;
    EXPECT_NO_THROW(algorithm.run());
}

TEST(ShapeBasedMatching2D, hasNoLevelAt0)
{
    Search<float> search(emptyMatching(6, 5, 3, 2));
    search.algorithm->numOfLevel = 0;
    EXPECT_THROW(search.algorithm->run(), BadIndex);
    EXPECT_TRUE(refusalOf(*search.algorithm).starts_with("#1 Error : invalid level of pyramid "));
    search.algorithm->numOfLevel = 1;
    EXPECT_NO_THROW(search.run());
}

TEST(Pyramid, halvesFromLevelToLevel)
{
    auto const image = makeImage<unsigned char>({5, 3, 1, 1, 1}, {0, 4, 8, 8, 1, //
                                                                  8, 4, 0, 0, 3, //
                                                                  9, 9, 1, 1, 5});
    Pyramid const mean(*image, miscellaneous::DecimationOp::MEAN, 4);
    EXPECT_EQ(&mean.getLevel(0), image.get());
    EXPECT_EQ(testing::voxelsOf<unsigned char>(mean.getLevel(1)), (std::vector<unsigned char>{4, 4, 2, 9, 1, 5}));
    EXPECT_EQ(testing::voxelsOf<unsigned char>(mean.getLevel(3)), (std::vector<unsigned char>{3}));
    EXPECT_THROW(mean.getLevel(4), BadIndex);
    Pyramid const highest(*image, miscellaneous::DecimationOp::MAX, 2);
    EXPECT_EQ(testing::voxelsOf<unsigned char>(highest.getLevel(1)), (std::vector<unsigned char>{8, 8, 3, 9, 1, 5}));
}

TEST(Steps, reachTheirEnd)
{
    Steps const scales(0.5, 1.8, 0.1);
    ASSERT_EQ(scales.count(), 14U);
    EXPECT_DOUBLE_EQ(scales[5], 1.0);
    EXPECT_DOUBLE_EQ(scales[13], 1.8);
    EXPECT_EQ(Steps(0, 360, 10).count(), 37U);
    EXPECT_EQ(Steps(0, 359.9, 10).count(), 36U);
    EXPECT_EQ(Steps(5, 5, 10).count(), 1U);
    EXPECT_EQ(Steps(5, 4, 10).count(), 0U);
}

TEST(Steps, areOnlyTheBeginWhenTheyDoNotLeadOn)
{
    for (double const step : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), 1e-17, 1e-300}) {
        Steps const steps(1.0, 2.0, step);
        EXPECT_EQ(steps.count(), 1U) << step;
        EXPECT_EQ(steps[0], 1.0) << step;
    }
    EXPECT_EQ(Steps(std::numeric_limits<double>::quiet_NaN(), 1, 0.5).count(), 0U);
    EXPECT_EQ(Steps(0, std::numeric_limits<double>::quiet_NaN(), 0.5).count(), 0U);
}

TEST(Shape, turnsByWholeQuartersExactly)
{
    math::Vector2<double> const v(3, 7);
    EXPECT_TRUE(Rotation(0).turned(v) == v);
    EXPECT_TRUE(Rotation(360).turned(v) == v);
    EXPECT_TRUE(Rotation(90).turned(v) == (math::Vector2<double>(-7, 3)));
    EXPECT_TRUE(Rotation(180).turned(v) == (math::Vector2<double>(-3, -7)));
    EXPECT_TRUE(Rotation(-90).turned(v) == (math::Vector2<double>(7, -3)));
    EXPECT_NEAR(Rotation(30).turned({1, 0})[0], std::sqrt(0.75), 1e-15);
}

TEST(Shape, isMadeOfVoxelsWithMaskAndGradient)
{
    auto const x = makeImage<double>({3, 2, 1, 1, 1}, {1, 0, 0, 2, 3, 4});
    auto const y = makeImage<double>({3, 2, 1, 1, 1}, {0, 0, -5, 0, 6, 0});
    auto const mask = makeImage<double>({3, 2, 1, 1, 1}, {1, 1, -1, 0.5, 0, 2});
    Shape const masked = maskToShape(*x, *y, mask.get());
    using V = math::Vector2<double>;
    ASSERT_EQ(masked.positions.size(), 4U);
    EXPECT_TRUE(masked.positions[0] == V(-1, -1));
    EXPECT_TRUE(masked.positions[1] == V(1, -1));
    EXPECT_TRUE(masked.positions[2] == V(-1, 0));
    EXPECT_TRUE(masked.positions[3] == V(1, 0));
    EXPECT_TRUE(masked.directions[1] == V(0, -5));
    EXPECT_EQ(maskToShape(*x, *y, nullptr).positions.size(), 5U);
}

TEST(Shape, isPlacedOnWholeVoxelsWithUnitDirections)
{
    Shape shape;
    shape.positions = {{1, 0}, {-1, 0}, {3, 3}};
    shape.directions = {{4, 0}, {0, 0.5}, {1, 1}};
    std::vector<PlacedPoint> placed;
    shape.place(Rotation(0), 2.5, 5, 5, placed);
    ASSERT_EQ(placed.size(), 2U) << "what is outside wherever the centre lies is left out";
    EXPECT_EQ(placed[0].x, 3); // 2.5 upwards
    EXPECT_EQ(placed[1].x, -2);
    EXPECT_EQ(placed[0].dx, 1.0);
    EXPECT_EQ(placed[1].dy, 1.0);
    shape.place(Rotation(0), 1e300, 5, 5, placed);
    EXPECT_TRUE(placed.empty());
}

/// The images are whole numbers, whose half is exact in double.
TEST(ShapeBasedMatching2D, doesWhatItsDefinitionTells)
{
    std::mt19937 random(5);
    for (int i = 0; i < 60; ++i) {
        Matching matching = randomMatching(random, i < 30 ? 6 : 33);
        matching.numOfLevels = 1 + random() % 4;
        matching.isAbsolute = random() % 2 == 0;
        matching.scales = {0.5, 1.25, 2.0};
        matching.rotations = {-40, 50, 140, 230, 320};
        Search<double> search(matching);
        search.algorithm->scaleStep = 0.75;
        search.algorithm->scaleEnd = 2.0;
        search.algorithm->rotationBegin = -40.0;
        search.algorithm->rotationEnd = 320.0;
        search.algorithm->rotationStep = 90.0;
        EXPECT_EQ(search.run(), matchReference(matching)) << i;
    }
}

template <class T>
class ShapeBasedMatchingTyped : public ::testing::Test {
};
using Voxels = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                float, double>;
TYPED_TEST_SUITE(ShapeBasedMatchingTyped, Voxels);

TYPED_TEST(ShapeBasedMatchingTyped, takesGradientsOfEveryType)
{
    std::mt19937 random(6);
    Matching matching = randomMatching(random, 1);
    for (Plane* plane : {&matching.inputX, &matching.inputY}) {
        *plane = randomPlane(random, 21, 17);
    }
    for (Plane* plane : {&matching.templateX, &matching.templateY, &matching.mask}) {
        *plane = randomPlane(random, 6, 5);
    }
    for (Plane* plane :
         {&matching.inputX, &matching.inputY, &matching.templateX, &matching.templateY, &matching.mask}) {
        for (double& voxel : plane->voxels) {
            voxel = std::abs(voxel);
        }
    }
    matching.numOfLevels = 1;
    matching.scales = {1.0};
    matching.rotations = {0, 30, 60, 90};
    Search<TypeParam> search(matching);
    search.algorithm->scaleBegin = 1.0;
    search.algorithm->scaleEnd = 1.0;
    search.algorithm->rotationEnd = 90.0;
    search.algorithm->rotationStep = 30.0;
    EXPECT_EQ(search.run(), matchReference(matching));
}

TEST(ShapeBasedMatching2D, findsAPlacedShape)
{
    struct Placement {
        int x, y;
        double rotation, scale;
    };
    Placement const placements[] = {{60, 60, 0, 1.0},    {70, 55, 40, 1.2}, {48, 90, 130, 0.8},   {25, 30, 250, 1.0},
                                    {110, 20, 300, 0.9}, {12, 12, 90, 1.0}, {115, 115, 180, 1.1}, {8, 110, 20, 1.0}};
    for (Placement const& p : placements) {
        MatchingResult const placed{0, 0, p.scale, p.rotation};
        Matching matching = drawnMatching(128, 40, placed, p.x, p.y);
        matching.numOfLevels = 3;
        Search<double> search(matching);
        MatchingResult const found = search.run();
        double const angle = found.rotation * std::numbers::pi / 180;
        double const centreX = found.tx + found.scale * 20 * (std::cos(angle) - std::sin(angle));
        double const centreY = found.ty + found.scale * 20 * (std::sin(angle) + std::cos(angle));
        EXPECT_NEAR(centreX, p.x, 1.0 + 1e-9) << p.x << ' ' << p.y;
        EXPECT_NEAR(centreY, p.y, 1.0 + 1e-9) << p.x << ' ' << p.y;
        EXPECT_NEAR(found.rotation, p.rotation, 10.0) << p.x << ' ' << p.y;
        EXPECT_NEAR(found.scale, p.scale, 0.1 + 1e-9) << p.x << ' ' << p.y;
    }
}

TEST(ShapeBasedMatching2D, findsInverseContrastByTheAbsoluteMeasureOnly)
{
    Matching matching = drawnMatching(64, 24, {0, 0, 1, 0}, 40, 22);
    for (Plane* plane : {&matching.inputX, &matching.inputY}) {
        for (double& voxel : plane->voxels) {
            voxel = -voxel;
        }
    }
    matching.numOfLevels = 2;
    Search<double> search(matching);
    search.algorithm->scaleBegin = 1.0;
    search.algorithm->scaleEnd = 1.0;
    search.algorithm->rotationEnd = 0.0;
    MatchingResult const wanted{28, 10, 1, 0};
    EXPECT_FALSE(search.run() == wanted);
    search.algorithm->similarityMeasure = SIMILARITY_MEASURE::NORMALIZED_ABS;
    EXPECT_EQ(search.run(), wanted);
}

/// A field that is the same after half a turn, twice in the image: of equal scores the first counts.
TEST(ShapeBasedMatching2D, takesTheFirstOfEqualScores)
{
    Matching matching = emptyMatching(1500, 40, 3, 3);
    auto const draw = [](Plane& plane, int x, int y) {
        for (int i = -1; i <= 1; ++i) {
            plane.voxels[static_cast<std::size_t>((y + i) * plane.columns + x)] = 1.0;
        }
    };
    for (auto const& [x, y] : {std::pair(1400, 8), std::pair(3, 8), std::pair(2, 30), std::pair(700, 22)}) {
        draw(matching.inputX, x, y);
    }
    draw(matching.templateX, 1, 1);
    matching.numOfLevels = 1;
    Search<double> search(matching);
    search.algorithm->similarityMeasure = SIMILARITY_MEASURE::NORMALIZED_ABS;
    search.algorithm->scaleBegin = 1.0;
    search.algorithm->scaleEnd = 1.0;
    search.algorithm->rotationStep = 180.0;
    for (std::size_t const threads : {1U, 2U, 5U}) {
        tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
        EXPECT_EQ(search.run(), (MatchingResult{2, 7, 1, 0})) << threads;
    }
}

TEST(ShapeBasedMatching2D, takesTheFirstPositionWithoutAShape)
{
    Matching matching = emptyMatching(20, 20, 4, 4);
    Search<double> search(matching);
    EXPECT_EQ(search.run(), (MatchingResult{-1, -1, 0.5, 0}));
}

TEST(ShapeBasedMatching2D, takesEmptyImages)
{
    Search<double> empty(emptyMatching(0, 0, 3, 3));
    EXPECT_NO_THROW(empty.run());
    Search<double> emptyTemplate(emptyMatching(5, 5, 0, 0));
    EXPECT_EQ(emptyTemplate.run(), (MatchingResult{0, 0, 0.5, 0}));
}

TEST(ShapeBasedMatching2D, needsNoLevelsBeyondASingleVoxel)
{
    std::mt19937 random(9);
    Matching const matching = randomMatching(random, 12);
    Search<double> search(matching);
    search.algorithm->numOfLevel = 5;
    MatchingResult const found = search.run();
    search.algorithm->numOfLevel = std::numeric_limits<unsigned int>::max();
    EXPECT_EQ(search.run(), found);
}

TEST(ShapeBasedMatching2D, passesOverGradientsThatAreNoNumbers)
{
    Matching matching = drawnMatching(48, 16, {0, 0, 1, 0}, 30, 20);
    matching.inputX.voxels[5] = std::numeric_limits<double>::quiet_NaN();
    matching.numOfLevels = 1;
    Search<double> search(matching);
    search.algorithm->scaleBegin = 1.0;
    search.algorithm->scaleEnd = 1.0;
    search.algorithm->rotationEnd = 0.0;
    EXPECT_EQ(search.run(), (MatchingResult{22, 12, 1, 0}));
}

TEST(ShapeBasedMatching2D, usesTheFirstPlane)
{
    Matching const matching = drawnMatching(32, 12, {0, 0, 1, 0}, 20, 14);
    Search<double> search(matching);
    MatchingResult const wanted = search.run();
    for (auto* image : {search.inputX.get(), search.inputY.get()}) {
        auto voxels = testing::voxelsOf<double>(*image);
        voxels.resize(2 * voxels.size(), 1.0);
        testing::fill(*image, {32, 32, 2, 1, 1}, voxels);
    }
    EXPECT_EQ(search.run(), wanted);
}

TEST(ShapeBasedMatching2D, tellsRowsThatCannotBeRead)
{
    Search<double> search(drawnMatching(16, 6, {0, 0, 1, 0}, 8, 8));
    testing::TestImage image;
    testing::fill(image, {16, 16, 1, 1, 1}, testing::voxelsOf<double>(*search.inputX));
    search.algorithm->inputGradientX = &image;
    search.algorithm->numOfLevel = 1;
    image.failAt(3, testing::TestImage::Fault::returnsFalse);
    EXPECT_TRUE(refusalOf(*search.algorithm)
                    .starts_with("#1 Error : Error in readRowAt implementation, return value is false "));
    EXPECT_NO_THROW(search.run());
}

TEST(ShapeBasedMatching2D, leavesItsResultsAloneWhenCancelled)
{
    Search<double> search(drawnMatching(256, 64, {0, 0, 1, 0}, 100, 100));
    search.algorithm->rotationStep = 0.001; // many hours, if it were not cancelled
    search.algorithm->outputTx = 77.0;
    testing::RecordingInteraction interaction;
    interaction.cancelAtPoll = 1;
    search.algorithm->run(&interaction);
    EXPECT_EQ(search.result(), (MatchingResult{77, 0, 1, 0}));
}

} // namespace

} // namespace mox::registration
