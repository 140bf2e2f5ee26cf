#include "Core/private/filters/StableInput.h"

#include <Moxelcore/Core/Exception.h>

#include <gmock/gmock.h>

#include "testing/Images.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using filters::StableInput;

TEST(StableInput, isTheInputItselfBesideAnotherImage)
{
    memory::InMemoryImage const input;
    memory::InMemoryImage const output;
    EXPECT_EQ(&StableInput(input, output).image(), &input);
}

TEST(StableInput, isACopyOfTheInputThatIsTheOutput)
{
    std::mt19937 random(3);
    for (bool const givesPointers : {false, true}) {
        Sizes const sizes{7, 5, 3, 2, 2};
        auto const voxels = randomVoxels<short>(random, sizes.numOfVoxels());
        TestImage image;
        image.givesPointers = givesPointers;
        fill(image, sizes, voxels);
        StableInput const input(image, image);
        fill(image, sizes, std::vector<short>(voxels.size()));
        EXPECT_EQ(input.image().getVoxelType(), MOX_INT16);
        EXPECT_EQ(Sizes::of(input.image()), sizes);
        EXPECT_EQ(voxelsOf<short>(input.image()), voxels);
    }
}

TEST(StableInput, copiesImagesWithoutVoxels)
{
    for (Sizes const& sizes : {Sizes{0, 5, 3, 2, 2}, Sizes{7, 5, 3, 0, 2}, Sizes()}) {
        auto const image = makeImage(sizes, std::vector<double>());
        EXPECT_EQ(Sizes::of(StableInput(*image, *image).image()), sizes);
    }
}

TEST(StableInput, failsWhereARowCannotBeCopied)
{
    TestImage image;
    fill(image, {2, 3, 1, 1, 1}, std::vector<short>(6));
    image.failAt(2, TestImage::Fault::returnsFalse);
    try {
        StableInput const input(image, image);
        FAIL();
    } catch (UnexpectedError const& error) {
        EXPECT_THAT(error.what().c_str(),
                    ::testing::HasSubstr("Error in readRowAt implementation, return value is false"));
    }
}

} // namespace

} // namespace mox::testing
