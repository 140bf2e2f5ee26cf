#include "Core/private/access/View.h"

#include <gmock/gmock.h>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/FixedBorderCondition.h"
#include "testing/Images.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using access::FixedBorderCondition;
using access::View;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(View, givesTheMemoryOfRowsInside)
{
    auto const image = makeImage<short>({3, 2, 2, 2, 2}, std::vector<short>(48));
    View<short> const view(*image, FixedBorderCondition<short>::create());
    EXPECT_TRUE(view.isContiguous());
    void* expected = nullptr;
    ASSERT_TRUE(image->getRowPointerAt(2, expected, 1, 1, 1, 1, 1));
    EXPECT_EQ(view.pointer({1, 1, 1, 1, 1}, 2), expected);
    EXPECT_EQ(view.writablePointer({1, 1, 1, 1, 1}, 2), expected);
}

TEST(View, givesNoMemoryWhereARowLeavesTheImage)
{
    auto const image = makeImage<short>({3, 2, 1, 1, 1}, {1, 2, 3, 4, 5, 6});
    View<short> const view(*image, FixedBorderCondition<short>::create());
    EXPECT_NE(view.pointer({0, 0, 0, 0, 0}, 3), nullptr);
    EXPECT_EQ(view.pointer({1, 0, 0, 0, 0}, 3), nullptr);
    for (access::Position const& p :
         {access::Position{-1, 0, 0, 0, 0}, access::Position{0, 2, 0, 0, 0}, access::Position{0, -1, 0, 0, 0},
          access::Position{0, 0, 1, 0, 0}, access::Position{0, 0, 0, 1, 0}, access::Position{0, 0, 0, 0, 1}}) {
        EXPECT_EQ(view.pointer(p, 1), nullptr);
        EXPECT_EQ(view.writablePointer(p, 1), nullptr);
    }
}

TEST(View, isRefusedForImagesInWhichPositionsAreNoNumbers)
{
    auto const view = [](Sizes const& sizes) {
        memory::InMemoryImage image;
        access::allocate(image, MOX_UINT8, sizes);
        View<unsigned char> const made(image, FixedBorderCondition<unsigned char>::create());
    };
    constexpr unsigned int most = 1U << 30U;
    EXPECT_NO_THROW(view({most, 0, 1, 1, 1}));
    for (Sizes const& sizes : {Sizes{most + 1, 0, 1, 1, 1}, Sizes{0, most + 1, 1, 1, 1}, Sizes{0, 1, ~0U, 1, 1},
                               Sizes{0, 1, 1, most + 1, 1}, Sizes{0, 1, 1, 1, most + 1}}) {
        try {
            view(sizes);
            ADD_FAILURE() << "made";
        } catch (InvalidCall const& error) {
            EXPECT_THAT(error.what().c_str(),
                        HasSubstr("An image must have at most 1073741824 elements in each dimension."));
        }
    }
}

TEST(View, readsThroughTheBorderCondition)
{
    auto const image = makeImage<short>({2, 1, 1, 1, 1}, {1, 2});
    View<short> const view(*image, FixedBorderCondition<short>::create(9));
    short row[4] = {};
    view.readRow(row, row + 4, {-1, 0, 0, 0, 0});
    EXPECT_THAT(row, ElementsAre(9, 1, 2, 9));
}

TEST(View, asksAnotherImageForItsPointers)
{
    TestImage image;
    fill(image, {2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    View<short> const without(image, FixedBorderCondition<short>::create());
    EXPECT_FALSE(without.isContiguous());
    EXPECT_EQ(without.pointer({0, 0, 0, 0, 0}, 2), nullptr);
    EXPECT_EQ(without.writablePointer({0, 0, 0, 0, 0}, 2), nullptr);

    image.givesPointers = true;
    View<short> const with(image, FixedBorderCondition<short>::create());
    EXPECT_FALSE(with.isContiguous());
    short const* const row = with.pointer({0, 0, 0, 0, 0}, 2);
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(with.writablePointer({0, 0, 0, 0, 0}, 2), row);
    EXPECT_EQ(row[1], 2);
}

/// An image class derived from the library's own may answer rows in its own way.
class OffsetImage final : public memory::InMemoryImage {
public:
    bool getConstRowPointerAt(unsigned int count, void const*& pointer, unsigned int x, unsigned int y, unsigned int z,
                              unsigned int t, unsigned int s) const override
    {
        bool const given = InMemoryImage::getConstRowPointerAt(count, pointer, x, y, z, t, s);
        pointer = static_cast<char const*>(pointer) + 1;
        return given;
    }
};

TEST(View, takesNoPointerThatIsNotAligned)
{
    OffsetImage image;
    fill(image, {2, 1, 1, 1, 1}, std::vector<double>{1, 2});
    View<double> const view(image, FixedBorderCondition<double>::create());
    EXPECT_FALSE(view.isContiguous());
    EXPECT_EQ(view.pointer({0, 0, 0, 0, 0}, 1), nullptr);
}

TEST(View, knowsWhetherTwoAreOnOneImage)
{
    auto const a = makeImage<short>({1, 1, 1, 1, 1}, {1});
    auto const b = makeImage<short>({1, 1, 1, 1, 1}, {1});
    auto const border = FixedBorderCondition<short>::create();
    View<short> const view(*a, border);
    EXPECT_TRUE(view.isOnSameImage(View<short>(static_cast<ImageModel const&>(*a), border)));
    EXPECT_FALSE(view.isOnSameImage(View<short>(*b, border)));
}

TEST(View, tellsAFailedWrite)
{
    TestImage image;
    fill(image, {2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    View<short> const view(image, FixedBorderCondition<short>::create());
    image.failAt(1, TestImage::Fault::returnsFalse);
    short const row[] = {3, 4};
    try {
        view.writeRow(row, 2, {0, 0, 0, 0, 0});
        ADD_FAILURE();
    } catch (UnexpectedError const& error) {
        EXPECT_THAT(error.what().c_str(),
                    HasSubstr("#1 Error : Error in writeRowAt implementation, return value is false \n"));
    }
    EXPECT_THAT(voxelsOf<short>(image), ElementsAre(1, 2));
}

} // namespace

} // namespace mox::testing
