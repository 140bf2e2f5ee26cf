#include <Moxelcore/Moxelcore.h>

#include <opencv2/imgproc.hpp>

#include <cstdio>
#include <cstring>
#include <random>

#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

constexpr unsigned int size = 4096;

unsigned char* voxelsOf(memory::InMemoryImage& image)
{
    void* voxels = nullptr;
    image.getRowPointerAt(0, voxels, 0, 0, 0, 0, 0);
    return static_cast<unsigned char*>(voxels);
}

} // namespace

/// Voxels without neighbours are removed from noise that has none left: a run is one pass and the copies before and
/// after it.
void compareLookUpTable()
{
    memory::InMemoryImage input;
    memory::InMemoryImage output;
    input.allocate(MOX_UINT8, size, size, 1, 1, 1);
    cv::Mat matrix(static_cast<int>(size), static_cast<int>(size), CV_8U, voxelsOf(input));
    std::mt19937 random(1);
    for (std::size_t i = 0; i < matrix.total(); ++i) {
        matrix.data[i] = random() % 2;
    }
    // Beyond the image the peer has neither voxels nor background.
    cv::rectangle(matrix, cv::Rect(0, 0, matrix.cols, matrix.rows), 1);
    cv::Mat isolated = -cv::Mat::ones(3, 3, CV_32S);
    isolated.at<int>(1, 1) = 1;
    cv::Mat hits;
    cv::Mat clean;
    auto const peer = [&] {
        cv::morphologyEx(matrix, hits, cv::MORPH_HITMISS, isolated, {-1, -1}, 1, cv::BORDER_CONSTANT, 0);
        cv::subtract(matrix, hits, clean);
    };
    peer();
    clean.copyTo(matrix);

    morphology::MorphologicalLut2D lut;
    Vector<unsigned char> kernel;
    for (int i = 0; i < 9; ++i) {
        kernel.push_back(i == 4 ? 1 : 0);
    }
    lut.addKernel(kernel);
    auto const algorithm = morphology::ApplyMorphologicalLut2D::New();
    algorithm->input = &input;
    algorithm->morphologicalLut = &lut;
    algorithm->matchingFlag = morphology::MatchingActionTypes::SET_ZERO;
    algorithm->noMatchingFlag = morphology::MatchingActionTypes::SET_UNCHANGE;
    algorithm->output = &output;
    algorithm->run();
    peer();
    if (std::memcmp(voxelsOf(output), clean.data, clean.total()) != 0) {
        std::printf("results differ\n");
        return;
    }
    contest("look-up table 2D, one pass, 4096 x 4096", static_cast<double>(size) * size,
            {{"Moxelcore", [&] { algorithm->run(); }}, {"OpenCV", peer}});
}

} // namespace mox::benchmarks
