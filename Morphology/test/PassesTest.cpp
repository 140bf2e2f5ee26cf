#include <gmock/gmock.h>

#include <new>

#include "Morphology/private/family.h"
#include "testing/Allocations.h"

namespace mox::testing {

namespace {

using namespace morphology;

Steps lineAndSquare()
{
    return {{OffsetList2D{{0, 0}, {1, 2}}, 1, Symmetry::none}, {SquareElement(), 3}};
}

OffsetList2D const& listOf(Pass const& pass)
{
    return *std::get<Shared<OffsetList2D>>(pass.steps.front().element);
}

TEST(Passes, takeTheElementsOfTheSecondOperationReflected)
{
    auto const passes = passesOf(closing, lineAndSquare());
    ASSERT_EQ(passes.size(), 2U);
    EXPECT_EQ(passes[0].operation, Operation::dilation);
    EXPECT_EQ(passes[1].operation, Operation::erosion);
    EXPECT_EQ(listOf(passes[0]).back().row, 2);
    EXPECT_EQ(listOf(passes[1]).back().column, -1);
    EXPECT_EQ(listOf(passes[1]).back().row, -2);
    EXPECT_TRUE(std::holds_alternative<SquareElement>(passes[1].steps.back().element));
    EXPECT_EQ(passes[1].steps.back().iterations, 3U);
}

TEST(Passes, surviveEveryAllocationThatFails)
{
    Steps const steps = lineAndSquare();
    bool fails = true;
    for (int k = 1; fails; ++k) {
        ASSERT_LT(k, 100);
        Allocations::failAt(k);
        try {
            passesOf(opening, steps);
            fails = Allocations::stopFailing();
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(Allocations::stopFailing());
        }
    }
}

} // namespace

} // namespace mox::testing
