#include <Moxelcore/Core/Enum/AlgoPrecisionType.h>
#include <Moxelcore/Core/Enum/Neighborhood2DType.h>
#include <Moxelcore/Core/Enum/Neighborhood3DType.h>
#include <Moxelcore/Morphology/Ball3DMorphology.h>
#include <Moxelcore/Morphology/Disk2DMorphology.h>
#include <Moxelcore/Morphology/Line2DMorphology.h>
#include <Moxelcore/Morphology/Neighborhood2DMorphology.h>
#include <Moxelcore/Morphology/Neighborhood3DMorphology.h>

#include <gmock/gmock.h>

#include <limits>
#include <map>

#include "Morphology/test/MorphologyObject.h"
#include "testing/Images.h"

namespace mox::testing {
namespace {

using namespace mox::morphology;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<std::string> propertiesOf(BaseAlgorithm const& algorithm)
{
    std::vector<std::string> names;
    for (unsigned int i = 0; i < algorithm.getNumOfInputProperties(); ++i) {
        names.push_back(algorithm.getInputProperty(i)->getName().c_str());
    }
    for (unsigned int i = 0; i < algorithm.getNumOfOutputProperties(); ++i) {
        names.push_back(algorithm.getOutputProperty(i)->getName().c_str());
    }
    return names;
}

std::vector<unsigned int> influenceOf(BaseAlgorithm const& algorithm)
{
    std::vector<unsigned int> counts;
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        counts.push_back(algorithm.getAlgoBorderInfluence().getNumOfVoxels(static_cast<DirectionTypes>(direction)));
    }
    return counts;
}

std::string failureOf(MorphologyObject const& object)
{
    try {
        object->run();
    } catch (Exception const& error) {
        return error.what().c_str();
    }
    return "none";
}

TEST(Morphology, has28ClassesWithTheirProperties)
{
    std::map<std::string, std::vector<std::string>> const properties = {
        {"2D", {"input", "nbIter", "neighborhood2D", "output"}},
        {"3D", {"input", "nbIter", "neighborhood3D", "output"}},
        {"Disk2D", {"input", "elementSize", "precision", "output"}},
        {"Line2D", {"input", "orientationAngle", "elementSize", "output"}},
        {"Ball3D", {"input", "elementSize", "precision", "output"}},
        {"Disk3D", {"input", "thetaAngle", "phiAngle", "elementSize", "output"}},
        {"Line3D", {"input", "thetaAngle", "phiAngle", "elementSize", "output"}}};
    for (std::string const& chain : namesOfChains()) {
        for (std::string const& family : namesOfFamilies()) {
            MorphologyObject const object(chain + family);
            EXPECT_EQ(std::string(object->getInfo()->getName()), chain + family);
            EXPECT_EQ(std::string(object->getInfo()->getLibName()), "Moxelcore");
            EXPECT_EQ(propertiesOf(*object.operator->()), properties.at(family));
            EXPECT_TRUE(object->isOptimLevelSupported(OptimLevelType::SCALAR));
            EXPECT_TRUE(object->isOptimLevelSupported(OptimLevelType::VEC_SSE));
        }
    }
}

TEST(Morphology, hasItsDefaults)
{
    for (std::string const& chain : namesOfChains()) {
        MorphologyObject const plane(chain + "2D");
        EXPECT_EQ(plane.property<unsigned int>("nbIter").get(), 3U);
        EXPECT_EQ(plane.property<int>("neighborhood2D").get(), MOX_NEIGHBORHOOD2D_8);
        EXPECT_THAT(influenceOf(*plane.operator->()), ElementsAre(3, 3, 3, 3, 0, 0, 0, 0, 0, 0));
        MorphologyObject const space(chain + "3D");
        EXPECT_EQ(space.property<unsigned int>("nbIter").get(), 3U);
        EXPECT_EQ(space.property<int>("neighborhood3D").get(), MOX_NEIGHBORHOOD3D_26);
        EXPECT_THAT(influenceOf(*space.operator->()), ElementsAre(3, 3, 3, 3, 3, 3, 0, 0, 0, 0));
        MorphologyObject const disk(chain + "Disk2D");
        EXPECT_EQ(disk.property<unsigned int>("elementSize").get(), 3U);
        EXPECT_EQ(disk.property<int>("precision").get(), MOX_ALGO_FAST);
        EXPECT_THAT(influenceOf(*disk.operator->()), ElementsAre(3, 3, 3, 3, 0, 0, 0, 0, 0, 0));
        MorphologyObject const ball(chain + "Ball3D");
        EXPECT_EQ(ball.property<unsigned int>("elementSize").get(), 3U);
        EXPECT_EQ(ball.property<int>("precision").get(), MOX_ALGO_FAST);
        EXPECT_THAT(influenceOf(*ball.operator->()), ElementsAre(3, 3, 3, 3, 3, 3, 0, 0, 0, 0));
        MorphologyObject const line(chain + "Line2D");
        EXPECT_EQ(line.property<double>("orientationAngle").get(), 10.0);
        EXPECT_EQ(line.property<unsigned int>("elementSize").get(), 3U);
        EXPECT_THAT(influenceOf(*line.operator->()), ElementsAre(0, 2, 0, 0, 0, 0, 0, 0, 0, 0));
        for (char const* const family : {"Disk3D", "Line3D"}) {
            MorphologyObject const tilted(chain + family);
            EXPECT_EQ(tilted.property<double>("thetaAngle").get(), 0.0);
            EXPECT_EQ(tilted.property<double>("phiAngle").get(), 0.0);
            EXPECT_EQ(tilted.property<unsigned int>("elementSize").get(), 3U);
        }
        EXPECT_THAT(influenceOf(*MorphologyObject(chain + "Disk3D").operator->()),
                    ElementsAre(3, 3, 3, 3, 0, 0, 0, 0, 0, 0));
        EXPECT_THAT(influenceOf(*MorphologyObject(chain + "Line3D").operator->()),
                    ElementsAre(0, 0, 0, 0, 0, 2, 0, 0, 0, 0));
    }
}

TEST(Morphology, refusesBadPropertiesBeforeItWritesAVoxel)
{
    auto const input = makeImage({3, 3, 1, 1, 1}, std::vector<short>(9, 1));
    auto const output = makeImage({2, 1, 1, 1, 1}, std::vector<unsigned char>{7, 7});
    for (std::string const& chain : namesOfChains()) {
        for (std::string const& family : namesOfFamilies()) {
            MorphologyObject const object(chain + family);
            EXPECT_THAT(failureOf(object), HasSubstr("Parameter value cannot be null"));
            object.property<ImageModel const*>("input") = input.get();
            EXPECT_THAT(failureOf(object), HasSubstr("Parameter value cannot be null"));
            EXPECT_FALSE(object.property<ImageModel*>("output").isLocked());
        }
        for (char const* const family : {"2D", "3D"}) {
            MorphologyObject const object(chain + family);
            object.setImages(*input, *output);
            object.property<unsigned int>("nbIter") = 0U;
            EXPECT_THAT(failureOf(object), HasSubstr("Parameter value cannot be null"));
        }
        for (auto const& [family, name] : std::vector<std::pair<char const*, char const*>>{{"2D", "neighborhood2D"},
                                                                                           {"3D", "neighborhood3D"},
                                                                                           {"Disk2D", "precision"},
                                                                                           {"Ball3D", "precision"}}) {
            MorphologyObject const object(chain + family);
            object.setImages(*input, *output);
            object.property<int>(name) = 17;
            EXPECT_THAT(failureOf(object), HasSubstr("The enumeration value is not valid"));
        }
        for (auto const& [family, name] : std::vector<std::pair<char const*, char const*>>{
                 {"Line2D", "orientationAngle"}, {"Line3D", "phiAngle"}, {"Disk3D", "thetaAngle"}}) {
            for (double const angle :
                 {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
                MorphologyObject const object(chain + family);
                object.setImages(*input, *output);
                object.property<double>(name) = angle;
                EXPECT_THROW(object->run(), InvalidCall);
                EXPECT_THROW(object->getAlgoBorderInfluence(), InvalidCall);
                EXPECT_THAT(failureOf(object), HasSubstr(std::string(name) + " must be a finite number of degrees"));
                object.property<double>(name) = 0.0;
                EXPECT_FALSE(object.property<ImageModel*>("output").isLocked());
            }
        }
    }
    EXPECT_THAT(voxelsOf<unsigned char>(*output), Each(7));
    EXPECT_EQ(output->getSize(COLUMNS), 2U);
}

TEST(Morphology, dilatesByTheSquareOf3)
{
    auto const input = makeImage<unsigned char>({4, 3, 1, 1, 1}, {9, 0, 0, 0, 0, 0, 0, 5, 0, 1, 0, 0});
    memory::InMemoryImage output;
    auto const dilation = Dilation2D::New();
    dilation->input = input.get();
    dilation->output = &output;
    dilation->nbIter = 1U;
    dilation->run();
    EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(9, 9, 5, 5, 9, 9, 5, 5, 1, 1, 5, 5));
}

TEST(Morphology, opensABrightPointAwayAndClosesADarkOne)
{
    for (int const point : {0, 200}) {
        std::vector<unsigned char> voxels(49, static_cast<unsigned char>(200 - point));
        voxels[24] = static_cast<unsigned char>(point);
        auto const image = makeImage({7, 7, 1, 1, 1}, voxels);
        MorphologyObject const object(point == 0 ? "Closing2D" : "Opening2D");
        object.property<unsigned int>("nbIter") = 1U;
        object.setImages(*image, *image);
        object->run();
        EXPECT_THAT(voxelsOf<unsigned char>(*image), Each(point == 0 ? 200 : 0));
    }
}

TEST(Morphology, erodesAConstantImageToItselfUpToItsEdge)
{
    auto const image = makeImage({5, 4, 3, 1, 1}, std::vector<int>(60, -7));
    for (char const* const name : {"Erosion2D", "Erosion3D", "ErosionDisk2D", "ErosionBall3D", "ErosionLine3D"}) {
        MorphologyObject const object(name);
        object.setImages(*image, *image);
        object->run();
        EXPECT_THAT(voxelsOf<int>(*image), Each(-7)) << name;
    }
}

TEST(Morphology, seesOnlyTheColumnOfAnImageOneVoxelWide)
{
    auto const input = makeImage<short>({1, 4, 1, 1, 1}, {1, 5, 2, -4});
    memory::InMemoryImage output;
    auto const dilation = Dilation2D::New();
    dilation->input = input.get();
    dilation->output = &output;
    dilation->nbIter = 1U;
    dilation->run();
    EXPECT_THAT(voxelsOf<short>(output), ElementsAre(5, 5, 5, 2));
}

TEST(Morphology, closesBetweenTheExtremesWhenTheElementCoversTheImage)
{
    std::mt19937 random(1);
    auto const voxels = randomVoxels<short>(random, 20);
    auto const input = makeImage({5, 4, 1, 1, 1}, voxels);
    memory::InMemoryImage output;
    auto const closing = Closing2D::New();
    closing->input = input.get();
    closing->output = &output;
    closing->nbIter = 30U;
    closing->run();
    EXPECT_THAT(voxelsOf<short>(output), Each(*std::max_element(voxels.begin(), voxels.end())));
}

TEST(Morphology, copiesForSize0)
{
    std::mt19937 random(2);
    auto const voxels = randomVoxels<unsigned short>(random, 5 * 4 * 3);
    auto const input = makeImage({5, 4, 3, 1, 1}, voxels);
    for (std::string const& chain : namesOfChains()) {
        for (std::string const& family : namesOfFamilies()) {
            if (family == "2D" || family == "3D") {
                continue;
            }
            for (int const precision : {MOX_ALGO_FAST, MOX_ALGO_PRECISE}) {
                MorphologyObject const object(chain + family);
                memory::InMemoryImage output;
                object.setImages(*input, output);
                object.property<unsigned int>("elementSize") = 0U;
                if (object->getPropertyfromName("precision") != nullptr) {
                    object.property<int>("precision") = precision;
                }
                object->run();
                EXPECT_EQ(voxelsOf<unsigned short>(output), voxels) << chain << family;
                EXPECT_THAT(influenceOf(*object.operator->()), Each(0));
            }
        }
    }
}

std::size_t numOfVoxelsAround(Disk2DMorphology& dilation)
{
    std::vector<unsigned char> voxels(21 * 21);
    voxels[10 * 21 + 10] = 1;
    auto const input = makeImage({21, 21, 1, 1, 1}, voxels);
    memory::InMemoryImage output;
    dilation.input = input.get();
    dilation.output = &output;
    dilation.run();
    auto const result = voxelsOf<unsigned char>(output);
    return static_cast<std::size_t>(std::count(result.begin(), result.end(), 1));
}

TEST(Morphology, makesAnOctagonOfAFastDisk)
{
    auto const dilation = DilationDisk2D::New();
    EXPECT_EQ(numOfVoxelsAround(*dilation), 37U);
    dilation->precision = MOX_ALGO_PRECISE;
    EXPECT_EQ(numOfVoxelsAround(*dilation), 29U);
    dilation->precision = MOX_ALGO_FAST;
    dilation->elementSize = 1U;
    EXPECT_EQ(numOfVoxelsAround(*dilation), 5U);
}

TEST(Morphology, tellsNoMoreInfluenceForTwoPasses)
{
    auto const opening = Opening3D::New();
    opening->nbIter = 7U;
    EXPECT_THAT(influenceOf(*opening), ElementsAre(7, 7, 7, 7, 7, 7, 0, 0, 0, 0));
}

TEST(Morphology, takesElementsOfAnySize)
{
    std::mt19937 random(3);
    auto const voxels = randomVoxels<short>(random, 6 * 5 * 4);
    auto const input = makeImage({6, 5, 4, 1, 1}, voxels);
    for (std::string const family : {"Disk2D", "Line2D", "Ball3D", "Disk3D", "Line3D"}) {
        MorphologyObject const object("Dilation" + family);
        memory::InMemoryImage output;
        object.setImages(*input, output);
        object.property<unsigned int>("elementSize") = std::numeric_limits<unsigned int>::max();
        if (object->getPropertyfromName("precision") != nullptr) {
            object.property<int>("precision") = MOX_ALGO_PRECISE;
        }
        object->run();
        if (family == "Ball3D") {
            EXPECT_THAT(voxelsOf<short>(output), Each(*std::max_element(voxels.begin(), voxels.end())));
        }
    }
}

} // namespace
} // namespace mox::testing
