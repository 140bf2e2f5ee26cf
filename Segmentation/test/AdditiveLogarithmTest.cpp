#include "Segmentation/private/AdditiveLogarithm.h"

#include <gtest/gtest.h>

#include <cmath>

namespace mox::segmentation {

namespace {

TEST(AdditiveLogarithm, isNLogN)
{
    for (std::size_t const largest : {std::size_t{2}, std::size_t{160}, std::size_t{65000}}) {
        AdditiveLogarithm const f(largest);
        EXPECT_EQ(f(0), 0);
        EXPECT_EQ(f(1), 0);
        for (std::size_t n = 2; n <= largest; ++n) {
            double const wanted = static_cast<double>(n) * std::log(static_cast<double>(n));
            ASSERT_NEAR(static_cast<double>(f(n)) * f.unit(), wanted, 1e-12 * wanted);
            ASSERT_EQ(f.steps()[n - 1], f(n) - f(n - 1));
        }
    }
}

TEST(AdditiveLogarithm, addsUpExactly)
{
    AdditiveLogarithm const f(2000);
    auto const logarithm = [&](std::size_t n) { return f(n) / static_cast<int64>(n); };
    EXPECT_EQ(f.logarithmOf2(), logarithm(2));
    for (std::size_t a = 1; a < 45; ++a) {
        for (std::size_t b = 1; b < 45; ++b) {
            ASSERT_EQ(logarithm(a * b), logarithm(a) + logarithm(b));
        }
    }
}

} // namespace

} // namespace mox::segmentation
