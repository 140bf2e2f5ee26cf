#include "Core/private/runners.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "Core/private/Cpu.h"
#include "Core/private/declare.h"
#include "testing/Images.h"
#include "testing/TestAlgorithm.h"
#include "testing/lineless.h"

namespace mox::testing {

namespace {

/// An algorithm of one image type with runners of two levels that note the type and level they ran.
class OneTypeAlgorithm final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(OneTypeAlgorithm)

    Property<ImageModel const*> input;
    Property<ImageModel*> output;

    std::optional<VoxelTypes> typeRun;
    std::optional<OptimLevelType::Value> levelRun;
};

MOX_DEFINE_ALGORITHM(OneTypeAlgorithm)

void OneTypeAlgorithm::init()
{
    declareInput(input, "input", nullptr);
    declareOutput(output, "output", nullptr);
}

AlgoBorderInfluence OneTypeAlgorithm::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

template <OptimLevelType::Value level>
struct NotingDispatcher {
    template <class T>
    static void run(OneTypeAlgorithm& algorithm)
    {
        algorithm.typeRun = voxelTypeOf<T>;
        algorithm.levelRun = level;
    }
};

using ScalarOneTypeAlgorithmRunner =
    ScalarOneTypeRunner<OneTypeAlgorithm, NotingDispatcher<OptimLevelType::SCALAR>, RealVoxels>;
using SSE41OneTypeAlgorithmRunner =
    SSE41OneTypeMinMaxRunner<OneTypeAlgorithm, NotingDispatcher<OptimLevelType::VEC_SSE>>;

RunnerRegistration<OneTypeAlgorithm, ScalarOneTypeAlgorithmRunner, SSE41OneTypeAlgorithmRunner> const registration;

/// A class without a runner.
class IdleAlgorithm final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(IdleAlgorithm)
};

MOX_DEFINE_ALGORITHM(IdleAlgorithm)

void IdleAlgorithm::init() {}

AlgoBorderInfluence IdleAlgorithm::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

bool isSse41Machine()
{
    return devices::Cpu::get().sseLevel >= devices::sse41;
}

bool isSseType(VoxelTypes type)
{
    return type <= MOX_FLOAT64 && type != MOX_UINT64 && type != MOX_INT64;
}

class Runners : public ::testing::Test {
protected:
    void setTypes(VoxelTypes inputType, VoxelTypes outputType)
    {
        access::allocate(input, inputType, {1, 1, 1, 1, 1});
        access::allocate(output, outputType, {1, 1, 1, 1, 1});
        algorithm->input = &input;
        algorithm->output = &output;
    }

    memory::InMemoryImage input;
    memory::InMemoryImage output;
    boost::shared_ptr<OneTypeAlgorithm> const algorithm = OneTypeAlgorithm::New();
    ScalarOneTypeAlgorithmRunner scalar;
    SSE41OneTypeAlgorithmRunner sse;
};

TEST_F(Runners, tellTheirLevels)
{
    EXPECT_EQ(scalar.getOptimLevel(), OptimLevelType::SCALAR);
    EXPECT_EQ(sse.getOptimLevel(), OptimLevelType::VEC_SSE);
}

TEST_F(Runners, canAlwaysRunScalar)
{
    EXPECT_TRUE(scalar.canRun(algorithm.get()));
    setTypes(MOX_INT64, MOX_UINT8);
    EXPECT_TRUE(scalar.canRun(algorithm.get()));
}

TEST_F(Runners, canRunVectorsOfEightTypesWhereTheProcessorHasThem)
{
    for (int value = MOX_UINT8; value <= MOX_COMPLEX_FLOAT64; ++value) {
        auto const type = static_cast<VoxelTypes>(value);
        setTypes(type, type);
        EXPECT_EQ(sse.canRun(algorithm.get()), isSse41Machine() && isSseType(type)) << value;
    }
}

TEST_F(Runners, cannotRunVectorsOfTwoTypes)
{
    setTypes(MOX_UINT8, MOX_UINT16);
    EXPECT_FALSE(sse.canRun(algorithm.get()));
    setTypes(MOX_INT8, MOX_UINT8);
    EXPECT_FALSE(sse.canRun(algorithm.get()));
}

TEST_F(Runners, dispatchOnTheTypeOfTheInput)
{
    for (int value = MOX_UINT8; value <= MOX_FLOAT64; ++value) {
        auto const type = static_cast<VoxelTypes>(value);
        setTypes(type, MOX_UINT8);
        scalar.run(algorithm.get());
        EXPECT_EQ(algorithm->typeRun, type);
        EXPECT_EQ(algorithm->levelRun, OptimLevelType::SCALAR);
    }
}

TEST_F(Runners, doNothingForTypesThatAreNotInTheList)
{
    setTypes(MOX_COMPLEX_FLOAT32, MOX_COMPLEX_FLOAT32);
    scalar.run(algorithm.get());
    sse.run(algorithm.get());
    EXPECT_EQ(algorithm->typeRun, std::nullopt);
    setTypes(MOX_INT64, MOX_INT64);
    sse.run(algorithm.get());
    EXPECT_EQ(algorithm->typeRun, std::nullopt);
}

TEST_F(Runners, refuseAnotherClass)
{
    auto const other = TestAlgorithm::New();
    auto const failsWithBadCast = [&](auto const& call) {
        try {
            call();
        } catch (UnexpectedError const& error) {
            return std::string(error.getInfo().c_str())
                .starts_with("#1 Error : bad cast when casting "
                             "mox::BaseAlgorithm into mox::testing::");
        }
        return false;
    };
    EXPECT_TRUE(failsWithBadCast([&] { scalar.run(other.get()); }));
    EXPECT_TRUE(failsWithBadCast([&] { sse.run(other.get()); }));
    EXPECT_TRUE(failsWithBadCast([&] { sse.canRun(other.get()); }));
}

TEST_F(Runners, areChosenFromTheTopByDefault)
{
    setTypes(MOX_INT16, MOX_INT16);
    algorithm->run();
    EXPECT_EQ(algorithm->typeRun, MOX_INT16);
    EXPECT_EQ(algorithm->levelRun, isSse41Machine() ? OptimLevelType::VEC_SSE : OptimLevelType::SCALAR);
}

TEST_F(Runners, passTheTurnToTheNextLevelWhereTheyCannotRun)
{
    setTypes(MOX_INT64, MOX_INT64);
    algorithm->run();
    EXPECT_EQ(algorithm->typeRun, MOX_INT64);
    EXPECT_EQ(algorithm->levelRun, OptimLevelType::SCALAR);
    setTypes(MOX_UINT8, MOX_UINT16);
    algorithm->run();
    EXPECT_EQ(algorithm->typeRun, MOX_UINT8);
    EXPECT_EQ(algorithm->levelRun, OptimLevelType::SCALAR);
}

TEST_F(Runners, areChosenByTheCallerOnceTheAutomaticChoiceIsOff)
{
    setTypes(MOX_INT16, MOX_INT16);
    algorithm->setOptimLevel(OptimLevelType::SCALAR);
    algorithm->run();
    EXPECT_EQ(algorithm->levelRun, isSse41Machine() ? OptimLevelType::VEC_SSE : OptimLevelType::SCALAR)
        << "the level has no effect while the choice is automatic";
    algorithm->setAutoCpuDispatch(false);
    algorithm->run();
    EXPECT_EQ(algorithm->levelRun, OptimLevelType::SCALAR);
}

std::string noRunnerFor(char const* className)
{
    return std::string("Unexpected error :\n"
                       "#1 Error : no runner found for algorithm \n"
                       "    (at \"BaseAlgorithm\", line N) \n"
                       "#2 From ") +
           className + " of Moxelcore library \n";
}

std::string failureOf(BaseAlgorithm& algorithm)
{
    try {
        algorithm.run();
    } catch (UnexpectedError const& error) {
        return lineless(error.what());
    }
    return "nothing was thrown";
}

TEST_F(Runners, areNotFoundAtALevelThatHasNone)
{
    setTypes(MOX_INT16, MOX_INT16);
    algorithm->setAutoCpuDispatch(false);
    for (OptimLevelType const level : {OptimLevelType::VEC_AVX, OptimLevelType::GPU}) {
        algorithm->setOptimLevel(level);
        EXPECT_FALSE(algorithm->isOptimLevelSupported(level));
        EXPECT_EQ(failureOf(*algorithm), noRunnerFor("OneTypeAlgorithm"));
    }
    EXPECT_EQ(algorithm->typeRun, std::nullopt);
    EXPECT_FALSE(algorithm->running());
    EXPECT_FALSE(algorithm->input.isLocked());
    algorithm->setAutoCpuDispatch(true);
    EXPECT_NO_THROW(algorithm->run());
}

TEST_F(Runners, areNotFoundWhereTheOnlyOneOfTheLevelCannotRun)
{
    setTypes(MOX_INT64, MOX_INT64);
    algorithm->setAutoCpuDispatch(false);
    algorithm->setOptimLevel(OptimLevelType::VEC_SSE);
    EXPECT_EQ(failureOf(*algorithm), noRunnerFor("OneTypeAlgorithm"));
}

TEST_F(Runners, areReportedWhetherTheyCanRunOrNot)
{
    EXPECT_TRUE(algorithm->isOptimLevelSupported(OptimLevelType::SCALAR));
    EXPECT_TRUE(algorithm->isOptimLevelSupported(OptimLevelType::VEC_SSE));
    EXPECT_FALSE(algorithm->isOptimLevelSupported(OptimLevelType::VEC_AVX));
    EXPECT_EQ(algorithm->getMostPerformantAvailableOptimLevel(), OptimLevelType::VEC_SSE);
}

TEST(RunnersOfAScalarClass, areReported)
{
    auto const algorithm = TestAlgorithm::New();
    EXPECT_TRUE(algorithm->isOptimLevelSupported(OptimLevelType::SCALAR));
    EXPECT_FALSE(algorithm->isOptimLevelSupported(OptimLevelType::VEC_SSE));
    EXPECT_FALSE(algorithm->isOptimLevelSupported(static_cast<OptimLevelType::Value>(-1)));
    EXPECT_EQ(algorithm->getMostPerformantAvailableOptimLevel(), OptimLevelType::SCALAR);
}

TEST(RunnersOfAClassWithoutAny, areNotFound)
{
    auto const algorithm = IdleAlgorithm::New();
    EXPECT_EQ(static_cast<int>(algorithm->getMostPerformantAvailableOptimLevel()), -1);
    for (OptimLevelType const level :
         {OptimLevelType::SCALAR, OptimLevelType::VEC_SSE, OptimLevelType::VEC_AVX, OptimLevelType::GPU}) {
        EXPECT_FALSE(algorithm->isOptimLevelSupported(level));
    }
    EXPECT_EQ(failureOf(*algorithm), noRunnerFor("IdleAlgorithm"));
    algorithm->setAutoCpuDispatch(false);
    EXPECT_EQ(failureOf(*algorithm), noRunnerFor("IdleAlgorithm"));
}

} // namespace

} // namespace mox::testing
