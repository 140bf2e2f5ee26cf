#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "apps/moxel/ValueForm.h"

namespace moxel {

/// Whether a text is the name of a file of points: it ends in ".csv" or ".txt".
bool namesPointsFile(std::string const& text);

/// A line of a file of points, taken apart.
struct PointLine {
    std::size_t number; ///< counted from 1
    std::vector<std::string> components;
};

/// One point a line, its components separated by a comma, a semicolon or white space. Empty lines, lines that begin
/// with # and a first line without a number are passed over. Throws `FileError`.
std::vector<PointLine> readPointLines(std::filesystem::path const& path);

[[noreturn]] void refuseLine(std::filesystem::path const& path, PointLine const& line, std::string const& reason);

/// Throws `FileError`.
template <class Point>
mox::Vector<Point> readPoints(std::filesystem::path const& path)
{
    using Component = typename ValueForm<Point>::Component;
    mox::Vector<Point> points;
    for (PointLine const& line : readPointLines(path)) {
        Point point;
        if (line.components.size() != point.dim()) {
            refuseLine(path, line, std::to_string(line.components.size()) + " components");
        }
        try {
            for (unsigned int i = 0; i < point.dim(); ++i) {
                point[i] = ValueForm<Component>::parse(line.components[i]);
            }
        } catch (UsageError const& error) {
            refuseLine(path, line, error.what());
        }
        points.push_back(point);
    }
    return points;
}

} // namespace moxel
