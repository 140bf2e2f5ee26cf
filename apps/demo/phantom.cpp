// Makes a volume that looks like a CT of grains in a tube: bright grains of several kinds in dark air, soft edges,
// noise, and the faint rings of a detector. The same seed gives the same volume.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <random>
#include <vector>

#include "apps/moxel/ImageFile.h"

namespace {

constexpr double air = 6000;
constexpr double wall = 15000;
constexpr double softEdge = 1.2; // in voxels, to each side

struct Grain {
    double x, y, z, radius;
    double flatness; ///< height over width
    double value;
};

/// Numbers from the generator alone, so that they are the same with every standard library.
class Random {
public:
    explicit Random(unsigned int seed)
        : generator_(seed)
    {
    }

    double between(double low, double high)
    {
        return low + (high - low) * static_cast<double>(generator_()) / 4294967295.0;
    }

    /// Nearly normal, of variance 1: the sum of twelve uniform numbers.
    double noise()
    {
        double sum = -6;
        for (int i = 0; i < 12; ++i) {
            sum += between(0, 1);
        }
        return sum;
    }

private:
    std::mt19937 generator_;
};

/// Value times 1 inside, times 0 outside, and between across the edge.
double coverage(double depth)
{
    return std::clamp(depth / (2 * softEdge) + 0.5, 0.0, 1.0);
}

class Phantom {
public:
    Phantom(int size, unsigned int seed)
        : size_(size)
        , random_(seed)
        , voxels_(static_cast<std::size_t>(size) * static_cast<std::size_t>(size) * static_cast<std::size_t>(size), air)
    {
        paintTube();
        for (Grain const& grain : throwGrains()) {
            paint(grain);
        }
        addRingsAndNoise();
    }

    void store(mox::ImageModel& image) const
    {
        auto const n = static_cast<unsigned int>(size_);
        image.allocate(mox::MOX_UINT16, n, n, n, 1, 1);
        std::vector<unsigned short> row(n);
        for (unsigned int z = 0; z < n; ++z) {
            for (unsigned int y = 0; y < n; ++y) {
                for (unsigned int x = 0; x < n; ++x) {
                    double const value = voxels_[(std::size_t{z} * n + y) * n + x];
                    row[x] = static_cast<unsigned short>(std::clamp(value, 0.0, 65535.0));
                }
                image.writeRowAt(n, row.data(), 0, y, z, 0, 0);
            }
        }
    }

private:
    double& at(int x, int y, int z)
    {
        auto const n = static_cast<std::size_t>(size_);
        return voxels_[(static_cast<std::size_t>(z) * n + static_cast<std::size_t>(y)) * n +
                       static_cast<std::size_t>(x)];
    }

    template <class Work>
    void forEachVoxel(Work const& work)
    {
        for (int z = 0; z < size_; ++z) {
            for (int y = 0; y < size_; ++y) {
                for (int x = 0; x < size_; ++x) {
                    work(x, y, z);
                }
            }
        }
    }

    double distanceFromAxis(double x, double y) const { return std::hypot(x - size_ / 2.0, y - size_ / 2.0); }

    void paintTube()
    {
        double const inner = size_ * 0.45;
        double const outer = size_ * 0.48;
        forEachVoxel([&](int x, int y, int z) {
            double const r = distanceFromAxis(x, y);
            at(x, y, z) += (wall - air) * coverage(std::min(r - inner, outer - r));
        });
    }

    /// Grains at random places of the tube, large ones first, that touch but hardly overlap.
    std::vector<Grain> throwGrains()
    {
        constexpr int numOfThrows = 30000;
        std::vector<Grain> grains;
        double const tube = size_ * 0.45;
        for (int i = 0; i < numOfThrows; ++i) {
            double const radius = size_ * (0.10 - 0.07 * i / numOfThrows);
            double const x = random_.between(0, size_);
            double const y = random_.between(0, size_);
            double const z = random_.between(0, size_);
            double const flatness = random_.between(0.7, 1.0);
            double const value = random_.between(0, 1) < 0.2 ? 38000 : random_.between(23000, 28000);
            bool const fits = distanceFromAxis(x, y) + radius < tube;
            bool const isFree = std::none_of(grains.begin(), grains.end(), [&](Grain const& other) {
                return std::hypot(x - other.x, y - other.y, z - other.z) < 0.95 * (radius + other.radius);
            });
            if (fits && isFree) {
                grains.push_back({x, y, z, radius, flatness, value});
            }
        }
        return grains;
    }

    void paint(Grain const& grain)
    {
        auto const first = [&](double c) { return std::max(0, static_cast<int>(c - grain.radius - 2)); };
        auto const last = [&](double c) { return std::min(size_ - 1, static_cast<int>(c + grain.radius + 3)); };
        for (int z = first(grain.z); z <= last(grain.z); ++z) {
            for (int y = first(grain.y); y <= last(grain.y); ++y) {
                for (int x = first(grain.x); x <= last(grain.x); ++x) {
                    double const r = std::hypot(x - grain.x, y - grain.y, (z - grain.z) / grain.flatness);
                    double& voxel = at(x, y, z);
                    voxel += (grain.value - voxel) * coverage(grain.radius - r);
                }
            }
        }
    }

    void addRingsAndNoise()
    {
        std::vector<double> rings(static_cast<std::size_t>(size_));
        std::generate(rings.begin(), rings.end(), [&] { return 300 * random_.noise(); });
        forEachVoxel([&](int x, int y, int z) {
            at(x, y, z) += rings[static_cast<std::size_t>(distanceFromAxis(x, y))] + 1100 * random_.noise();
        });
    }

    int size_;
    Random random_;
    std::vector<double> voxels_;
};

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Makes a volume that looks like a CT of grains");
    std::string path;
    unsigned int seed = 1;
    int size = 128;
    app.add_option("file", path, "TIFF to write")->required();
    app.add_option("--seed", seed, "the same seed gives the same volume");
    app.add_option("--size", size, "voxels along each side")->check(CLI::Range(16, 1024));
    CLI11_PARSE(app, argc, argv);

    mox::memory::InMemoryImage image;
    Phantom(size, seed).store(image);
    for (auto const dimension : {mox::COLUMNS, mox::ROWS, mox::PLANS}) {
        image.setCalibrationStep(dimension, 0.012);
    }
    image.setUnit("mm");
    moxel::writeImage(image, path, moxel::formatOf(path), moxel::Compression::deflate);
    std::cout << path << ": " << size << " x " << size << " x " << size << " voxels, seed " << seed << '\n';
    return 0;
}
