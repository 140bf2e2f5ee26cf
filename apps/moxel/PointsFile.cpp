#include "apps/moxel/PointsFile.h"

#include <algorithm>
#include <fstream>

#include "apps/moxel/extension.h"

namespace moxel {

namespace {

bool isNumber(std::string const& text)
{
    try {
        parseNumber<double>(text);
    } catch (UsageError const&) {
        return false;
    }
    return true;
}

/// Separators between components count once, with the white space about them.
std::vector<std::string> componentsOf(std::string line)
{
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\t' || c == '\r'; }, ' ');
    std::vector<std::string> components;
    bool const hasCommas = line.find_first_of(",;") != std::string::npos;
    std::replace(line.begin(), line.end(), ';', ',');
    for (std::string const& part : split(line, hasCommas ? ',' : ' ')) {
        auto const first = part.find_first_not_of(' ');
        if (first != std::string::npos) {
            components.push_back(part.substr(first, part.find_last_not_of(' ') + 1 - first));
        } else if (hasCommas) {
            components.emplace_back();
        }
    }
    return components;
}

} // namespace

bool namesPointsFile(std::string const& text)
{
    std::string const extension = extensionOf(text);
    return extension == ".csv" || extension == ".txt";
}

std::vector<PointLine> readPointLines(std::filesystem::path const& path)
{
    std::ifstream in(path);
    if (!in) {
        throw FileError("cannot read " + quoted(path) + ": it cannot be opened");
    }
    std::vector<PointLine> lines;
    std::string text;
    for (std::size_t number = 1; std::getline(in, text); ++number) {
        auto components = componentsOf(text);
        bool const isHeading = number == 1 && std::none_of(components.begin(), components.end(), isNumber);
        if (!components.empty() && !components.front().starts_with('#') && !isHeading) {
            lines.push_back({number, std::move(components)});
        }
    }
    if (in.bad()) {
        throw FileError("cannot read " + quoted(path));
    }
    return lines;
}

void refuseLine(std::filesystem::path const& path, PointLine const& line, std::string const& reason)
{
    throw FileError("cannot read " + quoted(path) + ": line " + std::to_string(line.number) + ": " + reason);
}

} // namespace moxel
