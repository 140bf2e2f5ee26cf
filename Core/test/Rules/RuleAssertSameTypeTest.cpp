#include "Core/private/Rules/RuleAssertSameType.h"

#include <gtest/gtest.h>

#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleAssertSameType"};
}

template <class T>
class RuleAssertSameTypeOf : public ::testing::Test {
protected:
    RuleAssertSameTypeOf()
        : rule(other)
    {
        other = otherImage.get();
    }

    std::unique_ptr<TestImage> const otherImage = imageOf(MOX_INT16, {5, 4, 3, 2, 1});
    Property<ImageModel const*> other;
    RuleAssertSameType<T> rule;
};

TYPED_TEST_SUITE(RuleAssertSameTypeOf, ImagePointers);

TYPED_TEST(RuleAssertSameTypeOf, passesTheTypeAloneWhateverTheSize)
{
    for (int type = MOX_UINT8; type <= MOX_COMPLEX_FLOAT64; ++type) {
        auto const image = imageOf(static_cast<VoxelTypes>(type), {1, 1, 1, 1, 1});
        EXPECT_EQ(verdict(this->rule, image.get()),
                  type == MOX_INT16 ? passes : refusal("Images don't have the same type"))
            << type;
    }
}

TYPED_TEST(RuleAssertSameTypeOf, refusesNullOnEitherSide)
{
    EXPECT_EQ(verdict(this->rule, nullptr), refusal("Parameter value cannot be null"));
    this->other = nullptr;
    EXPECT_EQ(verdict(this->rule, this->otherImage.get()), refusal("Parameter value cannot be null"));
}

} // namespace

} // namespace mox::testing
