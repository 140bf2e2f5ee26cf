// Makes a picture of an algorithm's work: the middle plan of its input beside that of its output, from black for the
// lowest voxel of each to white for its highest.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <vector>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"

namespace {

constexpr unsigned int gap = 8;

constexpr unsigned int colours = 3;

/// The planes of all channels, one after the other.
struct Plane {
    unsigned int columns;
    unsigned int rows;
    unsigned int channels;
    std::vector<double> values;

    double at(unsigned int x, unsigned int y, unsigned int channel) const
    {
        return values[(std::size_t{channel} * rows + y) * columns + x];
    }
};

/// In colours when there are three channels, else of the first channel.
Plane middlePlan(mox::ImageModel const& image)
{
    unsigned int const channels = image.getSize(mox::SPECTRAL_SERIES) == colours ? colours : 1;
    Plane plane{image.getSize(mox::COLUMNS), image.getSize(mox::ROWS), channels, {}};
    mox::dispatch(mox::RealVoxels(), image.getVoxelType(), [&]<class T>() {
        std::vector<T> row(plane.columns);
        for (unsigned int channel = 0; channel < channels; ++channel) {
            for (unsigned int y = 0; y < plane.rows; ++y) {
                image.readRowAt(plane.columns, row.data(), 0, y, image.getSize(mox::PLANS) / 2, 0, channel);
                plane.values.insert(plane.values.end(), row.begin(), row.end());
            }
        }
    });
    return plane;
}

/// Means of squares, so that the longer side has at most that many voxels.
Plane shrunk(Plane const& plane, unsigned int longest)
{
    unsigned int const factor = (std::max(plane.columns, plane.rows) + longest - 1) / longest;
    Plane result{plane.columns / factor, plane.rows / factor, plane.channels, {}};
    for (unsigned int channel = 0; channel < result.channels; ++channel) {
        for (unsigned int y = 0; y < result.rows; ++y) {
            for (unsigned int x = 0; x < result.columns; ++x) {
                double sum = 0;
                for (unsigned int i = 0; i < factor * factor; ++i) {
                    sum += plane.at(x * factor + i % factor, y * factor + i / factor, channel);
                }
                result.values.push_back(sum / (factor * factor));
            }
        }
    }
    return result;
}

/// Of as many levels as asked, the fewer the smaller the file.
void paint(Plane const& plane, unsigned int levels, mox::ImageModel& picture, unsigned int left)
{
    auto const [low, high] = std::minmax_element(plane.values.begin(), plane.values.end());
    double const range = std::max(*high - *low, 1e-300);
    std::vector<unsigned char> row(plane.columns);
    for (unsigned int channel = 0; channel < picture.getSize(mox::SPECTRAL_SERIES); ++channel) {
        for (unsigned int y = 0; y < plane.rows; ++y) {
            for (unsigned int x = 0; x < plane.columns; ++x) {
                double const value = plane.at(x, y, std::min(channel, plane.channels - 1));
                double const level = std::floor((value - *low) / range * (levels - 1));
                row[x] = static_cast<unsigned char>(level * 255 / (levels - 1));
            }
            picture.writeRowAt(plane.columns, row.data(), left, y, 0, 0, channel);
        }
    }
}

void makePicture(std::vector<std::string> const& files, std::string const& path, unsigned int longest,
                 unsigned int levels)
{
    std::vector<Plane> planes;
    unsigned int width = 0;
    unsigned int height = 0;
    unsigned int channels = 1;
    for (std::string const& file : files) {
        planes.push_back(shrunk(middlePlan(*moxel::readImage(file, std::nullopt)), longest));
        width += planes.back().columns + gap;
        height = std::max(height, planes.back().rows);
        channels = std::max(channels, planes.back().channels);
    }
    mox::memory::InMemoryImage picture;
    picture.allocate(mox::MOX_UINT8, width - gap, height, 1, 1, channels);
    std::vector<unsigned char> const white(width - gap, 255);
    for (unsigned int i = 0; i < height * channels; ++i) {
        picture.writeRowAt(width - gap, white.data(), 0, i % height, 0, 0, i / height);
    }
    unsigned int left = 0;
    for (Plane const& plane : planes) {
        paint(plane, levels, picture, left);
        left += plane.columns + gap;
    }
    moxel::writeImage(picture, path, moxel::formatOf(path), moxel::Compression::deflate);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Puts the middle plans of images side by side");
    std::vector<std::string> files(2);
    std::string picture;
    unsigned int longest = 256;
    unsigned int levels = 256;
    app.add_option("input", files[0], "image")->required();
    app.add_option("output", files[1], "image made of it")->required();
    app.add_option("picture", picture, "PNG to write")->required();
    app.add_option("--longest", longest, "shrink each image until its longer side has at most that many voxels")
        ->check(CLI::Range(16, 4096));
    app.add_option("--levels", levels, "paint with that many levels; few make a small file")->check(CLI::Range(2, 256));
    CLI11_PARSE(app, argc, argv);
    try {
        makePicture(files, picture, longest, levels);
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
