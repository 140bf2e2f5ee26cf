#include "Core/private/filters/PointRow.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "Core/private/Cpu.h"

namespace mox::testing {

namespace {

using namespace filters;

/// The difference of two inputs of different types.
struct Difference {
    template <class Out>
    void row(unsigned short const* a, unsigned char const* b, Out* out, std::size_t count) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<Out>(a[i] - b[i]);
        }
    }
};

template <class Out>
void compareStores(std::size_t offset, std::size_t count)
{
    constexpr Out untouched = 77;
    std::vector<unsigned short> a(count);
    std::iota(a.begin(), a.end(), static_cast<unsigned short>(9));
    std::vector<unsigned char> b(count);
    std::iota(b.begin(), b.end(), static_cast<unsigned char>(3));
    std::vector<Out> expected(offset + count + 1, untouched);
    Difference const kernel;
    kernel.row(a.data(), b.data(), expected.data() + offset, count);
    Stretch const inputs[] = {{a.data(), sizeof a[0]}, {b.data(), sizeof b[0]}};
    for (Store const store : {Store::cached, Store::streamed}) {
        std::vector<Out> out(offset + count + 1, untouched);
        applyToStretch(pointRow<Difference, Out, unsigned short, unsigned char>(kernel), inputs, 2, out.data() + offset,
                       sizeof(Out), count, store);
        ASSERT_EQ(out, expected) << offset << " and " << count;
    }
}

TEST(PointRow, isTheSameStreamedFromAnyPlaceAndOfAnyLength)
{
    for (std::size_t const offset : {0U, 1U, 3U, 15U, 16U}) {
        for (std::size_t const count : {0U, 1U, 15U, 16U, 1023U, 1024U, 1039U, 1040U, 20000U}) {
            compareStores<unsigned char>(offset, count);
            compareStores<short>(offset, count);
            compareStores<float>(offset, count);
            compareStores<double>(offset, count);
        }
    }
}

TEST(PointRow, isStreamedForImagesBeyondTheCache)
{
    auto const told = static_cast<std::size_t>(devices::Cpu::get().l3Cache) << 10U;
    std::size_t const cache = told > 0 ? told : std::size_t{32} << 20U;
    EXPECT_EQ(storeFor(0), Store::cached);
    EXPECT_EQ(storeFor(cache), Store::cached);
    EXPECT_EQ(storeFor(cache + 1), Store::streamed);
}

} // namespace

} // namespace mox::testing
