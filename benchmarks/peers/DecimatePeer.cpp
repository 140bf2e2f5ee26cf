#include <Moxelcore/Moxelcore.h>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <cstdio>
#include <random>

#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

constexpr unsigned int size = 4096;

template <class T>
T* voxelsOf(memory::InMemoryImage& image)
{
    void* voxels = nullptr;
    image.getRowPointerAt(0, voxels, 0, 0, 0, 0, 0);
    return static_cast<T*>(voxels);
}

template <class T>
void compareOne(VoxelTypes type, int cvType)
{
    memory::InMemoryImage input;
    memory::InMemoryImage output;
    input.allocate(type, size, size, 1, 1, 1);
    std::mt19937 random(1);
    T* const in = voxelsOf<T>(input);
    for (std::size_t i = 0; i < std::size_t{size} * size; ++i) {
        in[i] = static_cast<T>(random() & 255U);
    }
    auto const algorithm = miscellaneous::Decimate2D::New();
    algorithm->input = &input;
    algorithm->output = &output;
    algorithm->run();

    cv::Mat const matrix(static_cast<int>(size), static_cast<int>(size), cvType, in);
    cv::Mat half;
    auto const resize = [&] { cv::resize(matrix, half, cv::Size(), 0.5, 0.5, cv::INTER_AREA); };
    resize();
    T const* const out = voxelsOf<T>(output);
    for (std::size_t i = 0; i < std::size_t{size} * size / 4; ++i) {
        if (std::abs(static_cast<double>(out[i]) - static_cast<double>(half.ptr<T>()[i])) > 1) { // rounded by the peer
            std::printf("results differ at voxel %zu\n", i);
            return;
        }
    }
    contest(std::string("Decimate2D MEAN ") + helper::getText(type).c_str() + ", 4096 x 4096",
            static_cast<double>(size) * size, {{"Moxelcore", [&] { algorithm->run(); }}, {"OpenCV", resize}});
}

} // namespace

void compareDecimation()
{
    compareOne<unsigned char>(MOX_UINT8, CV_8U);
    compareOne<unsigned short>(MOX_UINT16, CV_16U);
    compareOne<float>(MOX_FLOAT32, CV_32F);
}

} // namespace mox::benchmarks
