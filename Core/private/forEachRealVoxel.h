#pragma once

#include <Moxelcore/Core/Integers.h>

/// One instantiation or explicit declaration per real voxel type.
#define MOX_FOR_EACH_REAL_VOXEL(X)                                                                                     \
    X(unsigned char)                                                                                                   \
    X(unsigned short)                                                                                                  \
    X(unsigned int)                                                                                                    \
    X(mox::uint64)                                                                                                     \
    X(signed char)                                                                                                     \
    X(short)                                                                                                           \
    X(int)                                                                                                             \
    X(mox::int64)                                                                                                      \
    X(float)                                                                                                           \
    X(double)
