#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/access/Block2d.h>
#include <Moxelcore/Core/access/Block3d.h>

#include <tbb/cache_aligned_allocator.h>
#include <tbb/concurrent_vector.h>

namespace mox::profiler {

/// Writes the bounds of blocks as a table for a caller who tunes: a line of titles, then a line per block, each entry
/// followed by the separator. False when the file cannot be opened.
MOXELCORE_API bool exportBlockVectorCSV(
    tbb::concurrent_vector<access::Block2d, tbb::cache_aligned_allocator<access::Block2d>> const& blocks,
    char const* path, char separator);
MOXELCORE_API bool exportBlockVectorCSV(
    tbb::concurrent_vector<access::Block3d, tbb::cache_aligned_allocator<access::Block3d>> const& blocks,
    char const* path, char separator);

} // namespace mox::profiler
