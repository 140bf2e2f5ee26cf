// A scene for a test of shape-based matching: a silhouette that is turned and scaled among disks and noise, and whether
// it was found there.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <random>

#include "apps/demo/Raster.h"
#include "apps/moxel/Json.h"

namespace {

using demo::Raster;
using Point = mox::math::Vector2<double>;

constexpr unsigned int sceneColumns = 720;
constexpr unsigned int sceneRows = 600;

/// A point p of the silhouette lies at scale R p + shift.
struct Placement {
    double degrees;
    double scale;
    Point shift;

    Point map(Point const& p) const
    {
        double const angle = degrees * std::numbers::pi / 180.0;
        Point const turned(p[0] * std::cos(angle) - p[1] * std::sin(angle),
                           p[0] * std::sin(angle) + p[1] * std::cos(angle));
        return turned * scale + shift;
    }

    Point unmap(Point const& p) const { return Placement{-degrees, 1.0, {}}.map((p - shift) / scale); }
};

/// Between the steps of a search by 5 degrees and 0.05.
Placement const placed{213.0, 0.83, {580.0, 380.0}};

/// Whether a point of the scene is in the silhouette, from 0 to 1.
double shareAt(Raster const& silhouette, Placement const& placement, double x, double y)
{
    Point const p = placement.unmap({x, y});
    return silhouette.contains(p[0], p[1]) ? silhouette.between(p[0], p[1]) / 255.0 : 0.0;
}

Raster drawScene(Raster const& silhouette)
{
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0.0, 12.0);
    Raster scene(sceneColumns, sceneRows);
    for (unsigned int y = 0; y < sceneRows; ++y) {
        for (unsigned int x = 0; x < sceneColumns; ++x) {
            double const fromDisk = std::hypot(x % 120 - 60.0, y % 120 - 60.0);
            double const ground = fromDisk < 22.0 + 3.0 * ((x / 120 + y / 120) % 5) ? 90.0 : 40.0;
            double const grey = std::lerp(ground, 190.0, shareAt(silhouette, placed, x, y));
            scene.at(x, y) = std::clamp(grey + noise(random), 0.0, 255.0);
        }
    }
    return scene;
}

/// Each voxel and its eight neighbours, 1 : 2 : 1 along either direction; the border stays.
Raster smoothed(Raster const& raster)
{
    Raster result = raster;
    for (unsigned int y = 1; y + 1 < raster.rows(); ++y) {
        for (unsigned int x = 1; x + 1 < raster.columns(); ++x) {
            double sum = 0;
            for (unsigned int i = 0; i < 9; ++i) {
                unsigned int const weight = (i % 3 == 1 ? 2 : 1) * (i / 3 == 1 ? 2 : 1);
                sum += weight * raster.at(x + i % 3 - 1, y + i / 3 - 1);
            }
            result.at(x, y) = sum / 16.0;
        }
    }
    return result;
}

/// Differences of the neighbours on either side; those that are short of a limit are none.
void writeGradients(Raster const& raster, double limit, std::filesystem::path const& folder, std::string const& name)
{
    Raster const source = smoothed(raster);
    Raster x(raster.columns(), raster.rows());
    Raster y = x;
    for (unsigned int row = 1; row + 1 < raster.rows(); ++row) {
        for (unsigned int column = 1; column + 1 < raster.columns(); ++column) {
            double const dx = source.at(column + 1, row) - source.at(column - 1, row);
            double const dy = source.at(column, row + 1) - source.at(column, row - 1);
            if (std::hypot(dx, dy) >= limit) {
                x.at(column, row) = dx;
                y.at(column, row) = dy;
            }
        }
    }
    demo::write(x, folder / (name + "X.tif"));
    demo::write(y, folder / (name + "Y.tif"));
}

void make(std::string const& silhouetteFile, std::filesystem::path const& folder)
{
    Raster const silhouette = demo::readGrey(silhouetteFile);
    Raster const scene = drawScene(silhouette);
    demo::writeColours(scene, scene, scene, folder / "scene.png");
    writeGradients(silhouette, 60.0, folder, "silhouette");
    writeGradients(scene, 30.0, folder, "scene");
}

Placement readMatch(std::string const& path)
{
    std::ifstream in(path);
    auto const match = moxel::Json::parse(in);
    return {match.at("outputRotation"), match.at("outputScale"), {match.at("outputTx"), match.at("outputTy")}};
}

/// The outline where the silhouette was found is red.
void mark(Raster const& silhouette, Raster scene, Placement const& found, std::string const& path)
{
    auto const isIn = [&](unsigned int x, unsigned int y) { return shareAt(silhouette, found, x, y) > 0.5; };
    Raster red = scene;
    for (unsigned int y = 0; y < scene.rows(); ++y) {
        for (unsigned int x = 0; x < scene.columns(); ++x) {
            if (isIn(x, y) != isIn(x + 3, y) || isIn(x, y) != isIn(x, y + 3)) {
                red.at(x, y) = 255.0;
                scene.at(x, y) = 0.0;
            }
        }
    }
    demo::writeColours(red, scene, scene, path);
}

/// Tells both placements, and whether they are a step of the search apart or less.
bool isRight(Raster const& silhouette, Placement const& found)
{
    for (auto const& [what, placement] : {std::pair("placed", placed), std::pair("found ", found)}) {
        std::cout << what << " turned by " << placement.degrees << " degrees, scaled by " << placement.scale
                  << ", shifted by (" << placement.shift[0] << ", " << placement.shift[1] << ")\n";
    }
    Point const centre(silhouette.columns() / 2.0, silhouette.rows() / 2.0);
    return std::abs(found.degrees - placed.degrees) <= 5.0 && std::abs(found.scale - placed.scale) <= 0.05 &&
           (found.map(centre) - placed.map(centre)).length() < 3.0;
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Makes and judges a test of shape-based matching");
    app.require_subcommand(1);
    std::string silhouette;
    std::string folder;
    std::string scene;
    std::string match;
    std::string picture;
    auto* const making = app.add_subcommand("make", "Writes scene.png and the gradients of scene and silhouette");
    making->add_option("silhouette", silhouette, "image, white on black")->required();
    making->add_option("folder", folder, "where to write")->required();
    auto* const marking = app.add_subcommand("mark", "Marks where it was found; fails where it is not");
    marking->add_option("silhouette", silhouette, "image, white on black")->required();
    marking->add_option("scene", scene, "the scene")->required();
    marking->add_option("match", match, "JSON file: the results of the algorithm")->required();
    marking->add_option("picture", picture, "PNG to write")->required();
    CLI11_PARSE(app, argc, argv);
    try {
        if (*making) {
            make(silhouette, folder);
            return 0;
        }
        Raster const shape = demo::readGrey(silhouette);
        Placement const found = readMatch(match);
        mark(shape, demo::readGrey(scene), found, picture);
        return isRight(shape, found) ? 0 : 1;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
