#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <cstring>
#include <limits>

#include "apps/moxel/ImageFile.h"
#include "testing/host/HostFiles.h"

// Real images through this library and through an independent one.

namespace moxel::testing {
namespace {

using namespace mox::point_operations;
using mox::memory::InMemoryImage;

struct RealImage {
    char const* name;
    int cvType;

    friend std::ostream& operator<<(std::ostream& stream, RealImage const& image) { return stream << image.name; }
};

constexpr RealImage integerImages[] = {
    {"coins.png", CV_8U}, {"tooth_ct_u16.tif", CV_16U}, {"elevation_i16.tif", CV_16S}};
constexpr RealImage floatImages[] = {{"topobathy_f32.tif", CV_32F}, {"ct_slice_f32.tif", CV_32F}};

/// The image's own memory, plan below plan.
cv::Mat matrixOf(mox::ImageModel& image, int cvType)
{
    void* voxels = nullptr;
    EXPECT_TRUE(image.getRowPointerAt(0, voxels, 0, 0, 0, 0, 0));
    return {static_cast<int>(image.getSize(mox::ROWS) * image.getSize(mox::PLANS)),
            static_cast<int>(image.getSize(mox::COLUMNS)), cvType, voxels};
}

cv::Mat converted(cv::Mat const& matrix, int cvType)
{
    cv::Mat result;
    matrix.convertTo(result, cvType);
    return result;
}

/// Two images: the real one, and the same turned by half.
class PointOperationsPeer : public ::testing::TestWithParam<RealImage> {
protected:
    void SetUp() override
    {
        auto const path = realImages() / GetParam().name;
        if (!std::filesystem::exists(path)) {
            GTEST_SKIP() << "there is no real image " << path;
        }
        image_ = readImage(path, {});
        turned_ = readImage(path, {});
        a_ = matrixOf(*image_, GetParam().cvType);
        b_ = matrixOf(*turned_, GetParam().cvType);
        cv::flip(a_, b_, -1);
    }

    static void expectSame(InMemoryImage& output, cv::Mat const& wanted)
    {
        cv::Mat const ours = matrixOf(output, wanted.type());
        ASSERT_EQ(mox::helper::getSizeOf(output.getVoxelType()), wanted.elemSize());
        ASSERT_EQ(ours.size(), wanted.size());
        EXPECT_EQ(std::memcmp(ours.data, wanted.data, wanted.total() * wanted.elemSize()), 0);
    }

    /// `wanted` in double, in which what is computed of these voxels is exact or rounds to their own type as if it
    /// were; integers are truncated and wrap.
    static void expectValues(InMemoryImage const& output, cv::Mat const& wanted)
    {
        mox::dispatch(mox::RealVoxels(), output.getVoxelType(), [&]<class T>() {
            auto const ours = voxelsOf<T>(output);
            ASSERT_EQ(ours.size(), wanted.total());
            for (std::size_t i = 0; i < ours.size(); ++i) {
                double const value = wanted.ptr<double>()[i];
                if constexpr (std::is_integral_v<T>) {
                    ASSERT_EQ(ours[i], static_cast<T>(static_cast<mox::int64>(value))) << i;
                } else {
                    ASSERT_EQ(ours[i], static_cast<T>(value)) << i;
                }
            }
        });
    }

    template <class Algorithm>
    void expectOfOne(Algorithm& algorithm, cv::Mat const& wanted)
    {
        InMemoryImage output;
        algorithm.input = image_.get();
        algorithm.output = &output;
        algorithm.run();
        expectSame(output, wanted);
    }

    void expectArithmetic(int operation, cv::Mat const& wanted)
    {
        SCOPED_TRACE(operation);
        InMemoryImage output;
        auto const algorithm = ArithmeticImageProcessing::New();
        algorithm->input1 = image_.get();
        algorithm->input2 = turned_.get();
        algorithm->arithmeticOperator = operation;
        algorithm->output = &output;
        algorithm->run();
        expectValues(output, wanted);
    }

    void expectArithmeticWith(double value, int operation, cv::Mat const& wanted)
    {
        SCOPED_TRACE(operation);
        InMemoryImage output;
        auto const algorithm = ArithmeticValueProcessing::New();
        algorithm->input = image_.get();
        algorithm->inputValue = value;
        algorithm->arithmeticOperator = operation;
        algorithm->output = &output;
        algorithm->run();
        expectValues(output, wanted);
    }

    void expectLogic(int operation, cv::Mat const& wanted)
    {
        SCOPED_TRACE(operation);
        InMemoryImage output;
        auto const algorithm = LogicalImageProcessing::New();
        algorithm->input1 = image_.get();
        algorithm->input2 = turned_.get();
        algorithm->logicalOperator = operation;
        algorithm->output = &output;
        algorithm->run();
        expectSame(output, wanted);
    }

    decltype(readImage({}, {})) image_;
    decltype(readImage({}, {})) turned_;
    cv::Mat a_;
    cv::Mat b_;
};

class PointOperationsPeerOfIntegers : public PointOperationsPeer {};
class PointOperationsPeerOfBytes : public PointOperationsPeer {};

TEST_P(PointOperationsPeer, agreesOnArithmetic)
{
    cv::Mat const a = converted(a_, CV_64F);
    cv::Mat const b = converted(b_, CV_64F);
    cv::Mat quotient;
    cv::divide(a, b, quotient);
    quotient.setTo(0, b == 0);
    expectArithmetic(ARITHMETIC_ADD, a + b);
    expectArithmetic(ARITHMETIC_SUBTRACT, a - b);
    expectArithmetic(ARITHMETIC_MULTIPLY, a.mul(b));
    expectArithmetic(ARITHMETIC_DIVIDE, quotient);
    expectArithmetic(ARITHMETIC_MINIMUM, cv::min(a, b));
    expectArithmetic(ARITHMETIC_MAXIMUM, cv::max(a, b));
}

TEST_P(PointOperationsPeer, agreesOnArithmeticWithAValue)
{
    cv::Mat const a = converted(a_, CV_64F);
    cv::Mat quotient;
    cv::divide(a, cv::Mat(a.size(), CV_64F, cv::Scalar(7)), quotient);
    expectArithmeticWith(7, ARITHMETIC_ADD, a + 7);
    expectArithmeticWith(7, ARITHMETIC_SUBTRACT, a - 7);
    expectArithmeticWith(7, ARITHMETIC_MULTIPLY, a * 7);
    expectArithmeticWith(7, ARITHMETIC_DIVIDE, quotient);
    expectArithmeticWith(0.5, ARITHMETIC_MULTIPLY, a * 0.5);
}

TEST_P(PointOperationsPeer, agreesOnMasks)
{
    InMemoryImage mask;
    mask.allocate(mox::MOX_UINT8, image_->getSize(mox::COLUMNS), image_->getSize(mox::ROWS),
                  image_->getSize(mox::PLANS), 1, 1);
    cv::Mat const isLarger = a_ > b_;
    isLarger.copyTo(matrixOf(mask, CV_8U));
    auto const algorithm = MaskImageProcessing::New();
    algorithm->inputBinary = &mask;
    cv::Mat wanted = cv::Mat::zeros(a_.size(), a_.type());
    a_.copyTo(wanted, isLarger);
    expectOfOne(*algorithm, wanted);
}

TEST_P(PointOperationsPeer, agreesOnExtremaAndMean)
{
    auto const algorithm = mox::analysis::IntensityExtrema::New();
    algorithm->input = image_.get();
    algorithm->run();
    double low = 0;
    double high = 0;
    cv::minMaxIdx(a_, &low, &high);
    double const mean = cv::mean(a_)[0];
    EXPECT_EQ(algorithm->outputMinimum, low);
    EXPECT_EQ(algorithm->outputMaximum, high);
    EXPECT_NEAR(algorithm->outputMean, mean, std::abs(mean) * 1e-12);
}

/// The components are the image, the turned one and the image again.
TEST_P(PointOperationsPeer, agreesOnAmplitudes)
{
    cv::Mat const a = converted(a_, CV_64F);
    cv::Mat const b = converted(b_, CV_64F);
    cv::Mat amplitude;
    cv::sqrt(a.mul(a) + b.mul(b) + a.mul(a), amplitude);
    cv::Mat const largest = cv::max(cv::Mat(cv::abs(a)), cv::Mat(cv::abs(b)));
    InMemoryImage output;
    auto const algorithm = GradientMagnitude3D::New();
    algorithm->input1 = image_.get();
    algorithm->input2 = turned_.get();
    algorithm->input3 = image_.get();
    algorithm->output = &output;
    mox::dispatch(mox::RealVoxels(), image_->getVoxelType(), [&]<class T>() {
        cv::Mat const limit(a.size(), CV_64F, cv::Scalar(static_cast<double>(std::numeric_limits<T>::max())));
        algorithm->outputMode = mox::point_operations::GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_EUCLIDEAN;
        algorithm->run();
        expectValues(output, cv::Mat(cv::min(amplitude, limit)));
        algorithm->outputMode = mox::point_operations::GRADIENTMAGNITUDEOUTPUT_AMPLITUDE_MAX_OF_MAGS;
        algorithm->run();
        expectValues(output, cv::Mat(cv::min(largest, limit)));
    });
}

TEST_P(PointOperationsPeerOfIntegers, agreesOnLogic)
{
    cv::Mat wanted;
    cv::bitwise_and(a_, b_, wanted);
    expectLogic(LOGICAL_AND, wanted);
    expectLogic(LOGICAL_NAND, ~wanted);
    cv::bitwise_or(a_, b_, wanted);
    expectLogic(LOGICAL_OR, wanted);
    expectLogic(LOGICAL_NOR, ~wanted);
    cv::bitwise_xor(a_, b_, wanted);
    expectLogic(LOGICAL_XOR, wanted);
    expectLogic(LOGICAL_NXOR, ~wanted);
    cv::bitwise_and(a_, ~b_, wanted);
    expectLogic(LOGICAL_SUB, wanted);
    expectOfOne(*LogicalNotProcessing::New(), ~a_);
}

TEST_P(PointOperationsPeerOfIntegers, agreesOnLogicWithAValue)
{
    auto const algorithm = LogicalValueProcessing::New();
    algorithm->inputValue = 0x5A;
    algorithm->logicalOperator = static_cast<int>(LOGICAL_XOR);
    cv::Mat wanted;
    cv::bitwise_xor(a_, cv::Scalar(0x5A), wanted);
    expectOfOne(*algorithm, wanted);
}

TEST_P(PointOperationsPeerOfIntegers, agreesOnTheInverse)
{
    image_->setInterpretation(mox::INTERPRETATION_VALUE);
    expectOfOne(*InvertImage::New(), ~a_);
}

/// To the right, what is shifted out is taken off first, so that the division is exact.
TEST_P(PointOperationsPeerOfIntegers, agreesOnShifts)
{
    auto const shift = BitShift::New();
    shift->shiftCount = 3;
    shift->shiftDirection = 1;
    cv::Mat lost;
    cv::bitwise_and(a_, cv::Scalar(7), lost);
    expectOfOne(*shift, converted((converted(a_, CV_64F) - converted(lost, CV_64F)) / 8, a_.type()));
    shift->shiftDirection = 0;
    InMemoryImage output;
    shift->output = &output;
    shift->run();
    expectValues(output, converted(a_, CV_64F) * 8);
}

/// The peer's tables are for bytes.
TEST_P(PointOperationsPeerOfBytes, agreesOnTables)
{
    cv::Mat table(1, 256, CV_8U);
    mox::Vector<double> lut;
    for (int i = 0; i < 256; ++i) {
        table.data[i] = static_cast<unsigned char>(255 - i * i / 255);
        lut.push_back(table.data[i]);
    }
    auto const algorithm = Anamorphosis::New();
    algorithm->lut = lut;
    cv::Mat wanted;
    cv::LUT(a_, table, wanted);
    expectOfOne(*algorithm, wanted);
}

auto const nameOf = [](auto const& test) {
    std::string const name = test.param.name;
    return name.substr(0, name.find('.'));
};
INSTANTIATE_TEST_SUITE_P(Integers, PointOperationsPeer, ::testing::ValuesIn(integerImages), nameOf);
INSTANTIATE_TEST_SUITE_P(Floats, PointOperationsPeer, ::testing::ValuesIn(floatImages), nameOf);
INSTANTIATE_TEST_SUITE_P(Integers, PointOperationsPeerOfIntegers, ::testing::ValuesIn(integerImages), nameOf);
INSTANTIATE_TEST_SUITE_P(Bytes, PointOperationsPeerOfBytes, ::testing::Values(integerImages[0]), nameOf);

} // namespace
} // namespace moxel::testing
