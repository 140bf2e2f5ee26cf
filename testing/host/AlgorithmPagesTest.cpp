#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/BaseAlgorithm.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "apps/moxel/DescribeCommand.h"
#include "apps/moxel/Json.h"

namespace moxel {

namespace {

namespace fs = std::filesystem;

constexpr char const* begin = "<!-- from the class record -->\n";
constexpr char const* end = "<!-- end -->\n";

fs::path const docs = fs::path(MOXELCORE_SOURCE_DIR) / "docs";

fs::path pageOf(std::string const& name)
{
    return docs / "algorithms" / (name + ".md");
}

std::string content(fs::path const& path)
{
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> namesOfClasses()
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < mox::AlgoInfo::count(); ++i) {
        names.emplace_back(mox::AlgoInfo::at(i).getName());
    }
    return names;
}

Json recordOf(std::string const& name)
{
    std::ostringstream out;
    printDescription(*mox::AlgoInfo::fromName(name.c_str()).createInstance(), OutputForm::json, out);
    return Json::parse(out.str());
}

std::string join(Json const& texts)
{
    std::string line;
    for (auto const& text : texts) {
        line += (line.empty() ? "" : ", ") + text.get<std::string>();
    }
    return line;
}

std::string propertyRow(Json const& property)
{
    std::string type = property["type"];
    bool const isList = type.starts_with("list"); // its names are too many for a table
    if (property.contains("enumerators") && !isList) {
        for (auto const& enumerator : property["enumerators"]) {
            type +=
                "<br>" + std::to_string(enumerator["value"].get<int>()) + " " + enumerator["name"].get<std::string>();
        }
    }
    std::string const byDefault = property["default"].is_null() ? "" : property["default"].dump();
    return "| " + property["name"].get<std::string>() + " | " + property["direction"].get<std::string>() + " | " +
           type + " | " + byDefault + " |\n";
}

std::string reachText(Json const& reach)
{
    return reach.is_string() ? reach.get<std::string>() : reach.dump();
}

std::string influenceText(Json const& influence)
{
    std::string text;
    for (auto const& [dimension, reach] : influence.items()) {
        if (reach != Json::array({0, 0})) {
            text += (text.empty() ? "" : "; ") + dimension + " " + reachText(reach[0]) + " and " + reachText(reach[1]);
        }
    }
    return text.empty() ? "none" : text;
}

/// What a page tells of its class beside the prose.
std::string recordPart(std::string const& name)
{
    Json const record = recordOf(name);
    std::string text = "| property | direction | type | default |\n|---|---|---|---|\n";
    for (auto const& property : record["properties"]) {
        text += propertyRow(property);
    }
    return text + "\nModule: " + record["module"].get<std::string>() + ". Levels: " + join(record["levels"]) +
           ". Border influence with these defaults: " + influenceText(record["borderInfluence"]) + ".\n";
}

/// The first paragraph of a page, in one line.
std::string summaryOf(std::string const& name)
{
    std::string const page = content(pageOf(name));
    std::size_t const from = page.find("\n\n") + 2;
    std::string text = page.substr(from, page.find("\n\n", from) - from);
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// All classes by module, with their pictures.
std::string overviewPart()
{
    std::map<std::string, std::map<std::string, std::string>> rowsOfModules;
    for (std::string const& name : namesOfClasses()) {
        std::string const page = "algorithms/" + name;
        rowsOfModules[recordOf(name)["module"]][name] = "| [<img src=\"" + page + ".png\" width=\"160\" alt=\"\">](" +
                                                        page + ".md) | [" + name + "](" + page + ".md) | " +
                                                        summaryOf(name) + " |\n";
    }
    std::string text;
    for (auto const& [module, rows] : rowsOfModules) {
        text += (text.empty() ? "## " : "\n## ") + module + "\n\n| picture | class | what it does |\n|---|---|---|\n";
        for (auto const& [name, row] : rows) {
            text += row;
        }
    }
    return text;
}

/// Compares the generated part of a page, or writes it when asked to.
void checkGenerated(fs::path const& path, std::string const& part)
{
    std::string page = content(path);
    std::size_t const from = page.find(begin);
    std::size_t const to = page.find(end);
    ASSERT_TRUE(from != std::string::npos && to != std::string::npos) << path;
    std::size_t const first = from + std::string(begin).length();
    std::string const wanted = "\n" + part + "\n";
    if (std::getenv("MOXELCORE_UPDATE_PAGES") != nullptr) {
        page.replace(first, to - first, wanted);
        std::ofstream(path) << page;
    } else {
        EXPECT_EQ(page.substr(first, to - first), wanted)
            << "stale: run this test with MOXELCORE_UPDATE_PAGES=1 to write it anew";
    }
}

TEST(AlgorithmPages, tellWhatTheClassRecordsTell)
{
    for (std::string const& name : namesOfClasses()) {
        checkGenerated(pageOf(name), recordPart(name));
    }
}

TEST(AlgorithmPages, areAllInTheOverview)
{
    checkGenerated(docs / "overview.md", overviewPart());
}

bool contains(std::string const& text, std::string const& part)
{
    return text.find(part) != std::string::npos;
}

TEST(AlgorithmPages, haveAllTheirParts)
{
    for (std::string const& name : namesOfClasses()) {
        std::string const page = content(pageOf(name));
        for (std::string const& part :
             {"# " + name + "\n\n", "](" + name + ".png)\n", "moxel run " + name + " ", name + "::New();\n"}) {
            EXPECT_TRUE(contains(page, part)) << name << " has no " << part;
        }
        EXPECT_TRUE(contains(page, "\n## Errors\n") || contains(page, "#errors)")) << name << " tells of no errors";
    }
}

TEST(AlgorithmPages, haveSmallPictures)
{
    for (std::string const& name : namesOfClasses()) {
        std::error_code absent;
        EXPECT_LT(fs::file_size(docs / "algorithms" / (name + ".png"), absent), 60000U)
            << name << ": " << absent.message();
    }
}

TEST(AlgorithmPages, areOfClassesThatThereAre)
{
    std::vector<std::string> const names = namesOfClasses();
    for (fs::directory_entry const& entry : fs::directory_iterator(docs / "algorithms")) {
        if (entry.path().extension() != ".csv") {
            EXPECT_THAT(names, ::testing::Contains(entry.path().stem().string()));
        }
    }
}

} // namespace

} // namespace moxel
