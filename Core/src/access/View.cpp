#include "Core/private/access/View.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <typeinfo>
#include <utility>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/rowExtent.h"

namespace mox::access {

namespace {

Sizes const& requirePositions(Sizes const& sizes)
{
    if (std::max({sizes.columns, sizes.rows, sizes.plans, sizes.timeSeries, sizes.spectralSeries}) > mostElements) {
        helper::raise<InvalidCall>("Core/private/access/View", "An image must have at most ", mostElements,
                                   " elements in each dimension.");
    }
    return sizes;
}

/// The library's own image class is known to be contiguous. Asked of that very class only: one derived from it may
/// answer rows in its own way.
bool isKnownContiguous(ImageModel const& image)
{
    return typeid(image) == typeid(memory::InMemoryImage);
}

/// What the image gives for its first voxel; one that gives nothing there is not asked again.
void const* firstVoxel(ImageModel const& image)
{
    void const* voxel = nullptr;
    return image.getConstRowPointerAt(0, voxel, 0, 0, 0, 0, 0) ? voxel : nullptr;
}

template <class T>
bool isAligned(void const* pointer)
{
    return reinterpret_cast<std::uintptr_t>(pointer) % alignof(T) == 0;
}

unsigned int u(int coordinate)
{
    return static_cast<unsigned int>(coordinate);
}

} // namespace

template <class T, class Allocator>
View<T, Allocator>::View(ImageModel const& image, boost::shared_ptr<BorderCondition<T>> border)
    : image_(&image)
    , border_(std::move(border))
    , sizes_(requirePositions(Sizes::of(image)))
{
    assert(image.getVoxelType() == voxelTypeOf<T>);
    void const* const first = firstVoxel(image);
    givesPointers_ = first != nullptr && isAligned<T>(first);
    if (givesPointers_ && isKnownContiguous(image)) {
        base_ = static_cast<T*>(const_cast<void*>(first)); // written through only where `writable_` is set
    }
}

template <class T, class Allocator>
View<T, Allocator>::View(ImageModel& image, boost::shared_ptr<BorderCondition<T>> border)
    : View(std::as_const(image), std::move(border))
{
    writable_ = &image;
}

template <class T, class Allocator>
bool View<T, Allocator>::contains(Position const& p, unsigned int count) const
{
    return p.x >= 0 && int64{p.x} + count <= sizes_.columns && isInside(p.y, sizes_.rows) &&
           isInside(p.z, sizes_.plans) && isInside(p.t, sizes_.timeSeries) && isInside(p.s, sizes_.spectralSeries);
}

template <class T, class Allocator>
T* View<T, Allocator>::direct(Position const& p) const
{
    std::size_t voxels = u(p.s);
    voxels = voxels * sizes_.timeSeries + u(p.t);
    voxels = voxels * sizes_.plans + u(p.z);
    voxels = voxels * sizes_.rows + u(p.y);
    voxels = voxels * sizes_.columns + u(p.x);
    return base_ + voxels;
}

template <class T, class Allocator>
T const* View<T, Allocator>::pointer(Position const& p, unsigned int count) const
{
    if (!givesPointers_ || !contains(p, count)) {
        return nullptr;
    }
    if (base_ != nullptr) {
        return direct(p);
    }
    void const* row = nullptr;
    bool const given = image_->getConstRowPointerAt(count, row, u(p.x), u(p.y), u(p.z), u(p.t), u(p.s));
    return given && isAligned<T>(row) ? static_cast<T const*>(row) : nullptr;
}

template <class T, class Allocator>
T* View<T, Allocator>::writablePointer(Position const& p, unsigned int count) const
{
    assert(writable_ != nullptr);
    if (!givesPointers_ || !contains(p, count)) {
        return nullptr;
    }
    if (base_ != nullptr) {
        return direct(p);
    }
    void* row = nullptr;
    bool const given = writable_->getRowPointerAt(count, row, u(p.x), u(p.y), u(p.z), u(p.t), u(p.s));
    return given && isAligned<T>(row) ? static_cast<T*>(row) : nullptr;
}

template <class T, class Allocator>
void View<T, Allocator>::readRow(T* begin, T* end, Position const& p) const
{
    border_->readRow(*image_, sizes_, begin, end, p);
}

template <class T, class Allocator>
void View<T, Allocator>::writeRow(T const* voxels, unsigned int count, Position const& p) const
{
    assert(writable_ != nullptr);
    if (!writable_->writeRowAt(count, voxels, u(p.x), u(p.y), u(p.z), u(p.t), u(p.s))) {
        helper::raise<UnexpectedError>("Core/private/access/View", writeFailure);
    }
}

#define MOX_INSTANTIATE(T)                                                                                             \
    template class View<T>;                                                                                            \
    template class View<T, SimdVec::AlignedAllocator<T, 16>>;
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

} // namespace mox::access
