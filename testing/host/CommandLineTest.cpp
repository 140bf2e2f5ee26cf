#include "apps/moxel/CommandLine.h"

#include <Moxelcore/Core/AlgoInfo.h>

#include <gmock/gmock.h>

#include <sstream>

#include "apps/moxel/DescribeCommand.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/Json.h"
#include "testing/host/HostAlgorithm.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

struct Result {
    int code;
    std::string out;
    std::string err;
};

Result moxel(std::vector<std::string> words)
{
    words.insert(words.begin(), "moxel");
    std::vector<char const*> arguments;
    for (std::string const& word : words) {
        arguments.push_back(word.c_str());
    }
    std::ostringstream out;
    std::ostringstream err;
    int const code = runCommandLine(static_cast<int>(arguments.size()), arguments.data(), out, err);
    return {code, out.str(), err.str()};
}

TEST(CommandLine, ListsTheRegistry)
{
    Json const list = Json::parse(moxel({"list", "--json"}).out);
    EXPECT_EQ(list.size(), mox::AlgoInfo::count());
    bool hasThreshold = false;
    for (Json const& entry : list) {
        EXPECT_FALSE(entry["levels"].empty()) << entry;
        EXPECT_FALSE(entry["module"].get<std::string>().empty()) << entry;
        hasThreshold = hasThreshold || entry["name"] == "Threshold";
        if (entry["name"] == "Threshold") {
            EXPECT_EQ(entry["module"], "segmentation");
        }
    }
    EXPECT_TRUE(hasThreshold);
    EXPECT_THAT(moxel({"list"}).out, AllOf(HasSubstr("segmentation\n"), HasSubstr("    Threshold\n")));
}

TEST(CommandLine, DescribesEveryAlgorithm)
{
    for (std::size_t i = 0; i < mox::AlgoInfo::count(); ++i) {
        std::string const name = mox::AlgoInfo::at(i).getName();
        Json const description = Json::parse(moxel({"describe", name, "--json"}).out);
        auto const algorithm = mox::AlgoInfo::at(i).createInstance();
        EXPECT_EQ(description["name"], name);
        EXPECT_EQ(description["properties"].size(), algorithm->getNumOfProperties()) << name;
        for (Json const& property : description["properties"]) {
            EXPECT_NE(property["type"], "unknown") << name << ' ' << property["name"];
        }
        EXPECT_THAT(moxel({"describe", name}).out, StartsWith(name));
    }
}

TEST(CommandLine, DescribesThreshold)
{
    Json const description = Json::parse(moxel({"describe", "Threshold", "--json"}).out);
    EXPECT_EQ(description["levels"], Json::parse(R"(["scalar"])"));
    EXPECT_EQ(description["borderInfluence"]["timeSeries"], Json::parse("[0, 0]"));
    EXPECT_EQ(description["properties"][0],
              Json::parse(R"({"name": "input", "direction": "input", "type": "image", "default": null})"));
    EXPECT_EQ(description["properties"][2],
              Json::parse(R"({"name": "highLevel", "direction": "input", "type": "double", "default": 255.0})"));
    EXPECT_EQ(description["properties"][3]["direction"], "output");
}

TEST(CommandLine, DescribesTheNamesThatAListTakes)
{
    std::string const text = moxel({"describe", "TextureFeatureExtraction2D"}).out;
    EXPECT_THAT(text, HasSubstr("    textureFeaturesGroup: list of int32, default \n        COOC_"));
    EXPECT_THAT(text, HasSubstr("        HISTO_Mean = "));
}

TEST(CommandLine, DescribesPropertiesOfEveryKind)
{
    auto const algorithm = HostAlgorithm::New();
    std::ostringstream text;
    printDescription(*algorithm, OutputForm::text, text);
    EXPECT_THAT(text.str(), HasSubstr("    mode: DecimationOp, default MIN\n        MEAN = 0\n        MIN = 1\n"));
    EXPECT_THAT(text.str(), HasSubstr("    centre: vector of 3 double, default 1:2:0.5\n"));
    EXPECT_THAT(text.str(), HasSubstr("    columns: 0, infinity\n    rows: 1, 2\n"));
    std::ostringstream out;
    printDescription(*algorithm, OutputForm::json, out);
    Json const json = Json::parse(out.str());
    EXPECT_EQ(json["borderInfluence"]["columns"], Json::parse(R"([0, "infinity"])"));
    EXPECT_EQ(json["properties"][1]["enumerators"][3], Json::parse(R"({"name": "FIRST", "value": 3})"));
    EXPECT_EQ(json["properties"][4]["default"], Json(18446744073709551615U));
}

TEST(CommandLine, TellsOfFiles)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::int16_t>(image, {2, 1, 2, 1, 1}, {-5, 1, 2, 4});
    image.setCalibrationStep(mox::PLANS, 0.5);
    image.setUnit("mm");
    image.setInterpretation(mox::INTERPRETATION_LABEL);
    writeImage(image, folder / "a.tif", ImageFormat::tiff, Compression::deflate);
    Json const info = Json::parse(moxel({"info", folder / "a.tif", "--json"}).out);
    EXPECT_EQ(info, Json::parse(R"({"columns": 2, "rows": 1, "plans": 2, "timeSeries": 1, "spectralSeries": 1,
        "voxelType": "int16", "interpretation": "label", "step": [0.0, 0.0, 0.5, 0.0, 0.0],
        "origin": [0.0, 0.0, 0.0, 0.0, 0.0], "unit": "mm", "description": "", "minimum": -5, "maximum": 4,
        "mean": 0.5})"));
    Json const times = Json::parse(moxel({"info", folder / "a.tif", "--json", "--pages", "time"}).out);
    EXPECT_EQ(times["timeSeries"], 2);
    EXPECT_THAT(moxel({"info", folder / "a.tif"}).out,
                AllOf(HasSubstr("plans: 2\n"), HasSubstr("step: 0, 0, 0.5, 0, 0\n"), HasSubstr("mean: 0.5\n")));
}

TEST(CommandLine, RunsThreshold)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint16_t>(image, {4, 1, 1, 1, 1}, {1, 200, 300, 65535});
    writeImage(image, folder / "in.tif", ImageFormat::tiff, Compression::none);
    std::string const input = "input=" + (folder / "in.tif").string();
    std::string const output = "output=" + (folder / "out.tif").string();
    Result const result = moxel({"run", "Threshold", input, "lowLevel=200", "--compression", "none", "highLevel=300",
                                 output, "--type", "output=int16", "--threads", "1", "--json"});
    EXPECT_EQ(result.code, exitDone) << result.err;
    EXPECT_EQ(Json::parse(result.out), Json::object());
    EXPECT_THAT(result.err, IsEmpty());
    auto const mask = readImage(folder / "out.tif", {});
    EXPECT_EQ(mask->getVoxelType(), mox::MOX_INT16);
    EXPECT_EQ(mask->getInterpretation(), mox::INTERPRETATION_BINARY);
    EXPECT_EQ(voxelsOf<std::int16_t>(*mask), (std::vector<std::int16_t>{0, 1, 1, 0}));
}

TEST(CommandLine, ChecksThatTheResultFitsItsFileBeforeTheRun)
{
    Folder const folder;
    mox::memory::InMemoryImage image;
    fill<std::uint8_t>(image, {1, 1, 2, 1, 1}, {1, 2});
    writeImage(image, folder / "in.tif", ImageFormat::tiff, Compression::none);
    Result const result =
        moxel({"run", "Threshold", "input=" + (folder / "in.tif").string(), "output=" + (folder / "out.png").string()});
    EXPECT_EQ(result.code, exitFailed);
    EXPECT_THAT(result.err, HasSubstr("PNG has one plan and one time step; use TIFF"));
    EXPECT_EQ(folder.names().size(), 1U);
}

TEST(CommandLine, TellsUsageErrors)
{
    std::vector<std::vector<std::string>> const mistakes = {
        {},
        {"lst"},
        {"list", "more"},
        {"list", "--jsn"},
        {"describe"},
        {"describe", "Treshold"},
        {"info"},
        {"info", "a.tif", "--pages", "x"},
        {"run"},
        {"run", "Threshold", "lowLevel=12abc"},
        {"run", "Threshold", "lowLevel"},
        {"run", "Threshold", "--threads", "0"},
        {"run", "Threshold", "--threads", "2x"},
        {"run", "Threshold", "--level", "fast"},
        {"run", "Threshold", "--extra-memory", "-1"},
        {"run", "Threshold", "--type", "output"},
        {"run", "Threshold", "--compression", "zip"},
        {"run", "Threshold", "output="},
    };
    for (auto const& words : mistakes) {
        Result const result = moxel(words);
        EXPECT_EQ(result.code, exitUsage) << (words.empty() ? "" : words.back());
        EXPECT_THAT(result.err, StartsWith("moxel: "));
        EXPECT_THAT(result.out, IsEmpty());
    }
}

TEST(CommandLine, TellsTheLibrarysErrors)
{
    Result const result = moxel({"run", "Threshold"});
    EXPECT_EQ(result.code, exitFailed);
    EXPECT_THAT(result.err, AllOf(HasSubstr("Rule exception :"), HasSubstr("From Threshold of Moxelcore library")));
}

TEST(CommandLine, TellsFailingFiles)
{
    Result const result = moxel({"info", "/no/such/file.tif"});
    EXPECT_EQ(result.code, exitFailed);
    EXPECT_EQ(result.err, "moxel: cannot read \"/no/such/file.tif\": No such file or directory\n");
}

TEST(CommandLine, TellsItsVersion)
{
    Result const result = moxel({"--version"});
    EXPECT_EQ(result.code, exitDone);
    EXPECT_THAT(result.out, MatchesRegex("moxel [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(CommandLine, TellsOfWhichImagesAnOptionIs)
{
    EXPECT_THAT(moxel({"run", "Threshold", "input=a.png", "--type", "input=uint8"}).err,
                HasSubstr("--type: no output image \"input\" is given"));
    EXPECT_THAT(moxel({"run", "Threshold", "output=a.png", "--pages", "output=time"}).err,
                HasSubstr("--pages: no input image \"output\" is given"));
}

TEST(CommandLine, Helps)
{
    EXPECT_EQ(moxel({"--help"}).code, exitDone);
    EXPECT_THAT(moxel({"run", "--help"}).out, HasSubstr("--interpretation"));
}

TEST(CommandLine, NoticesThatItsWordsAreLost)
{
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    std::ostringstream err;
    char const* const arguments[] = {"moxel", "list"};
    EXPECT_EQ(runCommandLine(2, arguments, out, err), exitFailed);
}

} // namespace
} // namespace moxel::testing
