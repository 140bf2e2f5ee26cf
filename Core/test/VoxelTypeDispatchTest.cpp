#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace mox {

namespace {

using ::testing::ElementsAre;

TEST(VoxelTypeOf, pairsTypesWithEnumerators)
{
    EXPECT_EQ(voxelTypeOf<unsigned char>, MOX_UINT8);
    EXPECT_EQ(voxelTypeOf<unsigned short>, MOX_UINT16);
    EXPECT_EQ(voxelTypeOf<unsigned int>, MOX_UINT32);
    EXPECT_EQ(voxelTypeOf<unsigned long long>, MOX_UINT64);
    EXPECT_EQ(voxelTypeOf<signed char>, MOX_INT8);
    EXPECT_EQ(voxelTypeOf<short>, MOX_INT16);
    EXPECT_EQ(voxelTypeOf<int>, MOX_INT32);
    EXPECT_EQ(voxelTypeOf<long long>, MOX_INT64);
    EXPECT_EQ(voxelTypeOf<float>, MOX_FLOAT32);
    EXPECT_EQ(voxelTypeOf<double>, MOX_FLOAT64);
}

TEST(VoxelTypesOf, keepsTheOrderOfTheList)
{
    EXPECT_THAT(voxelTypesOf(RealVoxels()), ElementsAre(MOX_UINT8, MOX_UINT16, MOX_UINT32, MOX_UINT64, MOX_INT8,
                                                        MOX_INT16, MOX_INT32, MOX_INT64, MOX_FLOAT32, MOX_FLOAT64));
    EXPECT_THAT(voxelTypesOf(IntegerVoxels()),
                ElementsAre(MOX_UINT8, MOX_UINT16, MOX_UINT32, MOX_UINT64, MOX_INT8, MOX_INT16, MOX_INT32, MOX_INT64));
    EXPECT_THAT(voxelTypesOf(NarrowVoxels()), ElementsAre(MOX_UINT8, MOX_UINT16, MOX_INT8, MOX_INT16));
    EXPECT_THAT(voxelTypesOf(SseVoxels()), ElementsAre(MOX_UINT8, MOX_INT16, MOX_FLOAT32, MOX_FLOAT64, MOX_INT8,
                                                       MOX_UINT16, MOX_UINT32, MOX_INT32));
}

/// The type that a call was made for, none when no call was made.
template <class Types>
std::optional<VoxelTypes> typeCalled(VoxelTypes type)
{
    std::optional<VoxelTypes> called;
    bool const found = dispatch(Types(), type, [&]<class T>() { called = voxelTypeOf<T>; });
    EXPECT_EQ(found, called.has_value());
    return called;
}

TEST(Dispatch, callsForTheTypeOfTheList)
{
    for (int value = MOX_UINT8; value <= MOX_FLOAT64; ++value) {
        auto const type = static_cast<VoxelTypes>(value);
        EXPECT_EQ(typeCalled<RealVoxels>(type), type);
    }
}

TEST(Dispatch, callsNothingForOtherTypes)
{
    for (int const value : {-1, 10, 11, 12}) {
        EXPECT_EQ(typeCalled<RealVoxels>(static_cast<VoxelTypes>(value)), std::nullopt) << value;
    }
    EXPECT_EQ(typeCalled<NarrowVoxels>(MOX_FLOAT32), std::nullopt);
    EXPECT_EQ(typeCalled<TypeVector<>>(MOX_UINT8), std::nullopt);
}

} // namespace

} // namespace mox
