#include "apps/moxel/FileLimits.h"

#include <gtest/gtest.h>

#include <limits>

#include "apps/moxel/Errors.h"

namespace moxel {
namespace {

constexpr std::uint64_t huge = std::numeric_limits<std::uint64_t>::max();

TEST(FileLimits, ProductsDoNotWrap)
{
    EXPECT_EQ(product({2, 3, 5}), 30U);
    EXPECT_EQ(product({huge, 1}), huge);
    EXPECT_EQ(product({std::uint64_t{1} << 32U, std::uint64_t{1} << 32U}), std::nullopt);
    EXPECT_EQ(product({huge, huge, 0}), 0U);
}

TEST(FileLimits, RowsAreFilledUpToBytes)
{
    EXPECT_EQ(packedBytes(9, 1, 3), 6U);
    EXPECT_EQ(packedBytes(8, 1, 3), 3U);
    EXPECT_EQ(packedBytes(10, 16, 2), 40U);
    EXPECT_EQ(packedBytes(huge, 8, 1), std::nullopt);
}

TEST(FileLimits, ClaimsAreHeldAgainstTheData)
{
    EXPECT_NO_THROW(requirePlausible(100, 100, 1));
    EXPECT_THROW(requirePlausible(101, 100, 1), FileError);
    EXPECT_NO_THROW(requirePlausible(1032 * 100, 100, deflateRatio));
    EXPECT_THROW(requirePlausible(1032 * 101, 100, deflateRatio), FileError);
    EXPECT_THROW(requirePlausible(std::nullopt, huge, 1), FileError);
}

} // namespace
} // namespace moxel
