#include <Moxelcore/Moxelcore.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>
#include <random>
#include <utility>
#include <vector>

#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

constexpr int size = 4096;

template <class T>
T* voxelsOf(memory::InMemoryImage& image)
{
    void* voxels = nullptr;
    image.getRowPointerAt(0, voxels, 0, 0, 0, 0, 0);
    return static_cast<T*>(voxels);
}

cv::Mat noise(double density)
{
    cv::Mat image(size, size, CV_8U);
    std::mt19937 random(1);
    std::bernoulli_distribution isSet(density);
    std::generate(image.begin<unsigned char>(), image.end<unsigned char>(), [&] { return isSet(random) ? 1 : 0; });
    return image;
}

/// Smooth noise above its middle.
cv::Mat blobs()
{
    cv::Mat coarse(size / 128, size / 128, CV_32F);
    cv::theRNG().state = 1;
    cv::randu(coarse, 0, 1);
    cv::Mat smooth;
    cv::resize(coarse, smooth, cv::Size(size, size), 0, 0, cv::INTER_CUBIC);
    cv::Mat image = smooth > 0.5;
    return image / 255;
}

/// A path of width 1 with gaps of width 1, winding inwards.
cv::Mat spiral()
{
    cv::Mat image(size, size, CV_8U, cv::Scalar(0));
    int x = 0;
    int y = 0;
    int dx = 1;
    int dy = 0;
    image.at<unsigned char>(0, 0) = 1;
    for (int length = size - 1, sides = 0; length > 0; ++sides) {
        for (int i = 0; i < length; ++i) {
            x += dx;
            y += dy;
            image.at<unsigned char>(y, x) = 1;
        }
        dx = std::exchange(dy, dx);
        dx = -dx;
        length -= sides == 0 ? 0 : sides % 2 == 0 ? 2 : 0;
    }
    return image;
}

cv::Mat dots()
{
    cv::Mat image(size, size, CV_8U, cv::Scalar(0));
    for (int y = 0; y < size; y += 2) {
        for (int x = 0; x < size; x += 2) {
            image.at<unsigned char>(y, x) = 1;
        }
    }
    return image;
}

/// The peer numbers in another order: each of its labels must stand for one of ours, and the other way round.
bool areSame(int const* ours, cv::Mat const& theirs, int numOfTheirs)
{
    std::vector<int> oursOf(static_cast<std::size_t>(numOfTheirs), -1);
    for (std::size_t i = 0; i < theirs.total(); ++i) {
        int& known = oursOf[static_cast<std::size_t>(theirs.ptr<int>()[i])];
        if (known == -1) {
            known = ours[i];
        } else if (known != ours[i]) {
            return false;
        }
    }
    return *std::max_element(ours, ours + theirs.total()) == numOfTheirs - 1;
}

void compareOne(char const* title, cv::Mat const& image)
{
    memory::InMemoryImage input;
    memory::InMemoryImage output;
    input.allocate(MOX_UINT8, size, size, 1, 1, 1);
    std::copy_n(image.ptr<unsigned char>(), image.total(), voxelsOf<unsigned char>(input));
    output.allocate(MOX_INT32, 1, 1, 1, 1, 1);
    auto const algorithm = segmentation::Labeling::New();
    algorithm->input = &input;
    algorithm->output = &output;
    algorithm->run();
    cv::Mat labels;
    int const numOfLabels = cv::connectedComponents(image, labels, 8, CV_32S);
    if (!areSame(voxelsOf<int>(output), labels, numOfLabels)) {
        std::printf("results differ on %s\n", title);
        return;
    }
    contest(std::string("Labeling, ") + title + ", 4096 x 4096", static_cast<double>(image.total()),
            {{"Moxelcore", [&] { algorithm->run(); }},
             {"OpenCV", [&] { cv::connectedComponents(image, labels, 8, CV_32S); }}});
}

} // namespace

void compareLabeling()
{
    compareOne("noise 0.1", noise(0.1));
    compareOne("noise 0.5", noise(0.5));
    compareOne("noise 0.9", noise(0.9));
    compareOne("blobs", blobs());
    compareOne("spiral", spiral());
    compareOne("dots", dots());
}

} // namespace mox::benchmarks
