// Draws a scene with a silhouette that is turned, scaled and blurred, among disks and noise, finds it by shape-based
// matching, and marks where its outline was found: red on the scene.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <cmath>
#include <iostream>
#include <numbers>
#include <random>

#include "apps/demo/Raster.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"

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

    Point unmap(Point const& p) const
    {
        Point const back = (p - shift) / scale;
        return Placement{-degrees, 1.0, {}}.map(back);
    }
};

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

Raster drawScene(Raster const& silhouette, Placement const& placement)
{
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0.0, 12.0);
    Raster scene(sceneColumns, sceneRows);
    for (unsigned int y = 0; y < sceneRows; ++y) {
        for (unsigned int x = 0; x < sceneColumns; ++x) {
            Point const p = placement.unmap({static_cast<double>(x), static_cast<double>(y)});
            double const cell = std::hypot(x % 120 - 60.0, y % 120 - 60.0);
            double const disk = cell < 22.0 + 3.0 * ((x / 120 + y / 120) % 5) ? 90.0 : 40.0;
            double const horse = silhouette.contains(p[0], p[1]) ? silhouette.between(p[0], p[1]) / 255.0 : 0.0;
            scene.at(x, y) = std::clamp(std::lerp(disk, 190.0, horse) + noise(random), 0.0, 255.0);
        }
    }
    return scene;
}

struct Gradients {
    mox::memory::InMemoryImage x;
    mox::memory::InMemoryImage y;
};

/// Differences of the neighbours on either side, in float32; differences below a limit are none.
void makeGradients(Raster const& raster, double limit, Gradients& gradients)
{
    Raster x(raster.columns(), raster.rows());
    Raster y(raster.columns(), raster.rows());
    for (unsigned int row = 1; row + 1 < raster.rows(); ++row) {
        for (unsigned int column = 1; column + 1 < raster.columns(); ++column) {
            double const dx = raster.at(column + 1, row) - raster.at(column - 1, row);
            double const dy = raster.at(column, row + 1) - raster.at(column, row - 1);
            bool const isEdge = std::hypot(dx, dy) >= limit;
            x.at(column, row) = isEdge ? dx : 0.0;
            y.at(column, row) = isEdge ? dy : 0.0;
        }
    }
    for (auto* const image : {&gradients.x, &gradients.y}) {
        image->allocate(mox::MOX_FLOAT32, raster.columns(), raster.rows(), 1, 1, 1);
        demo::writeChannel<float>(image == &gradients.x ? x : y, *image, 0);
    }
}

Placement find(Raster const& silhouette, Raster const& scene)
{
    Gradients shape;
    Gradients image;
    makeGradients(smoothed(silhouette), 60.0, shape);
    makeGradients(smoothed(scene), 30.0, image);
    auto const matching = mox::registration::ShapeBasedMatching2D::New();
    matching->inputGradientX = &image.x;
    matching->inputGradientY = &image.y;
    matching->templateGradientX = &shape.x;
    matching->templateGradientY = &shape.y;
    matching->rotationStep = 5.0;
    matching->scaleEnd = 1.2;
    matching->scaleStep = 0.05;
    matching->run();
    return {matching->outputRotation, matching->outputScale, {matching->outputTx, matching->outputTy}};
}

void writePicture(Raster const& silhouette, Raster const& scene, Placement const& found, std::string const& path)
{
    mox::memory::InMemoryImage picture;
    picture.allocate(mox::MOX_UINT8, sceneColumns, sceneRows, 1, 1, 3);
    Raster red = scene;
    Raster others = scene;
    for (unsigned int y = 0; y < sceneRows; ++y) {
        for (unsigned int x = 0; x < sceneColumns; ++x) {
            Point const p = found.unmap({static_cast<double>(x), static_cast<double>(y)});
            Point const next = found.unmap({x + 2.0, y + 2.0});
            Point const below = found.unmap({static_cast<double>(x), y + 2.0});
            auto const isIn = [&](Point const& q) {
                return silhouette.contains(q[0], q[1]) && silhouette.between(q[0], q[1]) > 127.0;
            };
            if (isIn(p) != isIn(next) || isIn(p) != isIn(below)) {
                red.at(x, y) = 255.0;
                others.at(x, y) = 0.0;
            }
        }
    }
    demo::writeChannel<unsigned char>(red, picture, 0);
    demo::writeChannel<unsigned char>(others, picture, 1);
    demo::writeChannel<unsigned char>(others, picture, 2);
    moxel::writeImage(picture, path, moxel::formatOf(path), moxel::Compression::deflate);
}

void demonstrate(std::string const& silhouetteFile, std::string const& path)
{
    Raster const silhouette(*moxel::readImage(silhouetteFile, std::nullopt), 0);
    Placement const placed{215.0, 0.85, {580.0, 380.0}};
    Raster const scene = drawScene(silhouette, placed);
    Placement const found = find(silhouette, scene);
    for (auto const& [what, placement] : {std::pair("placed", placed), std::pair("found ", found)}) {
        std::cout << what << " turned by " << placement.degrees << " degrees, scaled by " << placement.scale
                  << ", shifted by (" << placement.shift[0] << ", " << placement.shift[1] << ")\n";
    }
    writePicture(silhouette, scene, found, path);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Finds a silhouette in a scene");
    std::string silhouette;
    std::string picture;
    app.add_option("silhouette", silhouette, "image, bright on dark")->required();
    app.add_option("picture", picture, "PNG to write")->required();
    CLI11_PARSE(app, argc, argv);
    try {
        demonstrate(silhouette, picture);
    } catch (mox::Exception const& error) {
        std::cerr << error.what().c_str() << '\n';
        return 1;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
