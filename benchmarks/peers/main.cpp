#include <Moxelcore/Core/Exception.h>

#include <opencv2/core.hpp>

#include <tbb/global_control.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>

#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {
void compareDecimation();
void compareGrowth();
void compareLabeling();
void compareLists();
void compareLookUpTable();
void comparePointOperations();
void compareRegistration();
void compareSmallElements();
void compareTextures();
void compareThreshold();
void compareVolumes();
} // namespace mox::benchmarks

namespace {

struct Group {
    char const* name;
    void (*compare)();
};

constexpr Group groups[] = {{"Threshold", mox::benchmarks::compareThreshold},
                            {"Labeling", mox::benchmarks::compareLabeling},
                            {"LookUpTable", mox::benchmarks::compareLookUpTable},
                            {"Decimation", mox::benchmarks::compareDecimation},
                            {"PointOperations", mox::benchmarks::comparePointOperations},
                            {"SmallElements", mox::benchmarks::compareSmallElements},
                            {"Lists", mox::benchmarks::compareLists},
                            {"Volumes", mox::benchmarks::compareVolumes},
                            {"Textures", mox::benchmarks::compareTextures},
                            {"Registration", mox::benchmarks::compareRegistration},
                            {"Growth", mox::benchmarks::compareGrowth}};

} // namespace

/// The same work by this library, by OpenCV and by a bare loop, in one process on the same number of threads:
/// moxelcore_peers [threads [group]]
int main(int argc, char** argv)
{
    int const threads = argc > 1 ? std::atoi(argv[1]) : 2;
    tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(threads));
    cv::setNumThreads(threads);
    std::printf("OpenCV %s, %d threads.\n\n", CV_VERSION, threads);
    mox::benchmarks::beginTable();
    try {
        for (Group const& group : groups) {
            if (argc < 3 || std::strcmp(argv[2], group.name) == 0) {
                group.compare();
            }
        }
    } catch (std::exception const& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    } catch (mox::Exception const& exception) {
        std::fprintf(stderr, "%s\n", exception.what().c_str());
        return 1;
    }
    return 0;
}
