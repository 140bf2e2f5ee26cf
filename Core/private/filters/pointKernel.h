#pragma once

#include <cstddef>
#include <memory>

#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/ThreadStore.h"

namespace mox {

namespace detail {

template <class T, class Arch>
struct RowAllocator;

template <class T>
struct RowAllocator<T, SimdVec::arch_scalar_tag> {
    using Type = std::allocator<T>;
};

template <class T>
struct RowAllocator<T, SimdVec::arch_128_tag> {
    using Type = SimdVec::AlignedAllocator<T, 16>;
};

} // namespace detail

/// The view whose rows suit an architecture.
template <class T, class Arch>
using ArchView = access::View<T, typename detail::RowAllocator<T, Arch>::Type>;

namespace filters {

/// A kernel that makes each output voxel of the input voxel at its place. Input and output may be the same memory.
template <class Kernel, class In, class Out>
concept PointKernel = requires(Kernel const& kernel, In const* in, Out* out, std::size_t count)
{
    kernel.row(in, out, count);
};

/// Applies a point kernel to the rows of a leaf. Rows that follow each other in memory are taken as one.
template <class Kernel, class InputView, class OutputView>
void applyToRows(Kernel const& kernel, access::Block const& leaf, InputView const& input, OutputView const& output,
                 access::RowCacheRead<InputView>& inputCache, access::RowCacheReadWrite<OutputView>& outputCache)
{
    unsigned int const columns = leaf.getNumOfColumns();
    unsigned int const rows = leaf.getNumOfRows();
    unsigned int const plans = leaf.getNumOfPlans();
    access::Position const origin = access::detail::within(leaf, 0, 0, 0, 0, 0);
    bool const oneStretchPerPlan = input.isContiguous() && output.isContiguous() && columns == output.sizes().columns;
    for (access::Position p = origin; p.z < origin.z + static_cast<int>(plans); ++p.z) {
        if (oneStretchPerPlan) {
            kernel.row(input.pointer(p, columns), output.writablePointer(p, columns), std::size_t{columns} * rows);
            continue;
        }
        for (p.y = origin.y; p.y < origin.y + static_cast<int>(rows); ++p.y) {
            auto const* in = inputCache.getRow(0, columns, p).voxels();
            auto& out = outputCache.getRow(0, columns, p);
            kernel.row(in, out.voxels(), columns);
            outputCache.flush(out);
        }
    }
}

} // namespace filters
} // namespace mox
