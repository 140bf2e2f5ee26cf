#include <Moxelcore/Moxelcore.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

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
    void compare(std::string const& title, boost::shared_ptr<Algorithm> const& algorithm, Peer const& peer,
                 bool withScalarLevel = false)
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
        std::vector<Contestant> contestants = {{"Moxelcore", [&] { algorithm->run(); }},
                                               {"in place", inPlace},
                                               {"OpenCV", [&] { peer(matrix_, result_); }}};
        if (withScalarLevel) {
            contestants.push_back({"scalar level", scalar});
        }
        contest(title + ' ' + helper::getText(voxelTypeOf<T>).c_str() + ", " + sizes_, static_cast<double>(count_),
                contestants);
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

std::string iterationsText(unsigned int iterations)
{
    return std::to_string(iterations) + (iterations == 1 ? " iteration" : " iterations");
}

template <class T>
void compareSmallElements()
{
    Arena<T> arena("4096 x 4096", 4096, 4096);
    for (unsigned int const n : {1U, 3U, 10U, 25U}) {
        int const times = static_cast<int>(n);
        bool const withScalarLevel = n == 1;
        arena.compare("dilation, 8, " + iterationsText(n), dilation2D(MOX_NEIGHBORHOOD2D_8, n), dilation(square, times),
                      withScalarLevel);
        arena.compare("dilation, 4, " + iterationsText(n), dilation2D(MOX_NEIGHBORHOOD2D_4, n), dilation(cross, times),
                      withScalarLevel);
    }
    for (unsigned int const n : {3U, 10U}) {
        auto const closing = Closing2D::New();
        closing->nbIter = n;
        arena.compare("closing, 8, " + iterationsText(n), closing, [n](cv::Mat const& input, cv::Mat& output) {
            cv::morphologyEx(input, output, cv::MORPH_CLOSE, square, {-1, -1}, static_cast<int>(n));
        });
    }
    auto const disk = DilationDisk2D::New();
    disk->elementSize = 10;
    arena.compare("dilation, fast disk of radius 10", disk, [](cv::Mat const& input, cv::Mat& output) {
        cv::dilate(input, output, square, {-1, -1}, 5);
        cv::dilate(output, output, cross, {-1, -1}, 5);
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

/// The voxels of a line of 0 to 90 degrees that goes up the image, as the algorithm has it.
Peer lineDilation(double angle, int length)
{
    double const radians = angle * 3.141592653589793 / 180;
    bool const isSteep = std::sin(radians) >= std::cos(radians);
    double const slope = isSteep ? std::cos(radians) / std::sin(radians) : -std::tan(radians);
    auto const minor = [slope](int i) { return static_cast<int>(std::floor(i * slope + 0.5)); };
    int const across = std::abs(minor(length - 1));
    cv::Mat element = cv::Mat::zeros(isSteep ? length : across + 1, isSteep ? across + 1 : length, CV_8U);
    for (int i = 0; i < length; ++i) {
        element.at<unsigned char>(isSteep ? length - 1 - i : across + minor(i), isSteep ? minor(i) : i) = 1;
    }
    return dilation(element, 1, {0, element.rows - 1});
}

template <class T>
void compareLists()
{
    Arena<T> arena("2048 x 2048", 2048, 2048);
    for (int const radius : {3, 10, 25}) {
        auto const disk = DilationDisk2D::New();
        disk->elementSize = static_cast<unsigned int>(radius);
        disk->precision = MOX_ALGO_PRECISE;
        arena.compare("dilation, disk of radius " + std::to_string(radius), disk, dilation(diskElement(radius)),
                      radius == 10);
    }
    for (double const angle : {0.0, 30.0, 45.0, 60.0, 90.0}) {
        auto const line = DilationLine2D::New();
        line->elementSize = 21;
        line->orientationAngle = angle;
        arena.compare("dilation, line of 21 at " + std::to_string(static_cast<int>(angle)) + " degrees", line,
                      lineDilation(angle, 21));
    }
}

/// The peer knows planes only: one dilation per plan and distance of plans, then the larger of them. The plans are
/// matrices of their own, or it would read from one into the next. `elementAt` gives the element at a distance, and may
/// give one and the same for several.
Peer dilationOfPlans(std::vector<cv::Mat> const& elementAt, int rows, int iterations = 1)
{
    return [=](cv::Mat const& input, cv::Mat& output) {
        int const plans = input.rows / rows;
        auto const plan = [rows](cv::Mat const& all, int z) { return all.rowRange(z * rows, (z + 1) * rows); };
        static std::vector<cv::Mat> made; // kept from call to call, as a program that cares for speed would
        made.resize(std::max(made.size(), elementAt.size()));
        std::vector<cv::Mat> dilated(elementAt.size());
        for (std::size_t d = 0; d < elementAt.size(); ++d) {
            bool const isPoint = elementAt[d].total() == 1;
            if (isPoint || (d > 0 && elementAt[d].data == elementAt[d - 1].data)) {
                dilated[d] = isPoint ? input : dilated[d - 1];
                continue;
            }
            made[d].create(input.size(), input.type());
            dilated[d] = made[d];
            for (int z = 0; z < plans; ++z) {
                cv::Mat target = plan(dilated[d], z);
                cv::dilate(plan(input, z), target, elementAt[d], {-1, -1}, iterations,
                           cv::BORDER_CONSTANT | cv::BORDER_ISOLATED);
            }
        }
        for (int z = 0; z < plans; ++z) {
            cv::Mat target = plan(output, z);
            plan(dilated[0], z).copyTo(target);
            for (int d = 1; d < static_cast<int>(elementAt.size()); ++d) {
                for (int const other : {z - d, z + d}) {
                    if (other >= 0 && other < plans) {
                        cv::max(target, plan(dilated[static_cast<std::size_t>(d)], other), target);
                    }
                }
            }
        }
    };
}

template <class T>
void compareVolumes(unsigned int size, std::string const& sizes, std::vector<unsigned int> const& iterations)
{
    Arena<T> arena(sizes, size, size, size);
    int const rows = static_cast<int>(size);
    auto const dilation3D = Dilation3D::New();
    for (unsigned int const n : iterations) {
        dilation3D->nbIter = n;
        dilation3D->neighborhood3D = MOX_NEIGHBORHOOD3D_26;
        arena.compare("dilation, 26, " + iterationsText(n), dilation3D,
                      dilationOfPlans(std::vector(n + 1, square), rows, static_cast<int>(n)));
    }
    dilation3D->nbIter = 1;
    dilation3D->neighborhood3D = MOX_NEIGHBORHOOD3D_6;
    cv::Mat const point = cv::Mat::ones(1, 1, CV_8U);
    arena.compare("dilation, 6, 1 iteration", dilation3D, dilationOfPlans({cross, point}, rows));
}

template <class T>
void compareBalls()
{
    Arena<T> arena("256 x 256 x 256", 256, 256, 256);
    constexpr int radius = 5;
    std::vector<cv::Mat> elements;
    for (int z = 0; z <= radius; ++z) {
        cv::Mat element(2 * radius + 1, 2 * radius + 1, CV_8U);
        for (int y = -radius; y <= radius; ++y) {
            for (int x = -radius; x <= radius; ++x) {
                element.at<unsigned char>(y + radius, x + radius) = x * x + y * y + z * z <= radius * radius;
            }
        }
        elements.push_back(element);
    }
    auto const ball = DilationBall3D::New();
    ball->elementSize = radius;
    ball->precision = MOX_ALGO_PRECISE;
    arena.compare("dilation, ball of radius 5", ball, dilationOfPlans(elements, 256));
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
    compareLists<unsigned short>();
    compareLists<float>();
}

void compareVolumes()
{
    compareVolumes<unsigned char>(512, "512 x 512 x 512", {1, 3, 10});
    compareVolumes<float>(256, "256 x 256 x 256", {1});
    compareBalls<unsigned char>();
    compareBalls<float>();
}

} // namespace mox::benchmarks
