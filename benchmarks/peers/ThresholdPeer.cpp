#include <Moxelcore/Moxelcore.h>

#include <opencv2/core.hpp>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <cstdio>
#include <memory>
#include <random>
#include <type_traits>

#include "benchmarks/CopyingImage.h"
#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

struct Size {
    char const* text;
    unsigned int columns, rows, plans;
};

constexpr Size sizes[] = {{"4096 x 4096", 4096, 4096, 1}, {"512 x 512 x 512", 512, 512, 512}};

template <class T>
void* rowOf(memory::InMemoryImage& image)
{
    void* row = nullptr;
    image.getRowPointerAt(0, row, 0, 0, 0, 0, 0);
    return row;
}

template <class T>
void bareRow(T const* in, unsigned char* out, std::size_t count, T low, T high)
{
#pragma GCC ivdep
    for (std::size_t i = 0; i < count; ++i) {
        if constexpr (std::is_floating_point_v<T>) {
            out[i] = !((low > in[i]) | (in[i] > high));
        } else {
            out[i] = static_cast<T>(in[i] - low) <= static_cast<T>(high - low);
        }
    }
}

/// The limit: the comparison in its plainest form, one vectorised loop per thread over its half of the voxels.
template <class T>
void bareLoop(T const* in, unsigned char* out, std::size_t count, T low, T high)
{
    using Range = tbb::blocked_range<std::size_t>;
    tbb::parallel_for(
        Range(0, count),
        [=](Range const& part) { bareRow(in + part.begin(), out + part.begin(), part.size(), low, high); },
        tbb::static_partitioner());
}

template <class T>
void compareOne(Size const& size, VoxelTypes type, int cvType, double low, double high)
{
    memory::InMemoryImage input;
    memory::InMemoryImage output;
    memory::InMemoryImage limitOutput;
    CopyingImage copyingInput;
    CopyingImage copyingOutput;
    input.allocate(type, size.columns, size.rows, size.plans, 1, 1);
    limitOutput.allocate(MOX_UINT8, size.columns, size.rows, size.plans, 1, 1);
    auto const count = std::size_t{size.columns} * size.rows * size.plans;
    auto* const in = static_cast<T*>(rowOf<T>(input));
    std::mt19937 random(1);
    for (std::size_t i = 0; i < count; ++i) {
        in[i] = static_cast<T>(random() & 255U);
    }

    auto const algorithm = segmentation::Threshold::New();
    algorithm->input = &input;
    algorithm->output = &output;
    algorithm->lowLevel = low;
    algorithm->highLevel = high;
    algorithm->run(); // the output has its size from here on, as the peer's has

    copyingInput.allocate(type, size.columns, size.rows, size.plans, 1, 1);
    for (unsigned int z = 0; z < size.plans; ++z) {
        for (unsigned int y = 0; y < size.rows; ++y) {
            copyingInput.writeRowAt(size.columns, in + (std::size_t{z} * size.rows + y) * size.columns, 0, y, z, 0, 0);
        }
    }
    auto const copying = segmentation::Threshold::New();
    copying->input = &copyingInput;
    copying->output = &copyingOutput;
    copying->lowLevel = low;
    copying->highLevel = high;
    copying->run();

    cv::Mat const matrix(static_cast<int>(size.rows * size.plans), static_cast<int>(size.columns), cvType, in);
    cv::Mat mask;
    cv::inRange(matrix, low, high, mask);

    auto* const out = static_cast<unsigned char*>(rowOf<unsigned char>(output));
    auto* const limitOut = static_cast<unsigned char*>(rowOf<unsigned char>(limitOutput));
    bareLoop(in, limitOut, count, static_cast<T>(low), static_cast<T>(high));
    for (std::size_t i = 0; i < count; ++i) {
        if ((out[i] != 0) != (mask.data[i] != 0) || out[i] != limitOut[i]) {
            std::printf("results differ at voxel %zu\n", i);
            return;
        }
    }

    contest(std::string("Threshold ") + helper::getText(type).c_str() + ", " + size.text, static_cast<double>(count),
            {{"Moxelcore", [&] { algorithm->run(); }},
             {"own image", [&] { copying->run(); }},
             {"OpenCV", [&] { cv::inRange(matrix, low, high, mask); }},
             {"bare loop", [&] { bareLoop(in, limitOut, count, static_cast<T>(low), static_cast<T>(high)); }}});
}

} // namespace

void compareThreshold()
{
    for (Size const& size : sizes) {
        compareOne<unsigned char>(size, MOX_UINT8, CV_8U, 50, 200);
        compareOne<unsigned short>(size, MOX_UINT16, CV_16U, 50, 200);
        compareOne<float>(size, MOX_FLOAT32, CV_32F, 50, 200);
    }
}

} // namespace mox::benchmarks
