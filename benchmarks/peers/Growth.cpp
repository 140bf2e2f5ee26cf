#include <Moxelcore/Moxelcore.h>

#include <tbb/global_control.h>

#include <random>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

using memory::InMemoryImage;

/// Noise of two values.
void fill(InMemoryImage& image, unsigned int columns, unsigned int rows, unsigned int plans)
{
    image.allocate(MOX_UINT8, columns, rows, plans, 1, 1);
    std::mt19937 random(1);
    std::vector<unsigned char> row(columns);
    for (unsigned int z = 0; z < plans; ++z) {
        for (unsigned int y = 0; y < rows; ++y) {
            for (unsigned char& voxel : row) {
                voxel = random() & 1U;
            }
            image.writeRowAt(columns, row.data(), 0, y, z, 0, 0);
        }
    }
}

/// An algorithm that is bound by memory and one that is bound by comparisons.
void timeOnCube(unsigned int size, std::string const& title)
{
    InMemoryImage input, output;
    fill(input, size, size, size);
    auto const threshold = segmentation::Threshold::New();
    threshold->input = &input;
    threshold->lowLevel = 1;
    threshold->output = &output;
    auto const dilation = morphology::Dilation3D::New();
    dilation->input = &input;
    dilation->nbIter = 3;
    dilation->output = &output;
    double const count = static_cast<double>(size) * size * size;
    contest("Threshold uint8, " + title, count, {{"Moxelcore", [&] { threshold->run(); }}});
    contest("dilation, 26, 3 iterations uint8, " + title, count, {{"Moxelcore", [&] { dilation->run(); }}});
}

void timeOnPlane(unsigned int size, std::string const& title)
{
    InMemoryImage input, labels;
    fill(input, size, size, 1);
    input.setInterpretation(INTERPRETATION_BINARY);
    labels.allocate(MOX_INT32, 1, 1, 1, 1, 1);
    auto const labeling = segmentation::Labeling::New();
    labeling->input = &input;
    labeling->output = &labels;
    contest("Labeling of noise, uint8 to int32, " + title, static_cast<double>(size) * size,
            {{"Moxelcore", [&] { labeling->run(); }}});
}

} // namespace

void compareGrowth()
{
    for (unsigned int const size : {64U, 128U, 256U, 512U, 1024U}) {
        std::string const text = std::to_string(size);
        timeOnCube(size, text + " x " + text + " x " + text);
    }
    for (unsigned int const size : {512U, 2048U, 8192U, 32768U}) {
        timeOnPlane(size, std::to_string(size) + " x " + std::to_string(size));
    }
    for (unsigned int threads = 1; threads <= std::thread::hardware_concurrency(); threads *= 2) {
        tbb::global_control const most(tbb::global_control::max_allowed_parallelism, threads);
        std::string const text = std::to_string(threads) + (threads == 1 ? " thread" : " threads");
        timeOnCube(256, "256 x 256 x 256, " + text);
        timeOnPlane(4096, "4096 x 4096, " + text);
    }
}

} // namespace mox::benchmarks
