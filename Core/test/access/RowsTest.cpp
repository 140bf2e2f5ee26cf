#include "Core/private/access/Rows.h"

#include <gmock/gmock.h>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/FixedBorderCondition.h"
#include "testing/Images.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using access::FixedBorderCondition;
using access::Position;
using access::SafeBox;
using access::View;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

using ShortView = View<short>;
using Input = access::InputRow<ShortView>;
using Output = access::OuputRow<ShortView>;
using Queue = access::WriteQueue<ShortView>;

class Rows : public ::testing::Test {
protected:
    std::vector<short> row(int y, int z)
    {
        std::vector<short> voxels(5);
        image->readRowAt(5, voxels.data(), 0, static_cast<unsigned int>(y), static_cast<unsigned int>(z), 0, 0);
        return voxels;
    }

    void place(Output& output, Position const& position, unsigned int length, SafeBox const* box = nullptr)
    {
        output.place(view, position, length, Output::ReadBack::no, box);
        for (unsigned int i = 0; i < length; ++i) {
            output.voxels()[i] = static_cast<short>(i + 1);
        }
    }

    std::unique_ptr<memory::InMemoryImage> const image = makeImage({5, 3, 2, 1, 1}, std::vector<short>(30));
    ShortView const view{*image, FixedBorderCondition<short>::create(3)};
    Queue queue;
};

TEST_F(Rows, inputRowInsideIsTheImagesMemory)
{
    Input input;
    input.read(view, {1, 2, 1, 0, 0}, 4, Input::Source::shared);
    EXPECT_EQ(input.voxels(), view.pointer({1, 2, 1, 0, 0}, 4));
    EXPECT_EQ(input.position(), (Position{1, 2, 1, 0, 0}));
    EXPECT_EQ(input.length(), 4U);
}

TEST_F(Rows, inputRowThatMustBeACopyIsOne)
{
    Input input;
    input.read(view, {0, 0, 0, 0, 0}, 5, Input::Source::copied);
    *view.writablePointer({0, 0, 0, 0, 0}, 1) = 17;
    EXPECT_EQ(input.voxels()[0], 0);
}

TEST_F(Rows, inputRowOutsideReadsTheBorder)
{
    Input input;
    input.read(view, {-2, -1, 0, 0, 0}, 9, Input::Source::shared);
    EXPECT_THAT(std::vector<short>(input.voxels(), input.voxels() + 9), Each(3));
}

TEST_F(Rows, outputRowInsideIsTheImagesMemory)
{
    Output output;
    place(output, {1, 1, 1, 0, 0}, 3);
    EXPECT_EQ(output.voxels(), view.writablePointer({1, 1, 1, 0, 0}, 3));
    output.flush(nullptr, queue);
    EXPECT_THAT(row(1, 1), ElementsAre(0, 1, 2, 3, 0));
}

TEST_F(Rows, outputRowIsCutAtTheImage)
{
    Output output;
    place(output, {-2, 1, 0, 0, 0}, 10);
    output.flush(nullptr, queue);
    EXPECT_THAT(row(1, 0), ElementsAre(3, 4, 5, 6, 7));
}

TEST_F(Rows, outputRowOutsideIsDropped)
{
    for (Position const& p :
         {Position{0, -1, 0, 0, 0}, Position{0, 3, 0, 0, 0}, Position{0, 0, -1, 0, 0}, Position{0, 0, 2, 0, 0},
          Position{0, 0, 0, 1, 0}, Position{0, 0, 0, 0, 1}, Position{-5, 0, 0, 0, 0}, Position{5, 0, 0, 0, 0}}) {
        Output output;
        place(output, p, 5);
        output.flush(nullptr, queue);
    }
    EXPECT_THAT(voxelsOf<short>(*image), Each(0));
    EXPECT_TRUE(queue.empty());
}

TEST_F(Rows, outputRowMayBeginWithThePresentVoxels)
{
    image->writeRowAt(5, std::vector<short>{5, 6, 7, 8, 9}.data(), 0, 0, 0, 0, 0);
    Output output;
    output.place(view, {-1, 0, 0, 0, 0}, 7, Output::ReadBack::yes, nullptr);
    EXPECT_THAT(std::vector<short>(output.voxels(), output.voxels() + 7), ElementsAre(3, 5, 6, 7, 8, 9, 3));
}

TEST_F(Rows, growingARowClearsTheAddedVoxels)
{
    Output output;
    place(output, {-1, 0, 0, 0, 0}, 2);
    output.place(view, {-1, 0, 0, 0, 0}, 4, Output::ReadBack::no, nullptr);
    EXPECT_THAT(std::vector<short>(output.voxels(), output.voxels() + 4), ElementsAre(1, 2, 0, 0));
}

TEST_F(Rows, partOfARowCannotBeMade)
{
    Output output;
    place(output, {0, 0, 0, 0, 0}, 5);
    try {
        Output const part(output, 1, 2);
        ADD_FAILURE();
    } catch (UnexpectedError const& error) {
        EXPECT_THAT(error.what().c_str(),
                    HasSubstr("#1 Error : Impossible use of OuputRow partial copy constructor \n"));
    }
}

TEST_F(Rows, flushWithABoxQueuesWhatLiesBesideIt)
{
    SafeBox const box{1, 3, 1, 2, 0, 0};
    Output output;
    place(output, {0, 1, 0, 0, 0}, 5, &box);
    output.flush(&box, queue);
    EXPECT_THAT(row(1, 0), ElementsAre(0, 2, 3, 4, 0));
    EXPECT_FALSE(queue.empty());
    queue.flush(view);
    EXPECT_THAT(row(1, 0), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_TRUE(queue.empty());
}

TEST_F(Rows, flushWithABoxQueuesWholeRowsOutsideIt)
{
    SafeBox const box{0, 4, 1, 1, 0, 0};
    Output output;
    for (Position const& p : {Position{0, 0, 0, 0, 0}, Position{0, 2, 0, 0, 0}, Position{0, 1, 1, 0, 0}}) {
        place(output, p, 5, &box);
        output.flush(&box, queue);
        EXPECT_THAT(row(p.y, p.z), Each(0));
    }
    queue.flush(view);
    EXPECT_THAT(row(0, 0), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(row(2, 0), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(row(1, 1), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(row(1, 0), Each(0));
}

TEST_F(Rows, flushWithAnEmptyBoxQueuesAll)
{
    SafeBox const box{3, 2, 0, 2, 0, 1};
    Output output;
    place(output, {0, 1, 0, 0, 0}, 5, &box);
    output.flush(&box, queue);
    EXPECT_THAT(row(1, 0), Each(0));
    queue.flush(view);
    EXPECT_THAT(row(1, 0), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(Rows, flushWithABoxStillCutsAtTheImage)
{
    SafeBox const box{2, 3, 0, 2, 0, 1};
    Output output;
    place(output, {-2, 1, 0, 0, 0}, 10, &box);
    output.flush(&box, queue);
    EXPECT_THAT(row(1, 0), ElementsAre(0, 0, 5, 6, 0));
    queue.flush(view);
    EXPECT_THAT(row(1, 0), ElementsAre(3, 4, 5, 6, 7));
}

TEST_F(Rows, failedWriteOfAFlushIsTold)
{
    TestImage failing;
    fill(failing, {5, 1, 1, 1, 1}, std::vector<short>(5));
    ShortView const failingView(failing, FixedBorderCondition<short>::create());
    failing.failAt(1, TestImage::Fault::returnsFalse);
    Output output;
    output.place(failingView, {0, 0, 0, 0, 0}, 5, Output::ReadBack::no, nullptr);
    try {
        output.flush(nullptr, queue);
        ADD_FAILURE();
    } catch (UnexpectedError const& error) {
        EXPECT_THAT(error.what().c_str(), HasSubstr("Error in writeRowAt implementation, return value is false"));
    }
}

TEST(AlignedRows, beginAtSixteenBytes)
{
    auto const image = makeImage<unsigned char>({3, 1, 1, 1, 1}, {1, 2, 3});
    using AlignedView = View<unsigned char, SimdVec::AlignedAllocator<unsigned char, 16>>;
    AlignedView const view(*image, FixedBorderCondition<unsigned char>::create());
    for (unsigned int length = 4; length < 300; length += 7) { // longer than the image, so that they are buffers
        access::InputRow<AlignedView> input;
        input.read(view, {0, 0, 0, 0, 0}, length, access::InputRow<AlignedView>::Source::shared);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(input.voxels()) % 16, 0U);
        EXPECT_EQ(input.voxels()[1], 2);
    }
}

} // namespace

} // namespace mox::testing
