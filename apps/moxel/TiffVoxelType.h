#pragma once

#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <tiff.h>

#include <cstdint>

namespace moxel {

/// How TIFF names a voxel type.
struct TiffVoxelType {
    mox::VoxelTypes voxelType;
    std::uint16_t bits;
    std::uint16_t sampleFormat;
};

constexpr TiffVoxelType tiffVoxelTypes[] = {
    {mox::MOX_UINT8, 8, SAMPLEFORMAT_UINT},      {mox::MOX_UINT16, 16, SAMPLEFORMAT_UINT},
    {mox::MOX_UINT32, 32, SAMPLEFORMAT_UINT},    {mox::MOX_UINT64, 64, SAMPLEFORMAT_UINT},
    {mox::MOX_INT8, 8, SAMPLEFORMAT_INT},        {mox::MOX_INT16, 16, SAMPLEFORMAT_INT},
    {mox::MOX_INT32, 32, SAMPLEFORMAT_INT},      {mox::MOX_INT64, 64, SAMPLEFORMAT_INT},
    {mox::MOX_FLOAT32, 32, SAMPLEFORMAT_IEEEFP}, {mox::MOX_FLOAT64, 64, SAMPLEFORMAT_IEEEFP},
};

} // namespace moxel
