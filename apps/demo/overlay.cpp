// Lays an image on another: red is the first, green and blue the second, so that grey tells where both agree. Each
// place of the first is looked up in the second, by way of a transformation that `moxel run LandmarkRegistration2D` has
// written.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <fstream>
#include <iostream>

#include "apps/demo/Raster.h"
#include "apps/moxel/Json.h"

namespace {

using demo::Raster;
using mox::geometry::ProjectiveTransformation2D;

/// Of any class that is a matrix.
ProjectiveTransformation2D readTransformation(std::string const& path)
{
    std::ifstream in(path);
    auto const matrix = moxel::Json::parse(in).at("matrix");
    unsigned int const elements[][2] = {{0, 2}, {1, 2}, {0, 0}, {0, 1}, {1, 0}, {1, 1}, {2, 0}, {2, 1}};
    ProjectiveTransformation2D transformation;
    for (unsigned int i = 0; i < 8; ++i) {
        transformation.setParam(i, matrix.at(elements[i][0]).at(elements[i][1]).get<double>());
    }
    return transformation;
}

void makePicture(std::string const& first, std::string const& second, ProjectiveTransformation2D const& transformation,
                 std::string const& path)
{
    Raster below = demo::readGrey(first);
    Raster const above = demo::readGrey(second);
    Raster laid = below;
    for (unsigned int y = 0; y < below.rows(); ++y) {
        for (unsigned int x = 0; x < below.columns(); ++x) {
            mox::math::Vector2<double> place(x, y);
            transformation.map(place);
            bool const isCovered = above.contains(place[0], place[1]);
            below.at(x, y) /= isCovered ? 1.0 : 2.0;
            laid.at(x, y) = isCovered ? above.between(place[0], place[1]) : below.at(x, y);
        }
    }
    demo::writeColours(below, laid, laid, path);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Lays an image on another");
    std::string first;
    std::string second;
    std::string picture;
    std::string transformation;
    app.add_option("first", first, "image")->required();
    app.add_option("second", second, "image to lay on it")->required();
    app.add_option("picture", picture, "PNG to write")->required();
    app.add_option("--transformation", transformation, "JSON file: from places of the first to those of the second");
    CLI11_PARSE(app, argc, argv);
    try {
        makePicture(first, second,
                    transformation.empty() ? ProjectiveTransformation2D() : readTransformation(transformation),
                    picture);
    } catch (mox::Exception const& error) {
        std::cerr << error.what().c_str() << '\n';
        return 1;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
