#include "apps/moxel/Colours.h"

#include <gmock/gmock.h>

#include <set>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/RunCommand.h"
#include "testing/host/HostAlgorithm.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

TEST(Colours, areBlackForZeroAndDistinctForEachOfTheFirstHundredValues)
{
    mox::memory::InMemoryImage labels;
    std::vector<std::uint16_t> values(101);
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = static_cast<std::uint16_t>(i);
    }
    fill(labels, {101, 1, 1, 1, 1}, values);
    auto const picture = colourPicture(labels);
    EXPECT_EQ(sizesOf(*picture), (Sizes{101, 1, 1, 1, 3}));
    auto const channels = voxelsOf<std::uint8_t>(*picture);
    std::set<std::array<std::uint8_t, 3>> colours;
    for (std::size_t i = 0; i < values.size(); ++i) {
        colours.insert({channels[i], channels[101 + i], channels[202 + i]});
        EXPECT_EQ(channels[i] + channels[101 + i] + channels[202 + i] == 0, i == 0);
    }
    EXPECT_EQ(colours.size(), values.size());
}

TEST(Colours, takeAllIntegers)
{
    mox::memory::InMemoryImage labels;
    fill(labels, {2, 1, 1, 1, 1}, std::vector<std::int8_t>{-1, 0});
    EXPECT_EQ(voxelsOf<std::uint8_t>(*colourPicture(labels))[1], 0);
    fill(labels, {2, 1, 1, 1, 1}, std::vector<std::uint64_t>{~std::uint64_t{0}, 0});
    EXPECT_NE(voxelsOf<std::uint8_t>(*colourPicture(labels))[0], 0);
}

TEST(Colours, refuseOtherImages)
{
    mox::memory::InMemoryImage image;
    fill(image, {1, 1, 1, 1, 1}, std::vector<float>{1});
    EXPECT_THROW(colourPicture(image), FileError);
    fill(image, {1, 1, 2, 1, 1}, std::vector<std::uint8_t>{1, 2});
    EXPECT_THROW(colourPicture(image), FileError);
}

TEST(Colours, areWrittenByARun)
{
    Folder const folder;
    auto const algorithm = HostAlgorithm::New();
    algorithm->work = [](HostAlgorithm& running) {
        fill<std::int32_t>(*running.output.get(), {2, 1, 1, 1, 1}, {0, 70000});
    };
    std::string const output = "output=" + (folder / "labels.png").string();
    std::ostringstream out;
    runAlgorithm(algorithm, {.values = {output}, .coloured = {"output"}}, out);
    auto const picture = readImage(folder / "labels.png", {});
    EXPECT_EQ(sizesOf(*picture), (Sizes{2, 1, 1, 1, 3}));
    EXPECT_THROW(runAlgorithm(algorithm, {.values = {output}, .coloured = {"input"}}, out), UsageError);
}

} // namespace
} // namespace moxel::testing
