#include <Moxelcore/Morphology/ApplyMorphologicalLut2D.h>
#include <Moxelcore/Morphology/ApplyMorphologicalLut3D.h>

#include <gmock/gmock.h>

#include <Moxelcore/Core/AlgoInfo.h>

#include <tbb/global_control.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

#include "testing/Images.h"
#include "testing/RecordingInteraction.h"
#include "testing/Refusal.h"
#include "testing/RuleImages.h"
#include "testing/TestImage.h"
#include "testing/references/morphologicalLut.h"

namespace mox::testing {

namespace {

using morphology::ApplyMorphologicalLut2D;
using morphology::ApplyMorphologicalLut3D;
using morphology::MatchingActionTypes;
using morphology::MorphologicalLut2D;
using morphology::MorphologicalLut3D;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int zero = MatchingActionTypes::SET_ZERO;
constexpr int one = MatchingActionTypes::SET_ONE;
constexpr int change = MatchingActionTypes::SET_CHANGE;
constexpr int unchange = MatchingActionTypes::SET_UNCHANGE;

/// The algorithm and the table of a dimension.
struct Plane {
    using Algorithm = ApplyMorphologicalLut2D;
    using Lut = MorphologicalLut2D;
    static constexpr int depth = 0;
    static constexpr std::size_t numOfVoxels = 9;
    static constexpr char const* name = "ApplyMorphologicalLut2D";
};

struct Space {
    using Algorithm = ApplyMorphologicalLut3D;
    using Lut = MorphologicalLut3D;
    static constexpr int depth = 1;
    static constexpr std::size_t numOfVoxels = 27;
    static constexpr char const* name = "ApplyMorphologicalLut3D";
};

template <class Dimensions>
void run(ImageModel const& input, typename Dimensions::Lut& lut, int matching, int noMatching, ImageModel& output)
{
    auto const algorithm = Dimensions::Algorithm::New();
    algorithm->input = &input;
    algorithm->morphologicalLut = &lut;
    algorithm->matchingFlag = matching;
    algorithm->noMatchingFlag = noMatching;
    algorithm->output = &output;
    algorithm->run();
}

template <class Dimensions, class T>
std::vector<T> applied(Sizes const& sizes, std::vector<T> const& voxels, typename Dimensions::Lut& lut, int matching,
                       int noMatching)
{
    auto const input = makeImage(sizes, voxels);
    memory::InMemoryImage output;
    run<Dimensions>(*input, lut, matching, noMatching, output);
    return voxelsOf<T>(output);
}

/// Kernels as text: `0`, `1`, and `.` for a voxel that does not matter.
template <class Lut>
void add(Lut& lut, std::string const& text)
{
    Vector<unsigned char> kernel;
    for (char const c : text) {
        kernel.push_back(c == '0' ? 0 : c == '1' ? 1 : 2);
    }
    lut.addKernel(kernel);
}

MorphologicalLut2D lutOf(std::vector<std::string> const& kernels)
{
    MorphologicalLut2D lut;
    for (std::string const& kernel : kernels) {
        add(lut, kernel);
    }
    return lut;
}

template <class Dimensions>
class ApplyMorphologicalLut : public ::testing::Test {
};

using BothDimensions = ::testing::Types<Plane, Space>;
TYPED_TEST_SUITE(ApplyMorphologicalLut, BothDimensions);

// ---- contract

TYPED_TEST(ApplyMorphologicalLut, hasItsPropertiesInOrderWithTheirDefaults)
{
    auto const algorithm = TypeParam::Algorithm::New();
    EXPECT_STREQ(algorithm->getInfo()->getName(), TypeParam::name);
    char const* const names[] = {"input", "morphologicalLut", "matchingFlag", "noMatchingFlag"};
    ASSERT_EQ(algorithm->getNumOfInputProperties(), 4U);
    ASSERT_EQ(algorithm->getNumOfOutputProperties(), 1U);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(algorithm->getInputProperty(i)->getName(), String(names[i]));
    }
    EXPECT_EQ(algorithm->getOutputProperty(0)->getName(), String("output"));
    EXPECT_EQ(algorithm->morphologicalLut.get()->size(), 0U);
    EXPECT_EQ(algorithm->matchingFlag, one);
    EXPECT_EQ(algorithm->noMatchingFlag, zero);
}

TYPED_TEST(ApplyMorphologicalLut, dependsOnTheWholeOfItsDimensions)
{
    auto const influence = TypeParam::Algorithm::New()->getAlgoBorderInfluence();
    for (int direction = COLUMNS_BEGIN; direction <= SPECTRAL_SERIES_END; ++direction) {
        EXPECT_EQ(influence.getNumOfVoxels(static_cast<DirectionTypes>(direction)),
                  direction <= (TypeParam::depth == 1 ? PLANS_END : ROWS_END) ? AlgoBorderInfluence::infinity : 0U);
    }
}

TYPED_TEST(ApplyMorphologicalLut, refusesWhatItCannotWorkWith)
{
    auto const algorithm = TypeParam::Algorithm::New();
    memory::InMemoryImage input;
    TestImage output;
    fill(input, {2, 1, 1, 1, 1}, std::vector<short>{1, 0});
    fill(output, {1, 1, 1, 1, 1}, std::vector<unsigned char>{42});
    auto const expectRefusal = [&](char const* property, std::string const& message) {
        std::string const text = refusalOf(*algorithm);
        EXPECT_THAT(text, HasSubstr("#1 Error : " + message));
        EXPECT_THAT(text, HasSubstr(std::string("#2 From Rule error in property ") + property));
        EXPECT_FALSE(algorithm->input.isLocked());
        EXPECT_THAT(voxelsOf<unsigned char>(output), ElementsAre(42));
    };
    expectRefusal("input", "Parameter value cannot be null");
    algorithm->input = &input;
    std::string const tooSmall = "The lut property must have a minimal size of " +
                                 std::to_string(TypeParam::Lut::fullSize) + ". This current size is 0";
    expectRefusal("morphologicalLut", tooSmall);
    algorithm->morphologicalLut = nullptr;
    expectRefusal("morphologicalLut", tooSmall);
    typename TypeParam::Lut lut;
    lut.addKernel(Vector<unsigned char>(TypeParam::numOfVoxels));
    algorithm->morphologicalLut = &lut;
    expectRefusal("output", "Parameter value cannot be null");
    algorithm->output = &output;
    algorithm->matchingFlag = 4;
    expectRefusal("matchingFlag", "The enumeration value is not valid");
    algorithm->matchingFlag = one;
    algorithm->noMatchingFlag = -1;
    expectRefusal("noMatchingFlag", "The enumeration value is not valid");
    algorithm->noMatchingFlag = zero;
    output.allocates = false;
    expectRefusal("output", "Image cannot be resized and retyped.");
    input.allocate(MOX_COMPLEX_FLOAT32, 1, 1, 1, 1, 1);
    expectRefusal("input", "Voxel type must be one of");
}

TYPED_TEST(ApplyMorphologicalLut, refusesAnOutputThatKeepsItsInterpretation)
{
    TestImage input;
    fill(input, {2, 1, 1, 1, 1}, std::vector<unsigned char>(2));
    input.setInterpretation(INTERPRETATION_BINARY);
    TestImage output;
    output.interprets = false;
    typename TypeParam::Lut lut;
    lut.addKernel(Vector<unsigned char>(TypeParam::numOfVoxels));
    auto const algorithm = TypeParam::Algorithm::New();
    algorithm->input = &input;
    algorithm->morphologicalLut = &lut;
    algorithm->output = &output;
    std::string const text = refusalOf(*algorithm);
    EXPECT_THAT(text, HasSubstr("#1 Error : Image cannot be re-interpreted from value to binary"));
    EXPECT_THAT(text, HasSubstr("#2 From Rule error in property output"));
}

// ---- literal

TEST(ApplyMorphologicalLut2D, findsEachOfThe512Patterns)
{
    for (unsigned int index = 0; index < 512; ++index) {
        std::vector<unsigned char> entries(512);
        entries[index] = 1;
        MorphologicalLut2D lut;
        lut.buildFromLut(entries.data(), 512);
        std::vector<unsigned char> voxels(9);
        for (unsigned int k = 0; k < 9; ++k) {
            voxels[k] = index >> k & 1U;
        }
        // One pass changes the middle voxel; whatever comes after finds its own pattern only by chance.
        auto const wanted = lutReference(Sizes{3, 3, 1, 1, 1}, voxels, lut, change, unchange, 0);
        ASSERT_EQ((applied<Plane>(Sizes{3, 3, 1, 1, 1}, voxels, lut, change, unchange)), wanted) << index;
        auto const onePass = lutPassReference(Sizes{3, 3, 1, 1, 1}, voxels, lut, change, unchange, 0);
        ASSERT_NE(onePass[4], voxels[4]);
    }
}

TEST(ApplyMorphologicalLut2D, removesIsolatedPoints)
{
    auto lut = lutOf({"000010000"});
    EXPECT_THAT((applied<Plane, unsigned char>({5, 3, 1, 1, 1},
                                               {9, 0, 0, 9, 0, //
                                                0, 0, 0, 0, 9, //
                                                0, 9, 0, 0, 0},
                                               lut, zero, unchange)),
                ElementsAre(0, 0, 0, 9, 0, //
                            0, 0, 0, 0, 9, //
                            0, 0, 0, 0, 0));
}

TEST(ApplyMorphologicalLut2D, prunesEndPointsUntilNoneAreLeft)
{
    auto lut =
        lutOf({"100010000", "010010000", "001010000", "000110000", "000011000", "000010100", "000010010", "000010001"});
    EXPECT_THAT((applied<Plane, short>({6, 1, 1, 1, 1}, {0, 1, 1, 1, 1, 0}, lut, zero, unchange)), Each(0));
}

TEST(ApplyMorphologicalLut2D, repeatsWhileVoxelsChange)
{
    auto lut = lutOf({"...1.....", "....1...."}); // set, or to the right of one that is set
    EXPECT_THAT((applied<Plane, short>({7, 1, 1, 1, 1}, {0, 0, 5, 0, 0, 0, 0}, lut, one, unchange)),
                ElementsAre(0, 0, 1, 1, 1, 1, 1));
}

TEST(ApplyMorphologicalLut2D, keepsTheImageBeforeOneThatComesBack)
{
    auto lut = lutOf({"........."});
    EXPECT_THAT((applied<Plane, short>({3, 1, 1, 1, 1}, {1, 0, 1}, lut, change, change)), ElementsAre(0, 1, 0));
}

// The first plan has settled after one pass, the second goes on; the run ends with all of them.
TEST(ApplyMorphologicalLut2D, looksAtAllPlansTogether)
{
    auto lut = lutOf({"...1.....", "....1...."});
    EXPECT_THAT((applied<Plane, short>({4, 1, 2, 1, 1}, {0, 0, 0, 1, 1, 0, 0, 0}, lut, one, unchange)),
                ElementsAre(0, 0, 0, 1, 1, 1, 1, 1));
}

// Patterns that wander through the image, and some that come and go in longer periods than two.
TEST(ApplyMorphologicalLut2D, endsAfterAsManyPassesAsVoxelsAtTheLatest)
{
    auto lut = lutOf({"...1.....", "...00...."});
    for (unsigned int columns = 1; columns < 12; ++columns) {
        Sizes const sizes{columns, 1, 1, 1, 1};
        std::vector<unsigned char> voxels(columns);
        voxels[columns / 2] = 1;
        for (int const matching : {one, change}) {
            for (int const noMatching : {zero, change}) {
                auto const wanted = lutReference(sizes, voxels, lut, matching, noMatching, 0);
                ASSERT_EQ((applied<Plane>(sizes, voxels, lut, matching, noMatching)), wanted);
            }
        }
    }
}

TEST(ApplyMorphologicalLut2D, keepsNaNWithoutGoingOnForEver)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    auto lut = lutOf({"....0...."});
    Sizes const sizes{100, 100, 1, 1, 1};
    std::vector<float> voxels(sizes.numOfVoxels(), 0);
    voxels[0] = nan;
    auto const input = makeImage(sizes, voxels);
    memory::InMemoryImage output;
    RecordingInteraction recording;
    auto const algorithm = ApplyMorphologicalLut2D::New();
    algorithm->input = input.get();
    algorithm->morphologicalLut = &lut;
    algorithm->matchingFlag = change;
    algorithm->noMatchingFlag = unchange;
    algorithm->output = &output;
    algorithm->run(&recording);
    auto const result = voxelsOf<float>(output);
    EXPECT_TRUE(std::isnan(result[0]));
    EXPECT_EQ(result[1], 1);
}

TEST(ApplyMorphologicalLut3D, removesIsolatedPoints)
{
    MorphologicalLut3D lut;
    add(lut, "000000000000010000000000000");
    Sizes const sizes{3, 3, 3, 1, 1};
    std::vector<unsigned char> voxels(27);
    voxels[13] = 7;
    EXPECT_THAT((applied<Space>(sizes, voxels, lut, zero, unchange)), Each(0));
    voxels[0] = 7; // a corner
    EXPECT_EQ((applied<Space>(sizes, voxels, lut, zero, unchange)), voxels);
}

// ---- against the definition

/// A table with hits of a density, in 3D of kernels that leave most voxels open.
void fillAtRandom(std::mt19937& random, MorphologicalLut2D& lut)
{
    std::vector<unsigned char> entries(512);
    unsigned int const share = 1 + static_cast<unsigned int>(random() % 7);
    for (auto& entry : entries) {
        entry = random() % 8 < share;
    }
    lut.buildFromLut(entries.data(), 512);
}

void fillAtRandom(std::mt19937& random, MorphologicalLut3D& lut)
{
    lut.reset();
    for (int i = 0; i < 3; ++i) {
        Vector<unsigned char> kernel(27);
        for (auto& value : kernel) {
            value = random() % 6 == 0 ? static_cast<unsigned char>(random() % 2) : 2;
        }
        lut.addKernel(kernel);
    }
}

template <class T>
std::vector<T> noise(std::mt19937& random, std::size_t count)
{
    std::vector<T> voxels(count);
    for (T& voxel : voxels) {
        voxel = static_cast<T>(random() % 2 == 0 ? 0 : 1 + random() % 3);
    }
    return voxels;
}

TYPED_TEST(ApplyMorphologicalLut, equalsItsDefinition)
{
    std::mt19937 random(3);
    typename TypeParam::Lut lut;
    Sizes const most = TypeParam::depth == 1 ? Sizes{7, 6, 5, 2, 2} : Sizes{15, 9, 2, 2, 2};
    for (int round = 0; round < 60; ++round) {
        if (round % 4 == 0) {
            fillAtRandom(random, lut);
        }
        Sizes const sizes = randomSizes(random, most);
        auto const voxels = noise<unsigned char>(random, sizes.numOfVoxels());
        int const matching = static_cast<int>(random() % 4);
        int const noMatching = static_cast<int>(random() % 4);
        ASSERT_EQ((applied<TypeParam>(sizes, voxels, lut, matching, noMatching)),
                  lutReference(sizes, voxels, lut, matching, noMatching, TypeParam::depth));
    }
}

// Sizes beyond a leaf and beyond what a kernel does at once; a table that settles soon.
TYPED_TEST(ApplyMorphologicalLut, equalsItsDefinitionOnLargerImages)
{
    std::mt19937 random(4);
    typename TypeParam::Lut lut;
    add(lut, TypeParam::depth == 1 ? "..........0..1...........1." : "..0.1..1.");
    for (std::size_t const threads : {1U, 4U}) {
        tbb::global_control const control(tbb::global_control::max_allowed_parallelism, threads);
        Sizes const sizes = TypeParam::depth == 1 ? Sizes{300, 25, 13, 1, 1} : Sizes{1300, 45, 1, 1, 1};
        auto const voxels = noise<unsigned char>(random, sizes.numOfVoxels());
        ASSERT_EQ((applied<TypeParam>(sizes, voxels, lut, zero, unchange)),
                  lutReference(sizes, voxels, lut, zero, unchange, TypeParam::depth));
    }
}

template <class T>
class ApplyMorphologicalLutOfType : public ::testing::Test {
};

using Types = ::testing::Types<unsigned char, unsigned short, unsigned int, uint64, signed char, short, int, int64,
                               float, double>;
TYPED_TEST_SUITE(ApplyMorphologicalLutOfType, Types);

template <class Dimensions, class T>
void expectReference(std::mt19937& random, typename Dimensions::Lut& lut)
{
    for (int round = 0; round < 8; ++round) {
        Sizes const sizes = randomSizes(random, {20, 12, 3, 1, 1});
        auto voxels = noise<T>(random, sizes.numOfVoxels());
        TestImage input;
        TestImage output;
        input.givesPointers = round % 2 == 0;
        output.givesPointers = round % 3 == 0;
        fill(input, sizes, voxels);
        run<Dimensions>(input, lut, zero, unchange, output);
        ASSERT_EQ(output.getVoxelType(), voxelTypeOf<T>);
        ASSERT_EQ(voxelsOf<T>(output), lutReference(sizes, voxels, lut, zero, unchange, Dimensions::depth));
    }
}

TYPED_TEST(ApplyMorphologicalLutOfType, equalsItsDefinition)
{
    std::mt19937 random(5);
    auto plane = lutOf({"..0.1..1.", "1...10..."});
    expectReference<Plane, TypeParam>(random, plane);
    MorphologicalLut3D space;
    add(space, "..........0..1...........1.");
    expectReference<Space, TypeParam>(random, space);
}

/// A voxel at the edge of an object that can be removed without parting or eating up the object, from one of four
/// sides: the classic pair of masks, turned by quarters.
std::vector<std::vector<std::string>> thinningKernels()
{
    return {
        {"000.1.111", ".00110.1."}, {"0.10110.1", ".1.110.00"}, {"111.1.000", ".1.01100."}, {"1.01101.0", "00.011.1."}};
}

// A sequence of tables, each applied once: a voxel of the result is 0 where the table has a hit.
TEST(ApplyMorphologicalLut2D, thinsARingToARing)
{
    Sizes const sizes{40, 40, 1, 1, 1};
    std::vector<unsigned char> voxels;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
            int const r = (x - 20) * (x - 20) + (y - 20) * (y - 20);
            voxels.push_back(r > 64 && r < 225 ? 1 : 0);
        }
    }
    auto const kernels = thinningKernels();
    std::vector<unsigned char> before;
    int rounds = 0;
    while (voxels != before) {
        ASSERT_LT(++rounds, 40);
        before = voxels;
        for (auto const& pair : kernels) {
            for (std::string const& kernel : pair) {
                auto lut = lutOf({kernel});
                auto const next = applied<Plane>(sizes, voxels, lut, zero, unchange);
                ASSERT_EQ(next, lutReference(sizes, voxels, lut, zero, unchange, 0));
                voxels = next;
            }
        }
    }
    auto const count = std::count(voxels.begin(), voxels.end(), 1);
    EXPECT_GT(count, 40);
    EXPECT_LT(count, 120);
}

// ---- run

TYPED_TEST(ApplyMorphologicalLut, worksInPlaceAndGivesTheShapeOfTheInput)
{
    std::mt19937 random(6);
    typename TypeParam::Lut lut;
    add(lut, TypeParam::depth == 1 ? "..........0..1...........1." : "..0.1..1.");
    Sizes const sizes{33, 21, 5, 1, 1};
    auto const voxels = noise<short>(random, sizes.numOfVoxels());
    auto const image = makeImage(sizes, voxels);
    image->setInterpretation(INTERPRETATION_BINARY);
    calibrate(*image);
    memory::InMemoryImage output;
    run<TypeParam>(*image, lut, zero, unchange, output);
    EXPECT_EQ(output.getInterpretation(), INTERPRETATION_BINARY);
    expectSameCalibration(output, *image);
    run<TypeParam>(*image, lut, zero, unchange, *image);
    EXPECT_EQ(voxelsOf<short>(*image), lutReference(sizes, voxels, lut, zero, unchange, TypeParam::depth));
    EXPECT_EQ(voxelsOf<short>(*image), voxelsOf<short>(output));
}

TYPED_TEST(ApplyMorphologicalLut, takesEmptyImages)
{
    typename TypeParam::Lut lut;
    lut.addKernel(Vector<unsigned char>(TypeParam::numOfVoxels));
    for (Sizes const& sizes : {Sizes{0, 3, 1, 1, 1}, Sizes{3, 0, 1, 1, 1}, Sizes{3, 3, 0, 1, 1}, Sizes()}) {
        EXPECT_TRUE((applied<TypeParam>(sizes, std::vector<float>(), lut, change, change)).empty());
    }
}

TYPED_TEST(ApplyMorphologicalLut, reportsProgressUpToTheEndAndCanBeCancelled)
{
    typename TypeParam::Lut lut;
    add(lut, TypeParam::depth == 1 ? "............1.............." : "...1....."); // wanders to the right
    Sizes const sizes{400, 300, 1, 1, 1};
    std::vector<unsigned char> voxels(sizes.numOfVoxels(), 0);
    voxels[350] = 1;
    TestImage input;
    input.beforeRowOperation = [] { std::this_thread::sleep_for(std::chrono::milliseconds(1)); };
    fill(input, sizes, voxels);
    auto const output = makeImage(sizes, std::vector<unsigned char>(voxels.size(), 9));
    auto const algorithm = TypeParam::Algorithm::New();
    algorithm->input = &input;
    algorithm->morphologicalLut = &lut;
    algorithm->output = output.get();
    RecordingInteraction cancelling;
    cancelling.cancelAtPoll = 1;
    algorithm->run(&cancelling);
    EXPECT_THAT(voxelsOf<unsigned char>(*output), Each(9));
    input.beforeRowOperation = [] {};
    RecordingInteraction recording;
    algorithm->run(&recording);
    EXPECT_EQ(recording.notified.back(), 100.0);
    EXPECT_THAT(voxelsOf<unsigned char>(*output), Each(0)); // out of the image in 50 passes
}

TYPED_TEST(ApplyMorphologicalLut, canBeCancelledWhileItsInputIsCopied)
{
    typename TypeParam::Lut lut;
    lut.addKernel(Vector<unsigned char>(TypeParam::numOfVoxels));
    auto const algorithm = TypeParam::Algorithm::New();
    TestImage input;
    fill(input, {4, 50, 1, 1, 1}, std::vector<unsigned char>(200, 5));
    auto const output = makeImage({4, 50, 1, 1, 1}, std::vector<unsigned char>(200, 9));
    int const before = input.numOfRowOperations();
    input.beforeRowOperation = [&] { algorithm->cancelExecution(); };
    algorithm->input = &input;
    algorithm->morphologicalLut = &lut;
    algorithm->output = output.get();
    algorithm->run();
    EXPECT_LE(input.numOfRowOperations() - before, 2); // a view asks for the first row
    EXPECT_THAT(voxelsOf<unsigned char>(*output), Each(9));
}

TYPED_TEST(ApplyMorphologicalLut, canBeCancelledBetweenPasses)
{
    typename TypeParam::Lut lut;
    add(lut, TypeParam::depth == 1 ? "............1.............." : "...1.....");
    Sizes const sizes{100000, 20, 1, 1, 1}; // as many passes as columns
    std::vector<unsigned char> voxels(sizes.numOfVoxels(), 0);
    voxels[0] = 1;
    auto const image = makeImage(sizes, voxels);
    auto const algorithm = TypeParam::Algorithm::New();
    algorithm->input = image.get();
    algorithm->morphologicalLut = &lut;
    algorithm->output = image.get();
    RecordingInteraction cancelling;
    cancelling.cancelAtPoll = 10;
    auto const begin = std::chrono::steady_clock::now();
    algorithm->run(&cancelling);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10)); // minutes otherwise
    EXPECT_EQ(voxelsOf<unsigned char>(*image), voxels);
}

// As it would be beside another voxel that does change.
TYPED_TEST(ApplyMorphologicalLut, writesAZeroWithoutASignWhereNothingElseChanges)
{
    typename TypeParam::Lut lut;
    lut.addKernel(Vector<unsigned char>(TypeParam::numOfVoxels));
    Sizes const sizes{5, 1, 1, 1, 1};
    for (float const voxel : applied<TypeParam>(sizes, std::vector<float>(5, -0.0F), lut, zero, zero)) {
        EXPECT_TRUE(voxel == 0 && !std::signbit(voxel));
    }
}

TYPED_TEST(ApplyMorphologicalLut, leavesTheOutputAloneWhenARowFails)
{
    typename TypeParam::Lut lut;
    lut.addKernel(Vector<unsigned char>(TypeParam::numOfVoxels));
    TestImage input;
    fill(input, {4, 4, 1, 1, 1}, std::vector<unsigned char>(16, 5));
    auto const output = makeImage({4, 4, 1, 1, 1}, std::vector<unsigned char>(16, 9));
    input.failAt(3, TestImage::Fault::returnsFalse);
    EXPECT_THROW((run<TypeParam>(input, lut, change, change, *output)), UnexpectedError);
    EXPECT_THAT(voxelsOf<unsigned char>(*output), Each(9));
    run<TypeParam>(input, lut, zero, zero, *output);
    EXPECT_THAT(voxelsOf<unsigned char>(*output), Each(0));
}

} // namespace

} // namespace mox::testing
