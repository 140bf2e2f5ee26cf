#include "Core/private/filters/Store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

namespace mox::testing {

namespace {

using namespace filters;

/// A row that begins at some byte behind an aligned address, and the sizes of the parts it was made of.
struct StreamedRow {
    std::vector<char> memory;
    std::vector<std::size_t> parts;
    bool isRight = true;

    StreamedRow(std::size_t begin, std::size_t voxelSize, std::size_t count)
        : memory(64 + begin + count * voxelSize + 1, 'x')
    {
        auto const address = reinterpret_cast<std::uintptr_t>(memory.data());
        std::size_t const first = (16 - address % 16) % 16 + begin;
        std::vector<char> made(count * voxelSize);
        std::iota(made.begin(), made.end(), '\1');
        std::size_t next = 0;
        makeStreamed(memory.data() + first, voxelSize, count, [&](void* voxels, std::size_t number) {
            std::copy_n(made.begin() + static_cast<std::ptrdiff_t>(next), number * voxelSize,
                        static_cast<char*>(voxels));
            next += number * voxelSize;
            parts.push_back(number);
        });
        std::vector<char> wanted(memory.size(), 'x');
        std::copy(made.begin(), made.end(), wanted.begin() + static_cast<std::ptrdiff_t>(first));
        isRight = memory == wanted;
    }
};

TEST(Store, streamsRowsOfAnyLengthFromAnyPlace)
{
    for (std::size_t const voxelSize : {1U, 2U, 4U, 8U}) {
        for (std::size_t begin = 0; begin < 17; ++begin) {
            for (std::size_t const bytes : {0U, 8U, 1016U, 1024U, 1032U, 1040U, 5000U}) {
                StreamedRow const row(begin, voxelSize, bytes / voxelSize);
                EXPECT_TRUE(row.isRight) << voxelSize << " bytes from " << begin << ", " << bytes;
            }
        }
    }
}

TEST(Store, streamsPartsBetweenTheFirstAlignedVoxelAndTheLastWholePart)
{
    EXPECT_EQ(StreamedRow(0, 4, 1000).parts, (std::vector<std::size_t>{0, 256, 256, 256, 232}));
    EXPECT_EQ(StreamedRow(4, 4, 600).parts, (std::vector<std::size_t>{3, 256, 256, 85}));
    EXPECT_EQ(StreamedRow(15, 1, 1024).parts, (std::vector<std::size_t>{1, 1023}));
}

TEST(Store, doesNotStreamVoxelsThatAreNotAlignedToTheirOwnSize)
{
    EXPECT_EQ(StreamedRow(4, 8, 1000).parts, (std::vector<std::size_t>{1000, 0}));
}

} // namespace

} // namespace mox::testing
