#include <gtest/gtest.h>

#include <Moxelcore/Moxelcore.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "apps/moxel/ImageFile.h"
#include "apps/moxel/PointsFile.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using Point = mox::math::Vector2<double>;

/// The landmarks of the page on the photographs of the rock arch. The last two are wrong.
TEST(RealRegistration, RejectsTheWrongLandmarks)
{
    std::string const folder = std::string(MOXELCORE_SOURCE_DIR) + "/docs/algorithms/";
    auto const inA = readPoints<Point>(folder + "arches_a.csv");
    auto const inB = readPoints<Point>(folder + "arches_b.csv");
    mox::geometry::Transformation2DHandler handler;
    auto const registration = mox::registration::LandmarkRegistration2D::New();
    registration->data = &inA;
    registration->model = &inB;
    registration->transformationType = mox::registration::TransformationType::PROJECTIVE;
    registration->robustEstimation = true;
    registration->outputTransformation = &handler;
    registration->run();
    ASSERT_EQ(inA.size(), 14U);
    for (std::size_t i = 0; i < inA.size(); ++i) {
        Point point = inA[i];
        handler.get()->map(point);
        EXPECT_EQ((point - inB[i]).length() > 3.0, i >= 12) << i << ": " << (point - inB[i]).length();
    }
}

/// Read between voxels, and beyond its border as there.
class Texture {
public:
    explicit Texture(std::filesystem::path const& path)
    {
        auto const image = readImage(path, {});
        columns_ = image->getSize(mox::COLUMNS);
        rows_ = image->getSize(mox::ROWS);
        auto const voxels = voxelsOf<std::uint8_t>(*image);
        voxels_.assign(voxels.begin(), voxels.end());
    }

    double at(Point const& place) const
    {
        double const x = std::clamp(place[0], 0.0, columns_ - 1.001);
        double const y = std::clamp(place[1], 0.0, rows_ - 1.001);
        double const* const voxel = &voxels_[static_cast<std::size_t>(y) * columns_ + static_cast<std::size_t>(x)];
        return std::lerp(std::lerp(voxel[0], voxel[1], x - std::floor(x)),
                         std::lerp(voxel[columns_], voxel[columns_ + 1], x - std::floor(x)), y - std::floor(y));
    }

private:
    unsigned int columns_;
    unsigned int rows_;
    std::vector<double> voxels_;
};

struct Gradients {
    mox::memory::InMemoryImage x;
    mox::memory::InMemoryImage y;
};

/// Half the differences of the neighbours on either side, of a square of values.
template <class Value>
void makeGradients(unsigned int size, Gradients& gradients, Value const& value)
{
    std::vector<float> x;
    std::vector<float> y;
    for (unsigned int i = 0; i < size * size; ++i) {
        double const column = i % size;
        double const row = i / size;
        x.push_back(static_cast<float>(value(Point(column + 1, row)) - value(Point(column - 1, row))) / 2.0F);
        y.push_back(static_cast<float>(value(Point(column, row + 1)) - value(Point(column, row - 1))) / 2.0F);
    }
    fill(gradients.x, {size, size, 1, 1, 1}, x);
    fill(gradients.y, {size, size, 1, 1, 1}, y);
}

Point turned(Point const& p, double degrees)
{
    double const angle = degrees * std::numbers::pi / 180.0;
    return {p[0] * std::cos(angle) - p[1] * std::sin(angle), p[0] * std::sin(angle) + p[1] * std::cos(angle)};
}

class RealTextures : public ::testing::TestWithParam<char const*> {};

/// A part of a texture is looked for in the texture turned and scaled, wherever its centre lies there.
TEST_P(RealTextures, AreFoundTurnedAndScaled)
{
    auto const path = realImages() / GetParam();
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "there is no real image " << path;
    }
    constexpr unsigned int sceneSize = 110;
    constexpr unsigned int partSize = 48;
    Point const half(partSize / 2.0, partSize / 2.0);
    Texture const texture(path);
    std::mt19937 random(3);
    auto const draw = [&](int first, int last) {
        return first + static_cast<int>(random() % 1000U) % (last - first + 1);
    };
    auto const drawPoint = [&](int first, int last) {
        double const x = draw(first, last);
        return Point(x, draw(first, last));
    };
    for (Point const& centre : {Point(4, 6), Point(105, 5), Point(3, 103), Point(106, 106), drawPoint(0, 109)}) {
        Point const origin = drawPoint(100, 300);
        double const degrees = 10.0 * draw(0, 35);
        double const scale = 0.1 * draw(8, 13);
        Gradients part;
        Gradients scene;
        makeGradients(partSize, part, [&](Point const& p) { return texture.at(origin + p); });
        makeGradients(sceneSize, scene,
                      [&](Point const& p) { return texture.at(origin + half + turned(p - centre, -degrees) / scale); });
        auto const matching = mox::registration::ShapeBasedMatching2D::New();
        matching->inputGradientX = &scene.x;
        matching->inputGradientY = &scene.y;
        matching->templateGradientX = &part.x;
        matching->templateGradientY = &part.y;
        matching->numOfLevel = 2U;
        matching->scaleBegin = 0.8;
        matching->scaleEnd = 1.3;
        matching->rotationEnd = 350.0;
        matching->run();
        Point const found = turned(half, matching->outputRotation) * matching->outputScale.get() +
                            Point(matching->outputTx, matching->outputTy);
        EXPECT_LE(std::abs(found[0] - centre[0]), 1.0 + 1e-9);
        EXPECT_LE(std::abs(found[1] - centre[1]), 1.0 + 1e-9);
        EXPECT_LE(std::abs(std::remainder(matching->outputRotation - degrees, 360.0)), 10.0);
        EXPECT_LE(std::abs(matching->outputScale - scale), 0.1 + 1e-9);
    }
}

INSTANTIATE_TEST_SUITE_P(Shared, RealTextures, ::testing::Values("grass.png", "gravel.png"), [](auto const& test) {
    std::string const name = test.param;
    return name.substr(0, name.find('.'));
});

} // namespace
} // namespace moxel::testing
