#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <optional>
#include <thread>

#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"

// The program itself, as a shell starts it.

namespace moxel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

/// The program under way; its output and errors go to files in the folder of the test.
class Program {
public:
    Program(std::filesystem::path const& words, std::vector<std::string> const& arguments)
    {
        std::vector<char*> pointers = {const_cast<char*>(MOXEL_PROGRAM)};
        for (std::string const& argument : arguments) {
            pointers.push_back(const_cast<char*>(argument.c_str()));
        }
        pointers.push_back(nullptr);
        int const file = ::open(words.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
        process_ = ::fork();
        if (process_ == 0) {
            ::dup2(file, STDOUT_FILENO);
            ::dup2(file, STDERR_FILENO);
            ::execv(MOXEL_PROGRAM, pointers.data());
            ::_exit(127);
        }
        ::close(file);
    }

    void signal(int number) const { ::kill(process_, number); }

    /// The exit code, or minus the number of the signal that killed it; nothing while it runs.
    std::optional<int> poll()
    {
        int status = 0;
        if (!code_ && ::waitpid(process_, &status, WNOHANG) == process_) {
            code_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
        }
        return code_;
    }

    int wait()
    {
        while (!poll()) {
            std::this_thread::sleep_for(1ms);
        }
        return *code_;
    }

private:
    pid_t process_ = -1;
    std::optional<int> code_;
};

class ProgramTest : public ::testing::Test {
protected:
    std::string path(std::string const& name) const { return (folder_ / name).string(); }

    std::string words() const
    {
        Bytes const bytes = readBytes(words_ / "words");
        return {bytes.begin(), bytes.end()};
    }

    Program start(std::vector<std::string> const& arguments) const { return Program(words_ / "words", arguments); }

    int run(std::vector<std::string> const& arguments) const { return start(arguments).wait(); }

    /// Noise that takes long to deflate.
    void writeNoise(Sizes const& sizes) const
    {
        mox::memory::InMemoryImage image;
        fill(image, sizes, randomVoxels<std::uint8_t>(sizes));
        writeImage(image, folder_ / "in.tif", ImageFormat::tiff, Compression::none);
    }

    std::vector<std::string> threshold(std::string const& output) const
    {
        return {"run", "Threshold", "input=" + path("in.tif"), "lowLevel=128", "output=" + path(output)};
    }

    Folder folder_;
    Folder words_;
};

TEST_F(ProgramTest, EndsWithItsCodes)
{
    writeNoise({8, 8, 1, 1, 1});
    EXPECT_EQ(run(threshold("out.tif")), 0);
    EXPECT_THAT(words(), IsEmpty());
    EXPECT_EQ(run({"run", "Threshold"}), 1);
    EXPECT_THAT(words(), HasSubstr("Rule exception :"));
    EXPECT_EQ(run({"info", path("missing.tif")}), 1);
    EXPECT_EQ(run({"run", "Treshold"}), 2);
    EXPECT_THAT(words(), HasSubstr("did you mean Threshold?"));
    EXPECT_EQ(run({}), 2);
    EXPECT_THAT(folder_.names(), ElementsAre("in.tif", "out.tif"));
}

TEST_F(ProgramTest, ThresholdsAsTheDefinitionSays)
{
    writeNoise({31, 17, 3, 1, 1});
    ASSERT_EQ(run(threshold("out.tif")), 0);
    auto const in = voxelsOf<std::uint8_t>(*readImage(folder_ / "in.tif", {}));
    auto const out = voxelsOf<std::uint8_t>(*readImage(folder_ / "out.tif", {}));
    ASSERT_EQ(in.size(), out.size());
    for (std::size_t i = 0; i < in.size(); ++i) {
        ASSERT_EQ(out[i], in[i] >= 128 ? 1 : 0);
    }
}

/// Waits until the program has a file of its own beside the others.
bool waitForTemporary(Program& program, Folder const& folder, std::size_t names)
{
    while (!program.poll()) {
        if (folder.names().size() > names) {
            return true;
        }
        std::this_thread::sleep_for(1ms);
    }
    return false;
}

TEST_F(ProgramTest, LeavesNothingWhenStoppedWhileWriting)
{
    std::signal(SIGHUP, SIG_DFL); // passed on to the program
    writeNoise({5000, 4000, 1, 1, 1});
    writeBytes(folder_ / "out.tif", {1, 2, 3});
    for (int const number : {SIGINT, SIGTERM, SIGHUP}) {
        Program program = start(threshold("out.tif"));
        ASSERT_TRUE(waitForTemporary(program, folder_, 2));
        program.signal(number);
        program.signal(SIGINT);
        EXPECT_EQ(program.wait(), 130);
        EXPECT_THAT(words(), HasSubstr("cancelled"));
        EXPECT_THAT(folder_.names(), ElementsAre("in.tif", "out.tif"));
        EXPECT_EQ(readBytes(folder_ / "out.tif"), (Bytes{1, 2, 3}));
    }
}

TEST_F(ProgramTest, IsWholeOrLeavesNothingWhenStoppedAtAnyTime)
{
    writeNoise({1000, 1000, 8, 1, 1});
    ASSERT_EQ(run(threshold("whole.tif")), 0);
    Bytes const whole = readBytes(folder_ / "whole.tif");
    for (auto delay = 20ms; delay < 1500ms; delay = delay * 3 / 2) {
        std::filesystem::remove(folder_ / "out.tif");
        Program program = start(threshold("out.tif"));
        std::this_thread::sleep_for(delay);
        program.signal(SIGINT);
        int const code = program.wait();
        bool const isWhole = std::filesystem::exists(folder_ / "out.tif");
        EXPECT_TRUE(isWhole ? code == 0 : code == 130 || code == -SIGINT) << code; // the signal kills a program that
        EXPECT_EQ(folder_.names().size(), isWhole ? 3U : 2U);                      // has not begun
        if (isWhole) {
            EXPECT_EQ(readBytes(folder_ / "out.tif"), whole);
        }
    }
}

TEST_F(ProgramTest, LeavesNothingWhenThereIsNoRoom)
{
    writeNoise({1000, 1000, 1, 1, 1});
    for (std::string const extension : {"tif", "png"}) {
        std::string const command =
            "trap '' XFSZ; ulimit -f 16; exec " MOXEL_PROGRAM " run Threshold lowLevel=128 input=" + path("in.tif") +
            " output=" + path("out.") + extension + " >" + (words_ / "words").string() + " 2>&1";
        int const status = std::system(command.c_str());
        EXPECT_EQ(WEXITSTATUS(status), 1);
        EXPECT_THAT(words(), HasSubstr("cannot write"));
        EXPECT_THAT(folder_.names(), ElementsAre("in.tif"));
    }
}

} // namespace
} // namespace moxel::testing
