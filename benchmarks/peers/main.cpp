#include <opencv2/core.hpp>

#include <tbb/global_control.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace mox::benchmarks {
void compareDecimation();
void compareLabeling();
void compareThreshold();
} // namespace mox::benchmarks

/// The same work by this library, by OpenCV and by a bare loop, in one process on the same number of threads.
int main(int argc, char** argv)
{
    int const threads = argc > 1 ? std::atoi(argv[1]) : 2;
    tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(threads));
    cv::setNumThreads(threads);
    std::printf("OpenCV %s, %d threads. The ratio is how many times as long as ours the contestant takes.\n\n",
                CV_VERSION, threads);
    std::printf("| work | contestant | Mvoxel/s | ratio |\n|---|---|---|---|\n");
    mox::benchmarks::compareThreshold();
    mox::benchmarks::compareLabeling();
    mox::benchmarks::compareDecimation();
    return 0;
}
