#include "Core/private/Rules/RuleAssertType.h"

#include <gtest/gtest.h>

#include <vector>

#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleAssertType"};
}

template <class T>
class RuleAssertTypeOf : public ::testing::Test {
};

TYPED_TEST_SUITE(RuleAssertTypeOf, ImagePointers);

TYPED_TEST(RuleAssertTypeOf, passesWhatIsInTheList)
{
    RuleAssertType<TypeParam> rule(NarrowVoxels{});
    for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16, MOX_INT8, MOX_INT16}) {
        EXPECT_EQ(verdict(rule, imageOf(type).get()), passes) << type;
    }
}

TYPED_TEST(RuleAssertTypeOf, namesTheListAndTheRefusedType)
{
    RuleAssertType<TypeParam> rule(NarrowVoxels{});
    EXPECT_EQ(verdict(rule, imageOf(MOX_FLOAT32).get()),
              refusal("Voxel type must be one of the following types : uint8, uint16, int8, int16. Current voxel type "
                      "is float32"));
    EXPECT_EQ(verdict(rule, imageOf(MOX_COMPLEX_FLOAT64).get()),
              refusal("Voxel type must be one of the following types : uint8, uint16, int8, int16. Current voxel type "
                      "is complex float64"));
}

TYPED_TEST(RuleAssertTypeOf, knowsTheRealTypes)
{
    RuleAssertType<TypeParam> rule(RealVoxels{});
    for (int type = MOX_UINT8; type <= MOX_FLOAT64; ++type) {
        EXPECT_EQ(verdict(rule, imageOf(static_cast<VoxelTypes>(type)).get()), passes) << type;
    }
    EXPECT_EQ(verdict(rule, imageOf(MOX_COMPLEX_FLOAT32).get()),
              refusal("Voxel type must be one of the following types : uint8, uint16, uint32, uint64, int8, int16, "
                      "int32, int64, float32, float64. Current voxel type is complex float32"));
}

TYPED_TEST(RuleAssertTypeOf, keepsTheOrderOfTheList)
{
    RuleAssertType<TypeParam> rule(std::vector{MOX_INT8, MOX_UINT8});
    EXPECT_EQ(verdict(rule, imageOf(MOX_UINT8).get()), passes);
    EXPECT_EQ(verdict(rule, imageOf(MOX_INT64).get()),
              refusal("Voxel type must be one of the following types : int8, uint8. Current voxel type is int64"));
}

TYPED_TEST(RuleAssertTypeOf, refusesEverythingWithAnEmptyList)
{
    RuleAssertType<TypeParam> rule(std::vector<VoxelTypes>{});
    EXPECT_EQ(verdict(rule, imageOf(MOX_UINT8).get()),
              refusal("Voxel type must be one of the following types : . Current voxel type is uint8"));
}

TYPED_TEST(RuleAssertTypeOf, refusesNull)
{
    RuleAssertType<TypeParam> rule(RealVoxels{});
    EXPECT_EQ(verdict(rule, nullptr), refusal("Parameter value cannot be null"));
}

} // namespace

} // namespace mox::testing
