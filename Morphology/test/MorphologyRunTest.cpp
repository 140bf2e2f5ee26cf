#include <Moxelcore/Core/Enum/AlgoPrecisionType.h>
#include <Moxelcore/Core/Enum/Neighborhood2DType.h>
#include <Moxelcore/Core/Enum/Neighborhood3DType.h>
#include <Moxelcore/Morphology/Line2DMorphology.h>
#include <Moxelcore/Morphology/Neighborhood2DMorphology.h>

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <ctime>
#include <thread>

#include "Morphology/test/MorphologyObject.h"
#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/TestImage.h"
#include "testing/references/morphologyElements.h"

namespace mox::testing {
namespace {

using namespace mox::morphology;
using ::testing::HasSubstr;

/// A class with random parameters, and its element by definition.
struct Setting {
    MorphologyObject object;
    std::vector<ReferenceStep> steps;
    bool isDirected = false;
};

Setting randomSetting(std::string const& chain, std::string const& family, std::mt19937& random)
{
    Setting setting{MorphologyObject(chain + family), {}};
    MorphologyObject const& object = setting.object;
    unsigned int const size = static_cast<unsigned int>(random() % 6);
    auto const n = static_cast<int>(size);
    double const theta = std::uniform_real_distribution<double>(-200, 400)(random);
    double const phi = random() % 4 == 0 ? 90.0 : std::uniform_real_distribution<double>(-200, 400)(random);
    int const choice = static_cast<int>(random());
    bool const isPrecise = choice % 2 == 0;
    auto const pick = [&](unsigned int count) { return static_cast<int>(random() % count); };
    if (object->getPropertyfromName("elementSize") != nullptr) {
        object.property<unsigned int>("elementSize") = size;
    }
    if (object->getPropertyfromName("precision") != nullptr) {
        object.property<int>("precision") = isPrecise ? MOX_ALGO_PRECISE : MOX_ALGO_FAST;
    }
    if (family == "2D") {
        int const neighborhood = pick(2);
        object.property<int>("neighborhood2D") = neighborhood;
        object.property<unsigned int>("nbIter") = size + 1;
        setting.steps = {{neighborhood == MOX_NEIGHBORHOOD2D_4 ? cross4() : squareOf9(), size + 1}};
    } else if (family == "3D") {
        int const neighborhood = pick(3);
        OrderedElement const elements[] = {cross6(), edged18(), cubeOf27()};
        object.property<int>("neighborhood3D") = neighborhood;
        object.property<unsigned int>("nbIter") = size / 2 + 1;
        setting.steps = {{elements[neighborhood], size / 2 + 1}};
    } else if (family == "Disk2D") {
        setting.steps = isPrecise || n == 0
                            ? std::vector<ReferenceStep>{{listed(diskReference(n)), 1}}
                            : std::vector<ReferenceStep>{{squareOf9(), size / 2}, {cross4(), size - size / 2}};
    } else if (family == "Ball3D") {
        auto const p = static_cast<unsigned int>(size * 0.6);
        auto const q = static_cast<unsigned int>(size * 0.3);
        setting.steps = isPrecise || n == 0
                            ? std::vector<ReferenceStep>{{listed(ballReference(n)), 1}}
                            : std::vector<ReferenceStep>{{cross6(), p}, {edged18(), q}, {cubeOf27(), size - p - q}};
    } else {
        setting.isDirected = true;
        if (family == "Line2D") {
            object.property<double>("orientationAngle") = theta;
            setting.steps = {{listed(lineReference2D(theta, n)), 1}};
        } else {
            object.property<double>("thetaAngle") = theta;
            object.property<double>("phiAngle") = phi;
            setting.steps = {
                {listed(family == "Line3D" ? lineReference3D(theta, phi, n) : tiltedDiskReference(theta, phi, n)), 1}};
        }
    }
    return setting;
}

template <class T>
std::vector<T> reference(std::vector<T> voxels, Sizes const& sizes, std::string const& chain, Setting const& setting)
{
    auto second = setting.steps;
    if (setting.isDirected) {
        for (ReferenceStep& step : second) {
            step.element = mirrored(step.element);
        }
    }
    if (chain == "Erosion" || chain == "Opening") {
        voxels = extremumReference(voxels, sizes, setting.steps, Extremum::minimum);
        return chain == "Erosion" ? voxels : extremumReference(voxels, sizes, second, Extremum::maximum);
    }
    voxels = extremumReference(voxels, sizes, setting.steps, Extremum::maximum);
    return chain == "Dilation" ? voxels : extremumReference(voxels, sizes, second, Extremum::minimum);
}

template <class T>
bool sameBits(std::vector<T> const& a, std::vector<T> const& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

template <class T>
class MorphologyRun : public ::testing::Test {
};
using RunVoxels = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                                   float, double>;
TYPED_TEST_SUITE(MorphologyRun, RunVoxels);

// All classes, levels and ways of storing, bit for bit, on floating voxels with NaN, infinities and signed zeros.
TYPED_TEST(MorphologyRun, followsTheDefinition)
{
    using T = TypeParam;
    std::mt19937 random(7);
    for (std::string const& chain : namesOfChains()) {
        for (std::string const& family : namesOfFamilies()) {
            for (int round = 0; round < 4; ++round) {
                Setting const setting = randomSetting(chain, family, random);
                Sizes const sizes = randomSizes(random, {round == 0 ? 67U : 12U, 14, 5, 2, 2});
                auto const voxels = randomVoxels<T>(random, sizes.numOfVoxels());
                auto const wanted = reference(voxels, sizes, chain, setting);
                for (OptimLevelType const level : {OptimLevelType::SCALAR, OptimLevelType::VEC_SSE}) {
                    if (level == OptimLevelType::VEC_SSE && std::is_integral_v<T> && sizeof(T) == 8) {
                        continue;
                    }
                    setting.object.setLevel(level);
                    setting.object->setMaximumExtraMemoryUsage(round % 2);
                    auto const image = makeImage(sizes, voxels);
                    memory::InMemoryImage output;
                    setting.object.setImages(*image, output);
                    setting.object->run();
                    ASSERT_TRUE(sameBits(voxelsOf<T>(output), wanted)) << chain << family << " level " << level;
                    setting.object.setImages(*image, *image);
                    setting.object->run();
                    ASSERT_TRUE(sameBits(voxelsOf<T>(*image), wanted))
                        << chain << family << " in place, level " << level;
                }
            }
        }
    }
}

/// Runs at both levels, on two images and in place, on 1 to 8 threads, and compares.
template <class T>
void expectSameAtBothLevels(MorphologyObject const& object, Sizes const& sizes, std::vector<T> const& voxels,
                            std::string const& what)
{
    static std::size_t threads = 0;
    threads = threads % 8 + 1;
    tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
    auto const image = makeImage(sizes, voxels);
    std::vector<T> wanted;
    for (OptimLevelType const level : {OptimLevelType::SCALAR, OptimLevelType::VEC_SSE}) {
        object.setLevel(level);
        memory::InMemoryImage output;
        object.setImages(*image, output);
        object->run();
        wanted = wanted.empty() ? voxelsOf<T>(output) : wanted;
        ASSERT_TRUE(sameBits(voxelsOf<T>(output), wanted)) << what << " level " << level;
    }
    object.setImages(*image, *image);
    object->run();
    ASSERT_TRUE(sameBits(voxelsOf<T>(*image), wanted)) << what << " in place";
}

/// Clean floating voxels, which the vector level may take together, or some among them that it may not.
template <class T>
std::vector<T> voxelsFor(unsigned int round, std::size_t count, std::mt19937& random)
{
    auto voxels = randomVoxels<T>(random, count);
    if constexpr (std::is_floating_point_v<T>) {
        for (T& voxel : voxels) {
            voxel = std::isnan(voxel) || voxel == 0 ? T(0) : voxel;
        }
        for (unsigned int i = 0; i < round % 3; ++i) {
            voxels[random() % count] = i == 0 ? randomNaN<T>(random) : T(-0.0);
        }
    }
    return voxels;
}

// 64-bit integers have one level.
template <class T>
class MorphologyLevels : public ::testing::Test {
};
using VectorVoxels =
    ::testing::Types<unsigned char, unsigned short, unsigned int, signed char, short, int, float, double>;
TYPED_TEST_SUITE(MorphologyLevels, VectorVoxels);

TYPED_TEST(MorphologyLevels, giveTheSameBitsForManyIterations)
{
    using T = TypeParam;
    std::mt19937 random(21);
    for (unsigned int n = 1; n <= 40; ++n) {
        Sizes const sizes{50 + static_cast<unsigned int>(random() % 100),
                          40 + static_cast<unsigned int>(random() % 300), 1, 1, 1};
        auto const voxels = voxelsFor<T>(n, sizes.numOfVoxels(), random);
        for (int const neighborhood : {MOX_NEIGHBORHOOD2D_4, MOX_NEIGHBORHOOD2D_8}) {
            MorphologyObject const object(n % 2 == 0 ? "Closing2D" : "Opening2D");
            object.property<unsigned int>("nbIter") = n;
            object.property<int>("neighborhood2D") = neighborhood;
            expectSameAtBothLevels(object, sizes, voxels, std::to_string(n) + " iterations");
        }
        MorphologyObject const fast(n % 2 == 0 ? "DilationDisk2D" : "ErosionDisk2D");
        fast.property<unsigned int>("elementSize") = n;
        expectSameAtBothLevels(fast, sizes, voxels, "fast disk " + std::to_string(n));
    }
    for (unsigned int n = 1; n <= 15; ++n) {
        Sizes const sizes = n % 2 == 0 ? Sizes{40, 20, 25, 1, 1} : Sizes{40, 150, 12, 1, 1};
        auto const voxels = voxelsFor<T>(n, sizes.numOfVoxels(), random);
        MorphologyObject const cube(n % 2 == 0 ? "Closing3D" : "Opening3D");
        cube.property<unsigned int>("nbIter") = n;
        expectSameAtBothLevels(cube, sizes, voxels, std::to_string(n) + " cubes");
    }
}

TYPED_TEST(MorphologyLevels, giveTheSameBitsForLongLists)
{
    using T = TypeParam;
    std::mt19937 random(22);
    auto const choose = [&](char const* family) {
        return MorphologyObject(std::string(random() % 2 == 0 ? "Closing" : "Erosion") + family);
    };
    Sizes const plane{61, 200, 1, 1, 1}; // of several leaves
    for (unsigned int const radius : {2U, 6U, 13U, 22U, 30U}) {
        MorphologyObject const disk = choose("Disk2D");
        disk.property<unsigned int>("elementSize") = radius;
        disk.property<int>("precision") = MOX_ALGO_PRECISE;
        expectSameAtBothLevels(disk, plane, randomVoxels<T>(random, plane.numOfVoxels()), "disk");
    }
    for (int angle = 0; angle < 360; angle += 5) {
        MorphologyObject const line = choose("Line2D");
        line.property<double>("orientationAngle") = angle;
        line.property<unsigned int>("elementSize") = 2 + static_cast<unsigned int>(random() % 40);
        expectSameAtBothLevels(line, plane, randomVoxels<T>(random, plane.numOfVoxels()), "line");
    }
    Sizes const space{30, 17, 14, 1, 1};
    for (char const* const family : {"Ball3D", "Disk3D", "Line3D"}) {
        for (unsigned int const size : {2U, 5U}) {
            MorphologyObject const object = choose(family);
            object.property<unsigned int>("elementSize") = size;
            if (object->getPropertyfromName("precision") != nullptr) {
                object.property<int>("precision") = MOX_ALGO_PRECISE;
            } else {
                object.property<double>("thetaAngle") = 30.0 * size;
                object.property<double>("phiAngle") = 20.0 * size;
            }
            expectSameAtBothLevels(object, space, randomVoxels<T>(random, space.numOfVoxels()), family);
        }
    }
}

TEST(MorphologyRuns, leave64BitIntegersToTheScalarLevel)
{
    auto const image = makeImage({5, 4, 1, 1, 1}, std::vector<int64>(20, 3));
    auto const dilation = Dilation2D::New();
    dilation->input = image.get();
    dilation->output = image.get();
    dilation->run();
    dilation->setAutoCpuDispatch(false);
    dilation->setOptimLevel(OptimLevelType::VEC_SSE);
    EXPECT_THROW(dilation->run(), UnexpectedError);
}

TEST(MorphologyRuns, doNotDependOnTheNumberOfThreads)
{
    std::mt19937 random(8);
    Sizes const sizes{300, 200, 2, 1, 1};
    auto const voxels = randomVoxels<float>(random, sizes.numOfVoxels());
    for (std::string const name : {"Closing2D", "OpeningBall3D", "OpeningLine2D", "ClosingDisk3D"}) {
        std::vector<float> first;
        for (std::size_t const threads : {1U, 2U, 7U}) {
            tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
            MorphologyObject const object(name);
            auto const image = makeImage(sizes, voxels);
            object.setImages(*image, *image);
            object->run();
            auto const result = voxelsOf<float>(*image);
            first = first.empty() ? result : first;
            EXPECT_TRUE(sameBits(result, first)) << name << " on " << threads << " threads";
        }
    }
}

TEST(MorphologyRuns, takeImagesOfAnApplicationAndEmptyOnes)
{
    std::mt19937 random(9);
    for (std::string const& chain : namesOfChains()) {
        for (std::string const& family : namesOfFamilies()) {
            Sizes const sizes{33, 12, 4, 2, 1};
            auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
            for (bool const givesPointers : {false, true}) {
                Setting const setting = randomSetting(chain, family, random);
                TestImage image;
                image.givesPointers = givesPointers;
                fill(image, sizes, voxels);
                setting.object.setImages(image, image);
                setting.object->run();
                EXPECT_EQ(voxelsOf<short>(image), reference(voxels, sizes, chain, setting)) << chain << family;
            }
            for (Sizes const& empty : {Sizes{0, 3, 2, 1, 1}, Sizes{3, 0, 2, 1, 1}, Sizes{3, 2, 0, 1, 1}}) {
                Setting const setting = randomSetting(chain, family, random);
                auto const input = makeImage(empty, std::vector<short>());
                memory::InMemoryImage output;
                setting.object.setImages(*input, output);
                setting.object->run();
                EXPECT_EQ(Sizes::of(output), empty);
            }
        }
    }
}

TEST(MorphologyRuns, failAtEachRowOperationAndCanBeRunAgain)
{
    std::mt19937 random(10);
    Sizes const sizes{5, 4, 3, 1, 1};
    auto const voxels = randomVoxels<unsigned char>(random, sizes.numOfVoxels());
    for (char const* const name : {"Closing2D", "Opening3D", "OpeningLine2D", "ClosingDisk3D"}) {
        bool fails = true;
        for (int k = 1; fails; ++k) {
            ASSERT_LT(k, 2000);
            TestImage image;
            fill(image, sizes, voxels);
            MorphologyObject const object(name);
            object.setImages(image, image);
            image.failAt(k, k % 2 == 0 ? TestImage::Fault::throws : TestImage::Fault::returnsFalse);
            try {
                object->run();
                fails = false;
            } catch (UnexpectedError const& error) {
                EXPECT_THAT(error.what().c_str(), HasSubstr(std::string(name) + " of Moxelcore library"));
            }
            image.failAt(0, TestImage::Fault::throws);
            EXPECT_FALSE(object.property<ImageModel*>("output").isLocked());
            object->run();
        }
    }
}

TEST(MorphologyRuns, goFrom0To100OverAllPasses)
{
    auto const image = makeImage({200, 200, 10, 1, 1}, std::vector<unsigned char>(400000));
    for (char const* const name : {"Closing2D", "OpeningDisk2D", "ClosingBall3D", "OpeningLine3D"}) {
        MorphologyObject const object(name);
        object.setImages(*image, *image);
        RecordingInteraction recording;
        object->run(&recording);
        EXPECT_EQ(recording.notified.back(), 100.0) << name;
        EXPECT_TRUE(std::is_sorted(recording.notified.begin(), recording.notified.end())) << name;
    }
}

TEST(MorphologyRuns, stopBetweenPasses)
{
    Sizes const sizes{8, 40, 1, 1, 1};
    TestImage image;
    fill(image, sizes, std::vector<unsigned char>(320, 5));
    MorphologyObject const object("Closing2D");
    object.property<unsigned int>("nbIter") = 100000000U; // years of work
    object.setImages(image, image);
    RecordingInteraction recording;
    recording.cancelAtPoll = 2;
    auto const begin = std::chrono::steady_clock::now();
    object->run(&recording);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
    EXPECT_LT(recording.notified.back(), 100.0);
    EXPECT_FALSE(object->running());
}

TEST(MorphologyRuns, stopWithinALeafOfAHugeElement)
{
    Sizes const sizes{2000, 1200, 1, 1, 1};
    auto const image = makeImage(sizes, std::vector<unsigned char>(sizes.numOfVoxels(), 5));
    MorphologyObject const object("DilationDisk2D");
    object.property<unsigned int>("elementSize") = 1000U;
    object.property<int>("precision") = MOX_ALGO_PRECISE;
    memory::InMemoryImage output;
    object.setImages(*image, output);
    RecordingInteraction recording;
    recording.cancelAtPoll = 10;
    std::clock_t const begin = std::clock(); // time that other programs take does not count
    object->run(&recording);
    auto const seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    EXPECT_LT(seconds / std::thread::hardware_concurrency(), 30.0); // minutes otherwise
}

// Laws that hold whatever the element.

template <class T>
std::vector<T> result(Setting const& setting, MorphologyObject const& other, Sizes const& sizes,
                      std::vector<T> const& voxels)
{
    for (unsigned int i = 1; i + 1 < setting.object->getNumOfProperties(); ++i) {
        String echo;
        BaseProperty& source = *setting.object->getInputProperty(i);
        BaseProperty& target = *other->getInputProperty(i);
        if (auto* const number = dynamic_cast<Property<unsigned int>*>(&source)) {
            dynamic_cast<Property<unsigned int>&>(target) = number->get();
        } else if (auto* const angle = dynamic_cast<Property<double>*>(&source)) {
            dynamic_cast<Property<double>&>(target) = angle->get();
        } else {
            dynamic_cast<Property<int>&>(target) = dynamic_cast<Property<int>&>(source).get();
        }
    }
    auto const input = makeImage(sizes, voxels);
    memory::InMemoryImage output;
    other.setImages(*input, output);
    other->run();
    return voxelsOf<T>(output);
}

TEST(MorphologyLaws, openAndCloseIdempotentlyBelowAndAboveTheInput)
{
    std::mt19937 random(11);
    for (std::string const& family : namesOfFamilies()) {
        for (int round = 0; round < 6; ++round) {
            Sizes const sizes = randomSizes(random, {25, 20, 6, 1, 1});
            auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
            Setting const setting = randomSetting("Opening", family, random);
            MorphologyObject const opening("Opening" + family);
            MorphologyObject const closing("Closing" + family);
            auto const opened = result(setting, opening, sizes, voxels);
            auto const closed = result(setting, closing, sizes, voxels);
            for (std::size_t i = 0; i < voxels.size(); ++i) {
                ASSERT_LE(opened[i], voxels[i]) << family;
                ASSERT_GE(closed[i], voxels[i]) << family;
            }
            EXPECT_EQ(result(setting, opening, sizes, opened), opened) << family;
            EXPECT_EQ(result(setting, closing, sizes, closed), closed) << family;
        }
    }
}

TEST(MorphologyLaws, makeErosionTheDualOfDilation)
{
    std::mt19937 random(12);
    auto const complement = [](std::vector<unsigned short> voxels) {
        for (auto& voxel : voxels) {
            voxel = static_cast<unsigned short>(~voxel);
        }
        return voxels;
    };
    for (std::string const& family : namesOfFamilies()) {
        for (int round = 0; round < 6; ++round) {
            Sizes const sizes = randomSizes(random, {25, 20, 6, 1, 1});
            auto const voxels = randomVoxels<unsigned short>(random, sizes.numOfVoxels());
            Setting const setting = randomSetting("Opening", family, random);
            auto const eroded = result(setting, MorphologyObject("Erosion" + family), sizes, voxels);
            auto const dilated = result(setting, MorphologyObject("Dilation" + family), sizes, complement(voxels));
            EXPECT_EQ(eroded, complement(dilated)) << family;
            auto const opened = result(setting, MorphologyObject("Opening" + family), sizes, voxels);
            auto const closed = result(setting, MorphologyObject("Closing" + family), sizes, complement(voxels));
            EXPECT_EQ(opened, complement(closed)) << family;
        }
    }
}

} // namespace
} // namespace mox::testing
