// Lays an image on another: each place of the first is looked up in the second by way of a transformation that
// `moxel run LandmarkRegistration2D` has written. Where there is one, the picture is the mean of both.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <fstream>
#include <iostream>

#include "apps/demo/Raster.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/Json.h"

namespace {

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

demo::Raster blended(demo::Raster first, demo::Raster const& second, ProjectiveTransformation2D const& transformation)
{
    for (unsigned int y = 0; y < first.rows(); ++y) {
        for (unsigned int x = 0; x < first.columns(); ++x) {
            mox::math::Vector2<double> place(x, y);
            transformation.map(place);
            if (second.contains(place[0], place[1])) {
                first.at(x, y) = (first.at(x, y) + second.between(place[0], place[1])) / 2.0;
            }
        }
    }
    return first;
}

void makePicture(std::string const& first, std::string const& second, std::string const& transformation,
                 std::string const& path)
{
    auto const below = moxel::readImage(first, std::nullopt);
    auto const above = moxel::readImage(second, std::nullopt);
    unsigned int const channels = std::min(below->getSize(mox::SPECTRAL_SERIES), above->getSize(mox::SPECTRAL_SERIES));
    mox::memory::InMemoryImage picture;
    picture.allocate(mox::MOX_UINT8, below->getSize(mox::COLUMNS), below->getSize(mox::ROWS), 1, 1, channels);
    auto const leads = readTransformation(transformation);
    for (unsigned int channel = 0; channel < channels; ++channel) {
        demo::Raster const both = blended({*below, channel}, {*above, channel}, leads);
        demo::writeChannel<unsigned char>(both, picture, channel);
    }
    moxel::writeImage(picture, path, moxel::formatOf(path), moxel::Compression::deflate);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Lays an image on another");
    std::string files[4];
    app.add_option("first", files[0], "image")->required();
    app.add_option("second", files[1], "image to lay on it")->required();
    app.add_option("transformation", files[2], "JSON file: from places of the first to those of the second")
        ->required();
    app.add_option("picture", files[3], "PNG to write")->required();
    CLI11_PARSE(app, argc, argv);
    try {
        makePicture(files[0], files[1], files[2], files[3]);
    } catch (mox::Exception const& error) {
        std::cerr << error.what().c_str() << '\n';
        return 1;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
