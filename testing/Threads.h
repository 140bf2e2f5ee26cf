#pragma once

#include <tbb/global_control.h>
#include <tbb/task_arena.h>

#include <cstddef>

namespace mox::testing {

/// Does the work with so many threads, be there so many processors or not.
template <class Work>
void withThreads(int count, Work const& work)
{
    tbb::global_control const control(tbb::global_control::max_allowed_parallelism, static_cast<std::size_t>(count));
    tbb::task_arena arena(count);
    arena.execute(work);
}

} // namespace mox::testing
