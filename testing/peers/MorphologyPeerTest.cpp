#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <cstring>

#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"

// Real images through this library and through an independent one.

namespace moxel::testing {
namespace {

using namespace mox::morphology;

class MorphologyPeer : public ::testing::Test {
protected:
    void SetUp() override
    {
        auto const path = realImages() / "coins.png";
        if (!std::filesystem::exists(path)) {
            GTEST_SKIP() << "there is no real image " << path;
        }
        image_ = readImage(path, {});
        void* row = nullptr;
        ASSERT_TRUE(image_->getRowPointerAt(0, row, 0, 0, 0, 0, 0));
        matrix_ = cv::Mat(static_cast<int>(image_->getSize(mox::ROWS)), static_cast<int>(image_->getSize(mox::COLUMNS)),
                          CV_8U, row);
    }

    template <class Algorithm>
    void expect(Algorithm& algorithm, cv::Mat const& wanted)
    {
        mox::memory::InMemoryImage output;
        algorithm.input = image_.get();
        algorithm.output = &output;
        algorithm.run();
        void* row = nullptr;
        ASSERT_TRUE(output.getRowPointerAt(0, row, 0, 0, 0, 0, 0));
        EXPECT_EQ(std::memcmp(row, wanted.data, wanted.total()), 0);
    }

    /// The four chains.
    template <class Erosion, class Dilation, class Opening, class Closing, class Set>
    void expectChains(cv::Mat const& element, int iterations, Set const& set)
    {
        auto const run = [&](auto const& algorithm, int operation) {
            set(*algorithm);
            cv::Mat wanted;
            cv::morphologyEx(matrix_, wanted, operation, element, {-1, -1}, iterations);
            expect(*algorithm, wanted);
        };
        run(Erosion::New(), cv::MORPH_ERODE);
        run(Dilation::New(), cv::MORPH_DILATE);
        run(Opening::New(), cv::MORPH_OPEN);
        run(Closing::New(), cv::MORPH_CLOSE);
    }

    cv::Mat matrix_;

private:
    decltype(readImage({}, {})) image_;
};

cv::Mat const square = cv::Mat::ones(3, 3, CV_8U);
cv::Mat const cross = (cv::Mat_<unsigned char>(3, 3) << 0, 1, 0, 1, 1, 1, 0, 1, 0);

TEST_F(MorphologyPeer, agreesOnSmallElements)
{
    for (int const neighborhood : {MOX_NEIGHBORHOOD2D_4, MOX_NEIGHBORHOOD2D_8}) {
        for (int const iterations : {1, 3, 12}) {
            expectChains<Erosion2D, Dilation2D, Opening2D, Closing2D>(
                neighborhood == MOX_NEIGHBORHOOD2D_4 ? cross : square, iterations, [&](auto& algorithm) {
                    algorithm.neighborhood2D = neighborhood;
                    algorithm.nbIter = static_cast<unsigned int>(iterations);
                });
        }
    }
}

TEST_F(MorphologyPeer, agreesOnDisks)
{
    for (int const radius : {1, 2, 5, 10, 19}) {
        cv::Mat element(2 * radius + 1, 2 * radius + 1, CV_8U);
        for (int y = -radius; y <= radius; ++y) {
            for (int x = -radius; x <= radius; ++x) {
                element.at<unsigned char>(y + radius, x + radius) = x * x + y * y <= radius * radius;
            }
        }
        expectChains<ErosionDisk2D, DilationDisk2D, OpeningDisk2D, ClosingDisk2D>(element, 1, [&](auto& algorithm) {
            algorithm.elementSize = static_cast<unsigned int>(radius);
            algorithm.precision = MOX_ALGO_PRECISE;
        });
    }
}

TEST_F(MorphologyPeer, agreesOnLines)
{
    for (int const length : {2, 9, 40}) {
        cv::Mat const element = cv::Mat::ones(1, length, CV_8U);
        auto const line = DilationLine2D::New();
        line->orientationAngle = 0.0;
        line->elementSize = static_cast<unsigned int>(length);
        cv::Mat wanted;
        cv::dilate(matrix_, wanted, element, {0, 0});
        expect(*line, wanted);
        auto const vertical = ErosionLine2D::New();
        vertical->orientationAngle = -90.0;
        vertical->elementSize = static_cast<unsigned int>(length);
        cv::erode(matrix_, wanted, element.t(), {0, 0});
        expect(*vertical, wanted);
    }
}

} // namespace
} // namespace moxel::testing
