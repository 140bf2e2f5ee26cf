#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>
#include <Moxelcore/Core/String.h>

namespace mox {

/// Voxel types of images. The algorithms work on the ten real ones; 8-bit signed voxels are `signed char`.
enum MOXELCORE_API VoxelTypes : int {
    MOX_UINT8 = 0,
    MOX_UINT16,
    MOX_UINT32,
    MOX_UINT64,
    MOX_INT8,
    MOX_INT16,
    MOX_INT32,
    MOX_INT64,
    MOX_FLOAT32,
    MOX_FLOAT64,
    MOX_COMPLEX_FLOAT32,
    MOX_COMPLEX_FLOAT64
};

template <>
MOXELCORE_API EnumInfo const& getEnumInfo<VoxelTypes>();

namespace helper {

/// Bytes of one voxel; 0 for a value that is no voxel type.
MOXELCORE_API unsigned int getSizeOf(VoxelTypes const& voxelType);

/// "uint8", "float32", ...; empty for a value that is no voxel type.
MOXELCORE_API String getText(VoxelTypes const& voxelType);

} // namespace helper
} // namespace mox
