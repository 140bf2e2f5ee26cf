// Lays an image on another: red is the first, green and blue the second, so that grey tells where both agree. Each
// place of the first, of a volume those of its middle plan, is looked up in the second, by way of a transformation that
// `moxel run LandmarkRegistration2D` or `LandmarkRegistration3D` has written.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <vector>

#include "apps/demo/Raster.h"
#include "apps/moxel/Json.h"

namespace {

using demo::Raster;
using Place = mox::math::Vector3<double>;

/// Columns and rows, or columns, rows and plans, in homogeneous coordinates.
using Matrix = std::vector<std::vector<double>>;

Matrix readMatrix(std::string const& path)
{
    std::ifstream in(path);
    return moxel::Json::parse(in).at("matrix").get<Matrix>();
}

Matrix const identity = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

/// A matrix of the plane leaves the plan as it is.
Place mapped(Matrix const& matrix, Place const& place)
{
    auto const dimensions = static_cast<unsigned int>(matrix.size()) - 1;
    auto const product = [&](std::vector<double> const& row) {
        double sum = row[dimensions];
        for (unsigned int i = 0; i < dimensions; ++i) {
            sum += row[i] * place[i];
        }
        return sum;
    };
    Place result = place;
    for (unsigned int i = 0; i < dimensions; ++i) {
        result[i] = product(matrix[i]) / product(matrix[dimensions]);
    }
    return result;
}

bool contains(std::vector<Raster> const& plans, Place const& place)
{
    return place[2] >= 0 && place[2] <= static_cast<double>(plans.size()) - 1.0 &&
           plans.front().contains(place[0], place[1]);
}

double between(std::vector<Raster> const& plans, Place const& place)
{
    auto const front = static_cast<std::size_t>(place[2]);
    std::size_t const back = std::min(front + 1, plans.size() - 1);
    return std::lerp(plans[front].between(place[0], place[1]), plans[back].between(place[0], place[1]),
                     place[2] - static_cast<double>(front));
}

void makePicture(std::string const& first, std::string const& second, Matrix const& matrix, std::string const& path)
{
    std::vector<Raster> const firstPlans = demo::readGreyPlans(first);
    std::vector<Raster> const above = demo::readGreyPlans(second);
    std::size_t const middle = firstPlans.size() / 2;
    Raster below = firstPlans[middle];
    Raster laid = below;
    for (unsigned int y = 0; y < below.rows(); ++y) {
        for (unsigned int x = 0; x < below.columns(); ++x) {
            Place const place = mapped(matrix, Place(x, y, static_cast<double>(middle)));
            bool const isCovered = contains(above, place);
            below.at(x, y) /= isCovered ? 1.0 : 2.0;
            laid.at(x, y) = isCovered ? between(above, place) : below.at(x, y);
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
        makePicture(first, second, transformation.empty() ? identity : readMatrix(transformation), picture);
    } catch (mox::Exception const& error) {
        std::cerr << error.what().c_str() << '\n';
        return 1;
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
