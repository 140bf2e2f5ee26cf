#include <Moxelcore/Core/InMemoryImage.h>

#include <gmock/gmock.h>

#include <cstring>
#include <limits>
#include <new>

#include "testing/Images.h"

namespace mox::testing {

namespace {

using memory::InMemoryImage;
using ::testing::ElementsAre;

TEST(InMemoryImage, isEmptyWhenNew)
{
    InMemoryImage const image;
    EXPECT_EQ(image.getVoxelType(), MOX_UINT8);
    EXPECT_EQ(image.getInterpretation(), INTERPRETATION_VALUE);
    for (int d = COLUMNS; d <= SPECTRAL_SERIES; ++d) {
        auto const dimension = static_cast<ImageDimension>(d);
        EXPECT_EQ(image.getSize(dimension), 0U);
        EXPECT_EQ(image.getCalibrationOrigin(dimension), 0.0);
        EXPECT_EQ(image.getCalibrationStep(dimension), 0.0);
    }
    EXPECT_EQ(image.getDescription().length(), 0U);
    EXPECT_EQ(image.getUnit().length(), 0U);
    void const* pointer = nullptr;
    EXPECT_FALSE(image.getConstRowPointerAt(0, pointer, 0, 0, 0, 0, 0));
}

TEST(InMemoryImage, keepsCalibrationPerDimension)
{
    InMemoryImage image;
    EXPECT_TRUE(image.setCalibrationOrigin(PLANS, -1.5));
    EXPECT_TRUE(image.setCalibrationStep(TIME_SERIES, 0.25));
    EXPECT_EQ(image.getCalibrationOrigin(PLANS), -1.5);
    EXPECT_EQ(image.getCalibrationOrigin(ROWS), 0.0);
    EXPECT_EQ(image.getCalibrationStep(TIME_SERIES), 0.25);
}

TEST(InMemoryImage, refusesWhatIsNoDimension)
{
    InMemoryImage image;
    for (int const value : {-1, 5}) {
        auto const none = static_cast<ImageDimension>(value);
        EXPECT_EQ(image.getSize(none), 0U);
        EXPECT_FALSE(image.setCalibrationOrigin(none, 1.0));
        EXPECT_FALSE(image.setCalibrationStep(none, 1.0));
        EXPECT_EQ(image.getCalibrationOrigin(none), 0.0);
        EXPECT_EQ(image.getCalibrationStep(none), 0.0);
    }
}

TEST(InMemoryImage, refusesWhatIsNoInterpretation)
{
    InMemoryImage image;
    EXPECT_TRUE(image.setInterpretation(INTERPRETATION_LABEL));
    EXPECT_FALSE(image.setInterpretation(static_cast<ImageInterpretation>(3)));
    EXPECT_FALSE(image.setInterpretation(static_cast<ImageInterpretation>(-1)));
    EXPECT_EQ(image.getInterpretation(), INTERPRETATION_LABEL);
}

TEST(InMemoryImage, hasNoRegionsToLock)
{
    InMemoryImage image;
    EXPECT_FALSE(image.lockRegion(0, 0, 0, 0, 0));
}

TEST(InMemoryImage, keepsAllButVoxelsAndShapeWhenAllocated)
{
    InMemoryImage image;
    image.setCalibrationStep(COLUMNS, 2.0);
    image.setDescription("a tooth");
    image.setUnit("mm");
    image.setInterpretation(INTERPRETATION_BINARY);
    EXPECT_TRUE(image.allocate(MOX_INT16, 5, 4, 3, 2, 1));
    EXPECT_EQ(Sizes::of(image), (Sizes{5, 4, 3, 2, 1}));
    EXPECT_EQ(image.getVoxelType(), MOX_INT16);
    EXPECT_EQ(image.getCalibrationStep(COLUMNS), 2.0);
    EXPECT_EQ(image.getDescription(), String("a tooth"));
    EXPECT_EQ(image.getUnit(), String("mm"));
    EXPECT_EQ(image.getInterpretation(), INTERPRETATION_BINARY);
}

TEST(InMemoryImage, laysVoxelsOutColumnsFirstAndSpectralSeriesLast)
{
    InMemoryImage image;
    Sizes const sizes{2, 3, 4, 5, 6};
    access::allocate(image, MOX_UINT32, sizes);
    void* first = nullptr;
    ASSERT_TRUE(image.getRowPointerAt(0, first, 0, 0, 0, 0, 0));
    void* pointer = nullptr;
    ASSERT_TRUE(image.getRowPointerAt(1, pointer, 1, 2, 3, 4, 5));
    auto const distance = static_cast<char*>(pointer) - static_cast<char*>(first);
    EXPECT_EQ(distance, (((((5 * 5 + 4) * 4 + 3) * 3) + 2) * 2 + 1) * 4);
    void const* constPointer = nullptr;
    ASSERT_TRUE(image.getConstRowPointerAt(1, constPointer, 1, 2, 3, 4, 5));
    EXPECT_EQ(constPointer, pointer);
}

TEST(InMemoryImage, allocatesSixteenBytesForOneComplexVoxel)
{
    InMemoryImage image;
    EXPECT_TRUE(image.allocate(MOX_COMPLEX_FLOAT64, 1, 1, 1, 1, 1));
    double const written[] = {1.0, -2.0};
    EXPECT_TRUE(image.writeRowAt(1, written, 0, 0, 0, 0, 0));
    double read[2] = {};
    EXPECT_TRUE(image.readRowAt(1, read, 0, 0, 0, 0, 0));
    EXPECT_THAT(read, ElementsAre(1.0, -2.0));
}

TEST(InMemoryImage, testsColumnsTogetherWithTheCount)
{
    auto const image = makeImage<unsigned char>({3, 2, 1, 1, 1}, {1, 2, 3, 4, 5, 6});
    void const* pointer = nullptr;
    EXPECT_TRUE(image->getConstRowPointerAt(3, pointer, 0, 1, 0, 0, 0));
    EXPECT_TRUE(image->getConstRowPointerAt(0, pointer, 3, 0, 0, 0, 0));
    EXPECT_FALSE(image->getConstRowPointerAt(1, pointer, 3, 0, 0, 0, 0));
    EXPECT_FALSE(image->getConstRowPointerAt(4, pointer, 0, 0, 0, 0, 0));
    EXPECT_FALSE(image->getConstRowPointerAt(0, pointer, 0, 2, 0, 0, 0));
    EXPECT_FALSE(image->getConstRowPointerAt(0, pointer, 0, 0, 1, 0, 0));
    EXPECT_FALSE(image->getConstRowPointerAt(0, pointer, 0, 0, 0, 1, 0));
    EXPECT_FALSE(image->getConstRowPointerAt(0, pointer, 0, 0, 0, 0, 1));
}

TEST(InMemoryImage, doesNotWrapWhenColumnPlusCountExceeds32Bits)
{
    auto const image = makeImage<unsigned char>({3, 1, 1, 1, 1}, {1, 2, 3});
    void const* pointer = nullptr;
    EXPECT_FALSE(image->getConstRowPointerAt(2, pointer, 0xFFFFFFFFU, 0, 0, 0, 0));
}

TEST(InMemoryImage, copiesNothingWhenTheRowLeavesTheImage)
{
    auto const image = makeImage<unsigned char>({3, 1, 1, 1, 1}, {1, 2, 3});
    unsigned char buffer[4] = {9, 9, 9, 9};
    EXPECT_FALSE(image->readRowAt(4, buffer, 0, 0, 0, 0, 0));
    EXPECT_THAT(buffer, ElementsAre(9, 9, 9, 9));
    EXPECT_FALSE(image->writeRowAt(4, buffer, 0, 0, 0, 0, 0));
    EXPECT_THAT(voxelsOf<unsigned char>(*image), ElementsAre(1, 2, 3));
}

/// Derived to be accessed by copies.
class PointerlessImage final : public InMemoryImage {
public:
    bool getRowPointerAt(unsigned int, void*&, unsigned int, unsigned int, unsigned int, unsigned int,
                         unsigned int) override
    {
        return false;
    }
    bool getConstRowPointerAt(unsigned int, void const*&, unsigned int, unsigned int, unsigned int, unsigned int,
                              unsigned int) const override
    {
        return false;
    }
};

TEST(InMemoryImage, copiesRowsThoughADerivedClassGivesNoPointers)
{
    PointerlessImage image;
    image.allocate(MOX_UINT8, 3, 1, 1, 1, 1);
    unsigned char const written[] = {1, 2, 3};
    EXPECT_TRUE(image.writeRowAt(3, written, 0, 0, 0, 0, 0));
    unsigned char read[3] = {};
    EXPECT_TRUE(image.readRowAt(3, read, 0, 0, 0, 0, 0));
    EXPECT_THAT(read, ElementsAre(1, 2, 3));
}

TEST(InMemoryImage, takesSizesOfZero)
{
    InMemoryImage image;
    EXPECT_TRUE(image.allocate(MOX_FLOAT64, 0, 7, 1, 1, 1));
    EXPECT_EQ(image.getSize(ROWS), 7U);
    EXPECT_EQ(image.getSize(COLUMNS), 0U);
}

TEST(InMemoryImage, refusesATypeThatDoesNotExist)
{
    auto const image = makeImage<unsigned char>({1, 1, 1, 1, 1}, {42});
    EXPECT_FALSE(image->allocate(static_cast<VoxelTypes>(12), 2, 2, 2, 1, 1));
    EXPECT_THAT(voxelsOf<unsigned char>(*image), ElementsAre(42));
}

TEST(InMemoryImage, isEmptyAfterAnAllocationThatFailed)
{
    constexpr unsigned int most = std::numeric_limits<unsigned int>::max();
    auto const image = makeImage<unsigned char>({1, 1, 1, 1, 1}, {42});
    EXPECT_THROW(image->allocate(MOX_UINT8, most, most, most, most, most), std::bad_alloc);
    EXPECT_EQ(Sizes::of(*image), Sizes());
    EXPECT_TRUE(image->allocate(MOX_UINT8, 2, 1, 1, 1, 1));
}

TEST(InMemoryImage, holdsMoreThanFourGibibytes)
{
    // The pages are never touched but for two, so that the memory is not really taken.
    InMemoryImage image;
    ASSERT_TRUE(image.allocate(MOX_UINT8, 65536, 65537, 1, 1, 1));
    unsigned char const written = 7;
    ASSERT_TRUE(image.writeRowAt(1, &written, 5, 65536, 0, 0, 0));
    unsigned char const other = 9;
    ASSERT_TRUE(image.writeRowAt(1, &other, 5, 0, 0, 0, 0)); // the same offset modulo 2^32
    unsigned char read = 0;
    ASSERT_TRUE(image.readRowAt(1, &read, 5, 65536, 0, 0, 0));
    EXPECT_EQ(read, 7);
}

} // namespace

} // namespace mox::testing
