#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/Exception.h>

#include <gmock/gmock.h>

#include <sys/resource.h>

#include <sstream>
#include <utility>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/RunCommand.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Model = mox::classification::TextureClassificationModel;

/// Vertical stripes on the left of an image, horizontal ones on the right; a mask of both.
class ModelFile : public ::testing::Test {
protected:
    ModelFile()
    {
        std::vector<std::uint8_t> voxels;
        std::vector<std::uint8_t> labels;
        for (unsigned int y = 0; y < rows; ++y) {
            for (unsigned int x = 0; x < columns; ++x) {
                unsigned int const wave = (2 * x < columns ? x : y) / 2 % 2;
                voxels.push_back(static_cast<std::uint8_t>(40 + 100 * wave + (3 * x + 5 * y) % 7));
                labels.push_back(2 * x < columns ? 1 : 2);
            }
        }
        write(voxels, "in.png");
        write(labels, "mask.png");
    }

    void write(std::vector<std::uint8_t> const& voxels, std::string const& name)
    {
        mox::memory::InMemoryImage image;
        fill(image, {columns, rows, 1, 1, 1}, voxels);
        writeImage(image, folder_ / name, ImageFormat::png, Compression::none);
    }

    std::string file(std::string const& property, std::string const& name) const
    {
        return property + '=' + (folder_ / name).string();
    }

    void run(char const* algorithm, RunOptions const& options)
    {
        std::ostringstream out;
        runAlgorithm(mox::AlgoInfo::fromName(algorithm).createInstance(), options, out);
        EXPECT_EQ(out.str(), "");
    }

    void create(std::string const& name)
    {
        run("CreateTextureClassification2D",
            {.values = {"radius=2", "textureFeaturesGroup=COOC_Contrast,HISTO_Mean,5", "directionCollection=1:0,0:1",
                        file("classificationModel", name)}});
    }

    void train(std::string const& name, std::string const& mask = "mask.png")
    {
        run("TextureTraining2D",
            {.values = {file("input", "in.png"), file("mask", mask), file("classificationModel", name)},
             .interpretations = {"mask=label"}});
    }

    static constexpr unsigned int columns = 40;
    static constexpr unsigned int rows = 24;
    Folder folder_;
};

TEST_F(ModelFile, GoesTheWholeWay)
{
    create("model.mox");
    train("model.mox");
    run("ApplyClassification", {.values = {file("input", "in.png"), file("classificationModel", "model.mox"),
                                           file("classifiedImage", "labels.png")}});
    EXPECT_THAT(folder_.names(), ElementsAre("in.png", "labels.png", "mask.png", "model.mox"));
    auto const labels = voxelsOf<std::uint8_t>(*readImage(folder_ / "labels.png", {}));
    auto const wanted = voxelsOf<std::uint8_t>(*readImage(folder_ / "mask.png", {}));
    int right = 0;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        right += labels[i] == wanted[i];
    }
    EXPECT_GT(right, static_cast<int>(columns * rows * 9 / 10));
}

TEST_F(ModelFile, HasTheFormOfItsExtension)
{
    create("model.mox");
    auto const formOf = [&](std::string const& name) {
        run("ReadTextureClassificationModel", {.values = {"pathClassificationFile=" + (folder_ / "model.mox").string(),
                                                          file("newClassification", name)}});
        auto const bytes = readBytes(folder_ / name);
        Model model;
        model.read((folder_ / name).c_str());
        return std::string(bytes.begin(), bytes.begin() + 4);
    };
    EXPECT_EQ(formOf("a.XML"), "<?xm");
    EXPECT_EQ(formOf("a.txt"), "22 s");
    EXPECT_EQ(formOf("a"), "MOXO");
}

TEST_F(ModelFile, StaysAsItIsWhenTheTrainingFails)
{
    create("model.mox");
    auto const before = readBytes(folder_ / "model.mox");
    write(std::vector<std::uint8_t>(std::size_t{columns} * rows, 3), "wrong.png"); // there is no third class
    EXPECT_THROW(train("model.mox", "wrong.png"), mox::BadIndex);
    EXPECT_EQ(readBytes(folder_ / "model.mox"), before);
    train("model.mox");
    EXPECT_NE(readBytes(folder_ / "model.mox"), before);
    EXPECT_THROW(train("model.mox"), mox::RuntimeError) << "it is finalized";
    EXPECT_THAT(folder_.names(), ElementsAre("in.png", "mask.png", "model.mox", "wrong.png"));
}

/// While it lives, no file can grow.
class NoRoom {
public:
    NoRoom()
    {
        interrupt::watch(); // ignores the signal that comes with it
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit const none{0, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    NoRoom(NoRoom const&) = delete;
    NoRoom& operator=(NoRoom const&) = delete;
    ~NoRoom() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_{};
};

TEST_F(ModelFile, IsNamedWhereItCannotBeWritten)
{
    std::string reason = "nothing thrown";
    try {
        NoRoom const noRoom;
        create("model.mox");
    } catch (FileError const& error) {
        reason = error.what();
    }
    EXPECT_EQ(reason, "cannot write " + quoted(folder_ / "model.mox") + ": writing failed");
    EXPECT_THAT(folder_.names(), ElementsAre("in.png", "mask.png"));
}

TEST_F(ModelFile, IsRefusedWhenItCannotBeReadOrWritten)
{
    EXPECT_THROW(create("no/where.mox"), FileError);
    writeBytes(folder_ / "bad.mox", {'M', 'O', 'X', 'O', 1});
    try {
        train("bad.mox");
        FAIL() << "nothing thrown";
    } catch (FileError const& error) {
        EXPECT_EQ(error.what(), "cannot read \"" + (folder_ / "bad.mox").string() + "\": input stream error");
    }
    for (auto const& [name, reason] :
         {std::pair("none.mox", "file does not exists."), std::pair("in.png", "Invalid magic number")}) {
        try {
            train(name);
            FAIL() << "nothing thrown";
        } catch (FileError const& error) {
            EXPECT_THAT(error.what(), HasSubstr("cannot read \"" + (folder_ / name).string()));
            EXPECT_THAT(error.what(), HasSubstr(reason));
        }
    }
    try {
        run("CreateTextureClassification2D", {.values = {"textureFeaturesGroup=COOC_Kontrast"}});
        FAIL() << "nothing thrown";
    } catch (UsageError const& error) {
        EXPECT_THAT(error.what(), HasSubstr("COOC_Contrast"));
    }
}

} // namespace
} // namespace moxel::testing
