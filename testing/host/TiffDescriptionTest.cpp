#include "apps/moxel/TiffDescription.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <gmock/gmock.h>

#include "apps/moxel/ImageJDescription.h"

namespace moxel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

TiffDescription parse(std::string const& tag, TiffPages const& pages = {1, 1, 1})
{
    return parseTiffDescription(tag, pages);
}

TEST(TiffDescription, OfImageJ)
{
    auto const description = parse("ImageJ=1.53t\nimages=24\nchannels=2\nslices=3\nframes=4\nhyperstack=true\n"
                                   "unit=\\u00B5m\nspacing=2.5\nfinterval=0.25\nloop=false\n");
    EXPECT_THAT(description.axes,
                ElementsAre(PageAxis{mox::SPECTRAL_SERIES, 2}, PageAxis{mox::PLANS, 3}, PageAxis{mox::TIME_SERIES, 4}));
    EXPECT_THAT(description.step, ElementsAre(0, 0, 2.5, 0.25, 0));
    EXPECT_EQ(description.unit, "µm");
    EXPECT_EQ(description.text, "");
}

TEST(TiffDescription, OfImageJWithImagesAlone)
{
    EXPECT_EQ(numOfPages(parse("ImageJ=1.53t\nimages=24\n").axes), 24U);
    EXPECT_EQ(numOfPages(parse("ImageJ=1.53t\n").axes), 1U);
}

TEST(TiffDescription, OfImageJInAnotherOrder)
{
    EXPECT_THAT(parse("ImageJ=1.53t\nchannels=2\nslices=3\nframes=4\norder=tzc\n").axes,
                ElementsAre(PageAxis{mox::TIME_SERIES, 4}, PageAxis{mox::PLANS, 3}, PageAxis{mox::SPECTRAL_SERIES, 2}));
    EXPECT_EQ(parse("ImageJ=1.53t\nchannels=2\norder=default\n").axes[0].size, 2U);
}

TEST(TiffDescription, OfImageJWithoutNumbers)
{
    auto const description = parse("ImageJ=1.53t\nslices=x\nspacing=\nmoxel.step=1,2\nmoxel.origin=1,2,3,4,z\n");
    EXPECT_EQ(numOfPages(description.axes), 1U);
    EXPECT_THAT(description.step, ElementsAre(0, 0, 0, 0, 0));
    EXPECT_THAT(description.origin, ElementsAre(0, 0, 0, 0, 0));
}

TEST(TiffDescription, OfTheHostIsExact)
{
    mox::memory::InMemoryImage image;
    image.allocate(mox::MOX_UINT8, 1, 1, 3, 4, 2);
    std::array<double, numOfDimensions> const step = {0.1, 1.0 / 3, 1e-300, 1e300, -7};
    for (std::size_t i = 0; i < numOfDimensions; ++i) {
        image.setCalibrationStep(static_cast<mox::ImageDimension>(i), step[i]);
        image.setCalibrationOrigin(static_cast<mox::ImageDimension>(i), 10 * step[4 - i]);
    }
    image.setUnit("µm");
    image.setDescription("first line\nunit=mm\nC:\\new");
    image.setInterpretation(mox::INTERPRETATION_LABEL);
    auto const description = parse(composeImageJDescription(image));
    EXPECT_EQ(description.step, step);
    EXPECT_EQ(description.origin[0], 10 * step[4]);
    EXPECT_EQ(description.origin[4], 10 * step[0]);
    EXPECT_EQ(description.unit, "µm");
    EXPECT_EQ(description.text, "first line\nunit=mm\nC:\\new");
    EXPECT_EQ(description.interpretation, mox::INTERPRETATION_LABEL);
    EXPECT_THAT(description.axes,
                ElementsAre(PageAxis{mox::SPECTRAL_SERIES, 2}, PageAxis{mox::PLANS, 3}, PageAxis{mox::TIME_SERIES, 4}));
}

TEST(TiffDescription, OfTheHostTellsImageJ)
{
    mox::memory::InMemoryImage image;
    image.allocate(mox::MOX_UINT8, 1, 1, 3, 1, 2);
    image.setCalibrationStep(mox::PLANS, 2.5);
    std::string const text = composeImageJDescription(image);
    EXPECT_THAT(text, HasSubstr("images=6\nchannels=2\nslices=3\nhyperstack=true\n"));
    EXPECT_THAT(text, HasSubstr("\nspacing=2.5\n"));
    EXPECT_THAT(text, Not(HasSubstr("frames")));
    EXPECT_THAT(text, Not(HasSubstr("unit")));
}

TEST(TiffDescription, OfAShape)
{
    EXPECT_THAT(parse(R"({"shape": [5, 3, 64, 32]})", {15, 1, 2048}).axes,
                ElementsAre(PageAxis{mox::PLANS, 3}, PageAxis{mox::TIME_SERIES, 5}));
    EXPECT_THAT(parse(R"({"shape": [2, 5, 3, 8, 8]})", {30, 1, 64}).axes,
                ElementsAre(PageAxis{mox::PLANS, 3}, PageAxis{mox::TIME_SERIES, 5}, PageAxis{mox::SPECTRAL_SERIES, 2}));
    EXPECT_THAT(parse(R"({"shape": [5, 8, 8, 3]})", {5, 3, 192}).axes, ElementsAre(PageAxis{mox::PLANS, 5}));
    EXPECT_THAT(parse(R"({"shape": [8, 8]})", {1, 1, 64}).axes, IsEmpty());
}

TEST(TiffDescription, OfAShapeWithAxes)
{
    EXPECT_THAT(parse(R"({"shape": [5, 1, 3, 8, 8], "axes": "TZCYX"})", {15, 1, 64}).axes,
                ElementsAre(PageAxis{mox::SPECTRAL_SERIES, 3}, PageAxis{mox::TIME_SERIES, 5}));
    EXPECT_THAT(parse(R"({"shape": [5, 8, 8], "axes": 7})", {5, 1, 64}).axes, ElementsAre(PageAxis{mox::PLANS, 5}));
}

TEST(TiffDescription, OfAnotherShapeIsText)
{
    for (char const* tag : {R"({"shape": [4, 64, 32]})", R"({"shape": "x"})", R"({"shape": [-1, 64, 32]})",
                            R"({"shape": [1e30, 64]})", "{", R"({"form": 1})", R"({"shape": []})"}) {
        auto const description = parse(tag, {5, 1, 2048});
        EXPECT_THAT(description.axes, IsEmpty()) << tag;
        EXPECT_EQ(description.text, tag);
    }
}

TEST(TiffDescription, OfOme)
{
    auto const description = parse(
        R"(<?xml version="1.0"?><OME><Image><Pixels DimensionOrder="XYZCT" SizeX="9" SizeY="8" SizeZ="4" SizeC="6")"
        R"( SizeT="2" PhysicalSizeX="0.5" PhysicalSizeY="0.25" PhysicalSizeZ="2" TimeIncrement="3"></Pixels>)",
        {24, 2, 144});
    EXPECT_THAT(description.axes,
                ElementsAre(PageAxis{mox::PLANS, 4}, PageAxis{mox::SPECTRAL_SERIES, 3}, PageAxis{mox::TIME_SERIES, 2}));
    EXPECT_THAT(description.step, ElementsAre(0.5, 0.25, 2, 3, 0));
    EXPECT_EQ(description.unit, "µm");
}

TEST(TiffDescription, OfBrokenOmeTellsNothing)
{
    for (char const* tag : {"<OME", "<OME><Pixels", "<OME><Pixels DimensionOrder=\"XYZCT"}) {
        EXPECT_LE(parse(tag).axes.size(), 3U) << tag;
        EXPECT_EQ(numOfPages(parse(tag).axes), 1U) << tag;
    }
}

TEST(TiffDescription, OfAnythingElseIsText)
{
    auto const description = parse("a picture\nof something");
    EXPECT_EQ(description.text, "a picture\nof something");
    EXPECT_THAT(description.axes, IsEmpty());
}

TEST(TiffDescription, NumberOfPagesDoesNotWrap)
{
    EXPECT_EQ(numOfPages({{mox::PLANS, 1U << 31U}, {mox::TIME_SERIES, 1U << 31U}, {mox::SPECTRAL_SERIES, 4}}),
              std::nullopt);
    EXPECT_EQ(numOfPages({}), 1U);
}

} // namespace
} // namespace moxel
