// Finds a drawn arrow in a noisy scene, where it is turned and enlarged.

#include <Moxelcore/Moxelcore.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <numbers>
#include <random>
#include <vector>

namespace {

constexpr unsigned int templateSize = 48;
constexpr unsigned int sceneSize = 256;
constexpr double degrees = 70.0;
constexpr double scale = 1.4;
constexpr double left = 110.0;
constexpr double top = 60.0;

/// How bright the arrow is at a place of the template: a shaft with a head, its edges a voxel wide.
double arrow(double x, double y)
{
    double const shaft = std::min(4.0 - std::abs(y - 24.0), std::min(x - 4.0, 30.0 - x));
    double const head = std::min(x - 28.0, 0.7 * (44.0 - x) - std::abs(y - 20.0));
    double const inside = std::max(shaft, head);
    return 200.0 * std::clamp(inside + 0.5, 0.0, 1.0);
}

/// Differences of the neighbours on either side.
void makeGradients(std::vector<double> const& voxels, unsigned int size, mox::ImageModel& x, mox::ImageModel& y)
{
    x.allocate(mox::MOX_FLOAT64, size, size, 1, 1, 1);
    y.allocate(mox::MOX_FLOAT64, size, size, 1, 1, 1);
    std::vector<double> rowX(size);
    std::vector<double> rowY(size);
    for (unsigned int row = 0; row < size; ++row) {
        for (unsigned int column = 0; column < size; ++column) {
            bool const isInside = row > 0 && column > 0 && row + 1 < size && column + 1 < size;
            double const* const voxel = voxels.data() + row * size + column;
            rowX[column] = isInside ? voxel[1] - voxel[-1] : 0.0;
            rowY[column] = isInside ? voxel[size] - *(voxel - size) : 0.0;
        }
        x.writeRowAt(size, rowX.data(), 0, row, 0, 0, 0);
        y.writeRowAt(size, rowY.data(), 0, row, 0, 0, 0);
    }
}

std::vector<double> drawTemplate()
{
    std::vector<double> voxels;
    for (unsigned int i = 0; i < templateSize * templateSize; ++i) {
        voxels.push_back(arrow(i % templateSize, i / templateSize));
    }
    return voxels;
}

std::vector<double> drawScene()
{
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0.0, 5.0);
    double const cosine = std::cos(degrees * std::numbers::pi / 180.0);
    double const sine = std::sin(degrees * std::numbers::pi / 180.0);
    std::vector<double> voxels;
    for (unsigned int i = 0; i < sceneSize * sceneSize; ++i) {
        double const x = (i % sceneSize - left) / scale;
        double const y = (i / sceneSize - top) / scale;
        voxels.push_back(arrow(x * cosine + y * sine, y * cosine - x * sine) + noise(random));
    }
    return voxels;
}

} // namespace

int main()
{
    mox::memory::InMemoryImage templateX;
    mox::memory::InMemoryImage templateY;
    mox::memory::InMemoryImage sceneX;
    mox::memory::InMemoryImage sceneY;
    makeGradients(drawTemplate(), templateSize, templateX, templateY);
    makeGradients(drawScene(), sceneSize, sceneX, sceneY);

    auto const matching = mox::registration::ShapeBasedMatching2D::New();
    matching->inputGradientX = &sceneX;
    matching->inputGradientY = &sceneY;
    matching->templateGradientX = &templateX;
    matching->templateGradientY = &templateY;
    matching->numOfLevel = 3U;
    matching->run();

    std::cout << "turned by " << matching->outputRotation << " degrees, scaled by " << matching->outputScale << ", at ("
              << matching->outputTx << ", " << matching->outputTy << ")\n";
    bool const isFound = std::abs(matching->outputRotation - degrees) <= 10.0 &&
                         std::abs(matching->outputScale - scale) <= 0.1001 &&
                         std::hypot(matching->outputTx - left, matching->outputTy - top) < 8.0;
    return isFound ? 0 : 1;
}
