#include <gtest/gtest.h>

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/BaseAlgorithm.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "apps/moxel/DescribeCommand.h"
#include "apps/moxel/Json.h"

namespace moxel {

namespace {

constexpr char const* begin = "<!-- from the class record -->\n";
constexpr char const* end = "<!-- end -->\n";

std::string pageOf(std::string const& name)
{
    return std::string(MOXELCORE_SOURCE_DIR) + "/docs/algorithms/" + name + ".md";
}

std::string content(std::string const& path)
{
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
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
    if (property.contains("enumerators")) {
        for (auto const& enumerator : property["enumerators"]) {
            type +=
                "<br>" + std::to_string(enumerator["value"].get<int>()) + " " + enumerator["name"].get<std::string>();
        }
    }
    std::string const byDefault = property["default"].is_null() ? "" : property["default"].dump();
    return "| " + property["name"].get<std::string>() + " | " + property["direction"].get<std::string>() + " | " +
           type + " | " + byDefault + " |\n";
}

std::string influenceText(Json const& influence)
{
    std::string text;
    for (auto const& [dimension, reach] : influence.items()) {
        if (reach != Json::array({0, 0})) {
            text += (text.empty() ? "" : "; ") + dimension + " " + reach[0].dump() + " and " + reach[1].dump();
        }
    }
    return text.empty() ? "none" : text;
}

/// What a page tells of its class beside the prose.
std::string generatedPart(mox::BaseAlgorithm const& algorithm)
{
    std::ostringstream out;
    printDescription(algorithm, OutputForm::json, out);
    Json const record = Json::parse(out.str());
    std::string text = "| property | direction | type | default |\n|---|---|---|---|\n";
    for (auto const& property : record["properties"]) {
        text += propertyRow(property);
    }
    return text + "\nModule: " + record["module"].get<std::string>() + ". Levels: " + join(record["levels"]) +
           ". Border influence with these defaults: " + influenceText(record["borderInfluence"]) + ".\n";
}

/// Writes the generated parts instead of comparing them.
bool updates()
{
    return std::getenv("MOXELCORE_UPDATE_PAGES") != nullptr;
}

TEST(AlgorithmPages, tellWhatTheClassRecordsTell)
{
    for (std::size_t i = 0; i < mox::AlgoInfo::count(); ++i) {
        mox::AlgoInfo const& info = mox::AlgoInfo::at(i);
        std::string page = content(pageOf(info.getName()));
        std::size_t const from = page.find(begin);
        std::size_t const to = page.find(end);
        ASSERT_TRUE(from != std::string::npos && to != std::string::npos) << pageOf(info.getName());
        std::size_t const first = from + std::string(begin).length();
        std::string const wanted = "\n" + generatedPart(*info.createInstance()) + "\n";
        if (updates()) {
            page.replace(first, to - first, wanted);
            std::ofstream(pageOf(info.getName())) << page;
        } else {
            EXPECT_EQ(page.substr(first, to - first), wanted)
                << "stale: run this test with MOXELCORE_UPDATE_PAGES=1 to write it anew";
        }
    }
}

} // namespace

} // namespace moxel
