#include "apps/moxel/RunCommand.h"

#include <Moxelcore/Core/AbstractPrivateImplementation.h>
#include <Moxelcore/Core/Exception.h>

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <sstream>
#include <thread>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/Json.h"
#include "testing/host/HostAlgorithm.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class RunCommand : public ::testing::Test {
protected:
    RunCommand()
    {
        mox::memory::InMemoryImage image;
        fill<std::uint8_t>(image, {2, 1, 1, 1, 1}, {3, 4});
        image.setCalibrationStep(mox::COLUMNS, 0.5);
        image.setUnit("mm");
        image.setInterpretation(mox::INTERPRETATION_LABEL);
        writeImage(image, folder_ / "in.tif", ImageFormat::tiff, Compression::none);
    }
    ~RunCommand() override { interrupt::watch(); }

    std::string file(std::string const& property, std::string const& name) const
    {
        return property + '=' + (folder_ / name).string();
    }

    std::string run(RunOptions const& options)
    {
        std::ostringstream out;
        runAlgorithm(algorithm_, options, out);
        return out.str();
    }

    std::string usageErrorOf(RunOptions const& options)
    {
        try {
            run(options);
            return "none";
        } catch (UsageError const& error) {
            return error.what();
        }
    }

    static void copyInput(HostAlgorithm& algorithm)
    {
        mox::ImageModel const& input = *algorithm.input.get();
        fill(*algorithm.output.get(), sizesOf(input), voxelsOf<std::uint8_t>(input));
        algorithm.output.get()->setCalibrationStep(mox::COLUMNS, input.getCalibrationStep(mox::COLUMNS));
    }

    Folder folder_;
    boost::shared_ptr<HostAlgorithm> algorithm_ = HostAlgorithm::New();
};

TEST_F(RunCommand, SetsReadsRunsAndWrites)
{
    algorithm_->work = [](HostAlgorithm& algorithm) {
        EXPECT_EQ(algorithm.count.get(), 5);
        EXPECT_EQ(algorithm.points.get()->size(), 2U);
        EXPECT_EQ(algorithm.input.get()->getInterpretation(), mox::INTERPRETATION_LABEL);
        copyInput(algorithm);
    };
    run({.values = {"count=5", "points=1:2,3:4", file("input", "in.tif"), file("output", "out.tif")}});
    auto const result = readImage(folder_ / "out.tif", {});
    EXPECT_EQ(voxelsOf<std::uint8_t>(*result), (Bytes{3, 4}));
    EXPECT_THAT(folder_.names(), ElementsAre("in.tif", "out.tif"));
}

TEST_F(RunCommand, CarriesTheUnitOfTheSteps)
{
    algorithm_->work = copyInput;
    run({.values = {file("input", "in.tif"), file("output", "out.tif")}});
    EXPECT_STREQ(readImage(folder_ / "out.tif", {})->getUnit().c_str(), "mm");
    algorithm_->work = [](HostAlgorithm& algorithm) {
        copyInput(algorithm);
        algorithm.output.get()->setCalibrationStep(mox::COLUMNS, 2);
    };
    run({.values = {file("input", "in.tif"), file("output", "out.tif")}});
    EXPECT_STREQ(readImage(folder_ / "out.tif", {})->getUnit().c_str(), "");
}

TEST_F(RunCommand, WritesOverItsInput)
{
    algorithm_->work = [](HostAlgorithm& algorithm) {
        fill<std::uint8_t>(*algorithm.output.get(), {1, 1, 1, 1, 1}, {77});
    };
    run({.values = {file("input", "in.tif"), file("output", "in.tif")}});
    EXPECT_EQ(voxelsOf<std::uint8_t>(*readImage(folder_ / "in.tif", {})), (Bytes{77}));
}

TEST_F(RunCommand, PrintsResults)
{
    algorithm_->work = [](HostAlgorithm& algorithm) {
        setMean(algorithm, 0.1);
        algorithm.extrema.get()->push_back({1, 2.5});
    };
    EXPECT_EQ(run({}), "mean = 0.1\nextrema = 1:2.5\nmoments = 1:0,0:1\n");
    EXPECT_EQ(Json::parse(run({.form = OutputForm::json})),
              Json::parse(R"({"mean": 0.1, "extrema": [[1.0, 2.5]], "moments": [[1.0, 0.0], [0.0, 1.0]]})"));
}

TEST_F(RunCommand, DeclaresTypesAndInterpretations)
{
    algorithm_->work = [](HostAlgorithm& algorithm) {
        EXPECT_EQ(algorithm.output.get()->getVoxelType(), mox::MOX_UINT32);
        EXPECT_EQ(algorithm.second.get()->getVoxelType(), mox::MOX_UINT8);
        EXPECT_EQ(algorithm.input.get()->getInterpretation(), mox::INTERPRETATION_BINARY);
        EXPECT_EQ(algorithm.input.get()->getSize(mox::TIME_SERIES), 1U);
        fill<std::uint8_t>(*algorithm.output.get(), {1, 1, 1, 1, 1}, {1});
        fill<std::uint8_t>(*algorithm.second.get(), {1, 1, 1, 1, 1}, {2});
    };
    run({.values = {file("input", "in.tif"), file("output", "a.tif"), file("second", "b.tif")},
         .voxelTypes = {"output=uint32"},
         .interpretations = {"input=binary"},
         .pages = {"input=time"}});
    EXPECT_THAT(folder_.names(), ElementsAre("a.tif", "b.tif", "in.tif"));
}

TEST_F(RunCommand, SetsTheLibrary)
{
    algorithm_->work = [](HostAlgorithm& algorithm) { EXPECT_EQ(algorithm.getMaximumExtraMemoryUsage(), 12); };
    run({.level = "scalar", .threads = 1, .extraMemory = 12});
    EXPECT_THAT(usageErrorOf({.level = "sse"}), HasSubstr("has no level \"sse\""));
    EXPECT_THAT(usageErrorOf({.level = "scaler"}), HasSubstr("did you mean scalar?"));
}

TEST_F(RunCommand, RefusesWrongWords)
{
    EXPECT_THAT(usageErrorOf({.values = {"cuont=1"}}), HasSubstr("did you mean count?"));
    EXPECT_THAT(usageErrorOf({.values = {"count"}}), HasSubstr("name=value"));
    EXPECT_THAT(usageErrorOf({.values = {"=1"}}), HasSubstr("name=value"));
    EXPECT_THAT(usageErrorOf({.values = {"count=1", "count=2"}}), HasSubstr("given twice"));
    EXPECT_THAT(usageErrorOf({.values = {"count=1.5"}}), HasSubstr("count: \"1.5\" is no number of type int32"));
    EXPECT_THAT(usageErrorOf({.values = {"mode=MEDIUM"}}), HasSubstr("no DecimationOp"));
    EXPECT_THAT(usageErrorOf({.values = {"mean=1"}}), HasSubstr("is a result"));
    EXPECT_THAT(usageErrorOf({.values = {"transform=1"}}), HasSubstr("has no text form"));
    EXPECT_THAT(usageErrorOf({.values = {"output=a.jpg"}}), HasSubstr(".png, .tif and .tiff"));
    EXPECT_THAT(usageErrorOf({.values = {file("output", "a.tif"), file("second", "./a.tif")}}),
                HasSubstr("two results"));
}

TEST_F(RunCommand, RefusesOptionsForOtherProperties)
{
    std::vector<std::string> const images = {file("input", "in.tif"), file("output", "a.tif")};
    EXPECT_THAT(usageErrorOf({.values = images, .voxelTypes = {"input=uint8"}}), HasSubstr("--type"));
    EXPECT_THAT(usageErrorOf({.values = images, .voxelTypes = {"second=uint8"}}), HasSubstr("--type"));
    EXPECT_THAT(usageErrorOf({.values = images, .voxelTypes = {"output=uint9"}}), HasSubstr("did you mean uint8"));
    EXPECT_THAT(usageErrorOf({.values = images, .interpretations = {"output=binary"}}), HasSubstr("--interpretation"));
    EXPECT_THAT(usageErrorOf({.values = images, .interpretations = {"input=labels"}}),
                HasSubstr("did you mean label?"));
    EXPECT_THAT(usageErrorOf({.values = images, .pages = {"input=times"}}), HasSubstr("did you mean time?"));
}

TEST_F(RunCommand, ChecksTheOutputBeforeTheRun)
{
    bool hasRun = false;
    algorithm_->work = [&](HostAlgorithm&) { hasRun = true; };
    EXPECT_THROW(run({.values = {file("output", "missing/a.tif")}}), FileError);
    EXPECT_THROW(run({.values = {file("input", "missing.tif")}}), FileError);
    EXPECT_FALSE(hasRun);
}

TEST_F(RunCommand, ChecksThatTheResultFitsItsFileBeforeTheRun)
{
    mox::memory::InMemoryImage volume;
    fill<std::uint8_t>(volume, {1, 1, 2, 1, 1}, {3, 4});
    writeImage(volume, folder_ / "in.tif", ImageFormat::tiff, Compression::none);
    bool hasRun = false;
    algorithm_->work = [&](HostAlgorithm&) { hasRun = true; };
    EXPECT_THROW(run({.values = {file("input", "in.tif"), file("output", "out.png")}}), FileError);
    EXPECT_FALSE(hasRun);
}

TEST_F(RunCommand, LeavesNothingWhenTheRunFails)
{
    writeBytes(folder_ / "out.tif", {1});
    algorithm_->work = [](HostAlgorithm& algorithm) {
        copyInput(algorithm);
        throw std::runtime_error("broken");
    };
    EXPECT_THROW(run({.values = {file("input", "in.tif"), file("output", "out.tif")}}), mox::UnexpectedError);
    EXPECT_EQ(readBytes(folder_ / "out.tif"), (Bytes{1}));
    EXPECT_THAT(folder_.names(), ElementsAre("in.tif", "out.tif"));
}

TEST_F(RunCommand, LeavesNothingWhenOneOfTwoResultsHasNoForm)
{
    algorithm_->work = [](HostAlgorithm& algorithm) {
        copyInput(algorithm);
        fill<float>(*algorithm.second.get(), {1, 1, 1, 1, 1}, {1});
    };
    EXPECT_THROW(run({.values = {file("input", "in.tif"), file("output", "out.tif"), file("second", "second.png")}}),
                 FileError);
    EXPECT_THAT(folder_.names(), ElementsAre("in.tif"));
}

/// Work without end, but for cancelling.
class EndlessWork final : public mox::algorithms::AbstractPrivateImplementation {
public:
    using AbstractPrivateImplementation::AbstractPrivateImplementation;
    ~EndlessWork() override { detach(); }

    bool cancelExecution() override { return AbstractPrivateImplementation::cancelExecution(); }

    /// False when nobody cancelled it.
    bool waitForCancel() const
    {
        auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!isExecutionCancelled() && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return isExecutionCancelled();
    }
};

TEST_F(RunCommand, StopsAtASignal)
{
    writeBytes(folder_ / "out.tif", {1});
    interrupt::watch();
    bool wasCancelled = false;
    algorithm_->work = [&](HostAlgorithm& algorithm) {
        EndlessWork const work(&algorithm);
        std::raise(SIGINT);
        wasCancelled = work.waitForCancel();
        std::raise(SIGINT); // once more, while the run ends
    };
    EXPECT_THROW(run({.values = {file("input", "in.tif"), file("output", "out.tif")}}), Cancelled);
    EXPECT_TRUE(wasCancelled);
    EXPECT_EQ(readBytes(folder_ / "out.tif"), (Bytes{1}));
    EXPECT_THAT(folder_.names(), ElementsAre("in.tif", "out.tif"));
}

TEST_F(RunCommand, PrintsNothingWhenStopped)
{
    interrupt::watch();
    algorithm_->work = [](HostAlgorithm&) { std::raise(SIGINT); };
    std::ostringstream out;
    EXPECT_THROW(runAlgorithm(algorithm_, {}, out), Cancelled);
    EXPECT_EQ(out.str(), "");
}

} // namespace
} // namespace moxel::testing
