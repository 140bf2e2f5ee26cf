#include <Moxelcore/Moxelcore.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <string>

#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

using namespace morphology;
using Peer = std::function<void(cv::Mat const& input, cv::Mat& output)>;

template <class T>
constexpr int cvTypeOf = std::is_same_v<T, unsigned char>    ? CV_8U
                         : std::is_same_v<T, unsigned short> ? CV_16U
                                                             : CV_32F;

template <class T>
T* voxelsOf(memory::InMemoryImage& image)
{
    void* row = nullptr;
    image.getRowPointerAt(0, row, 0, 0, 0, 0, 0);
    return static_cast<T*>(row);
}

/// Noise in the memory of our images, which the peer sees as matrices of rows, plan below plan.
template <class T>
class Arena {
public:
    Arena(std::string sizes, unsigned int columns, unsigned int rows, unsigned int plans = 1)
        : sizes_(std::move(sizes))
        , count_(std::size_t{columns} * rows * plans)
    {
        for (auto* image : {&input_, &output_, &inPlace_}) {
            image->allocate(voxelTypeOf<T>, columns, rows, plans, 1, 1);
        }
        std::mt19937 random(1);
        std::generate_n(voxelsOf<T>(input_), count_, [&] { return static_cast<T>(random() & 255U); });
        std::copy_n(voxelsOf<T>(input_), count_, voxelsOf<T>(inPlace_));
        matrix_ = cv::Mat(static_cast<int>(rows * plans), static_cast<int>(columns), cvTypeOf<T>, voxelsOf<T>(input_));
        result_ = matrix_.clone();
    }

    template <class Algorithm>
    void compare(std::string const& title, boost::shared_ptr<Algorithm> const& algorithm, Peer const& peer)
    {
        algorithm->input = &input_;
        algorithm->output = &output_;
        algorithm->run();
        peer(matrix_, result_);
        if (std::memcmp(voxelsOf<T>(output_), result_.data, count_ * sizeof(T)) != 0) {
            std::printf("results differ: %s\n", title.c_str());
            return;
        }
        auto const scalar = [&] {
            algorithm->setAutoCpuDispatch(false); // the level is the scalar one unless set
            algorithm->run();
            algorithm->setAutoCpuDispatch(true);
        };
        auto const inPlace = [&] {
            algorithm->input = &inPlace_;
            algorithm->output = &inPlace_;
            algorithm->run();
            algorithm->input = &input_;
            algorithm->output = &output_;
        };
        contest(title + ' ' + helper::getText(voxelTypeOf<T>).c_str() + ", " + sizes_, static_cast<double>(count_),
                {{"Moxelcore", [&] { algorithm->run(); }},
                 {"in place", inPlace},
                 {"scalar level", scalar},
                 {"OpenCV", [&] { peer(matrix_, result_); }}});
    }

private:
    std::string sizes_;
    std::size_t count_;
    memory::InMemoryImage input_;
    memory::InMemoryImage output_;
    memory::InMemoryImage inPlace_;
    cv::Mat matrix_;
    cv::Mat result_;
};

cv::Mat const square = cv::Mat::ones(3, 3, CV_8U);
cv::Mat const cross = (cv::Mat_<unsigned char>(3, 3) << 0, 1, 0, 1, 1, 1, 0, 1, 0);

Peer dilation(cv::Mat const& element, int iterations = 1, cv::Point anchor = {-1, -1})
{
    return [=](cv::Mat const& input, cv::Mat& output) { cv::dilate(input, output, element, anchor, iterations); };
}

boost::shared_ptr<Dilation2D> dilation2D(int neighborhood, unsigned int iterations)
{
    auto const algorithm = Dilation2D::New();
    algorithm->neighborhood2D = neighborhood;
    algorithm->nbIter = iterations;
    return algorithm;
}

template <class T>
void compareSmallElements()
{
    Arena<T> arena("4096 x 4096", 4096, 4096);
    arena.compare("dilation, 8, 1 iteration", dilation2D(MOX_NEIGHBORHOOD2D_8, 1), dilation(square));
    arena.compare("dilation, 8, 3 iterations", dilation2D(MOX_NEIGHBORHOOD2D_8, 3), dilation(square, 3));
    arena.compare("dilation, 4, 1 iteration", dilation2D(MOX_NEIGHBORHOOD2D_4, 1), dilation(cross));
    arena.compare("closing, 8, 3 iterations", Closing2D::New(), [](cv::Mat const& input, cv::Mat& output) {
        cv::morphologyEx(input, output, cv::MORPH_CLOSE, square, {-1, -1}, 3);
    });
}

cv::Mat diskElement(int radius)
{
    cv::Mat element(2 * radius + 1, 2 * radius + 1, CV_8U);
    for (int y = -radius; y <= radius; ++y) {
        for (int x = -radius; x <= radius; ++x) {
            element.at<unsigned char>(y + radius, x + radius) = x * x + y * y <= radius * radius;
        }
    }
    return element;
}

/// The voxels of a line that goes up the image, as the algorithm has it.
Peer lineDilation(double angle, int length)
{
    double const radians = angle * 3.141592653589793 / 180;
    int const height = static_cast<int>(std::floor((length - 1) * std::tan(radians) + 0.5));
    cv::Mat element = cv::Mat::zeros(height + 1, length, CV_8U);
    for (int x = 0; x < length; ++x) {
        element.at<unsigned char>(height + static_cast<int>(std::floor(x * -std::tan(radians) + 0.5)), x) = 1;
    }
    return dilation(element, 1, {0, height});
}

template <class T>
void compareLists()
{
    Arena<T> arena("2048 x 2048", 2048, 2048);
    auto const disk = DilationDisk2D::New();
    disk->elementSize = 10;
    disk->precision = MOX_ALGO_PRECISE;
    arena.compare("dilation, disk of radius 10", disk, dilation(diskElement(10)));
    for (double const angle : {0.0, 30.0}) {
        auto const line = DilationLine2D::New();
        line->elementSize = 21;
        line->orientationAngle = angle;
        arena.compare("dilation, line of 21 at " + std::to_string(static_cast<int>(angle)) + " degrees", line,
                      lineDilation(angle, 21));
    }
}

/// The peer knows planes only: one dilation per plan, then the larger of three plans. The plans are matrices of their
/// own, or it would read from one into the next.
Peer dilationOfPlans(cv::Mat const& own, cv::Mat const& besides, int rows)
{
    return [=](cv::Mat const& input, cv::Mat& output) {
        static cv::Mat inside;
        static cv::Mat around;
        inside.create(input.size(), input.type());
        around.create(input.size(), input.type());
        int const plans = input.rows / rows;
        auto const plan = [rows](cv::Mat const& all, int z) { return all.rowRange(z * rows, (z + 1) * rows); };
        bool const same = own.data == besides.data;
        for (int z = 0; z < plans; ++z) {
            cv::Mat target = plan(inside, z);
            cv::dilate(plan(input, z), target, own, {-1, -1}, 1, cv::BORDER_CONSTANT | cv::BORDER_ISOLATED);
        }
        for (int z = 0; z < plans; ++z) {
            cv::Mat target = plan(output, z);
            cv::Mat const& beside = same ? inside : input;
            plan(inside, z).copyTo(target);
            if (z > 0) {
                cv::max(target, plan(beside, z - 1), target);
            }
            if (z + 1 < plans) {
                cv::max(target, plan(beside, z + 1), target);
            }
        }
    };
}

template <class T>
void compareVolumes(unsigned int size, std::string const& sizes)
{
    Arena<T> arena(sizes, size, size, size);
    auto const dilation3D = Dilation3D::New();
    dilation3D->nbIter = 1;
    dilation3D->neighborhood3D = MOX_NEIGHBORHOOD3D_26;
    arena.compare("dilation, 26, 1 iteration", dilation3D, dilationOfPlans(square, square, static_cast<int>(size)));
    dilation3D->neighborhood3D = MOX_NEIGHBORHOOD3D_6;
    arena.compare("dilation, 6, 1 iteration", dilation3D, dilationOfPlans(cross, square, static_cast<int>(size)));
}

} // namespace

void compareSmallElements()
{
    compareSmallElements<unsigned char>();
    compareSmallElements<unsigned short>();
    compareSmallElements<float>();
}

void compareLists()
{
    compareLists<unsigned char>();
    compareLists<float>();
}

void compareVolumes()
{
    compareVolumes<unsigned char>(512, "512 x 512 x 512");
    compareVolumes<float>(256, "256 x 256 x 256");
}

} // namespace mox::benchmarks
