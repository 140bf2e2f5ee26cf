#pragma once

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <boost/shared_ptr.hpp>

#include <memory>

#include "Core/private/access/BorderCondition.h"
#include "Core/private/access/Position.h"
#include "Core/private/access/SimdVec.h"
#include "Core/private/access/Sizes.h"
#include "Core/private/forEachRealVoxel.h"

namespace mox::access {

/// An image read and written as voxels of type T, extended beyond its edges by a border condition. The image's
/// voxel type must be T. Throws `InvalidCall` for more than 2^30 elements in a dimension. The allocator is that of the
/// row buffers that belong to the view.
template <class T, class Allocator = std::allocator<T>>
class View {
public:
    using Voxel = T;
    using RowAllocator = Allocator;

    View(ImageModel const& image, boost::shared_ptr<BorderCondition<T>> border);
    View(ImageModel& image, boost::shared_ptr<BorderCondition<T>> border);

    Sizes const& sizes() const { return sizes_; }
    VoxelTypes voxelType() const { return voxelTypeOf<T>; }
    boost::shared_ptr<BorderCondition<T>> const& border() const { return border_; }

    template <class OtherVoxel, class OtherAllocator>
    bool isOnSameImage(View<OtherVoxel, OtherAllocator> const& other) const
    {
        return image_ == &other.image();
    }
    ImageModel const& image() const { return *image_; }

    /// The image's own memory, or null when part of the row lies outside or the image has no memory to give.
    T const* pointer(Position const& position, unsigned int count) const;
    T* writablePointer(Position const& position, unsigned int count) const;

    /// Whether rows follow each other in memory without a gap.
    bool isContiguous() const { return base_ != nullptr; }

    /// Reads through the border condition.
    void readRow(T* begin, T* end, Position const& position) const;
    /// Writes voxels that all lie inside. Throws `UnexpectedError` when the image does not take them.
    void writeRow(T const* voxels, unsigned int count, Position const& position) const;

private:
    bool contains(Position const& position, unsigned int count) const;
    T* direct(Position const& position) const;

    ImageModel const* image_;
    ImageModel* writable_ = nullptr;
    boost::shared_ptr<BorderCondition<T>> border_;
    Sizes sizes_;
    bool givesPointers_ = false;
    T* base_ = nullptr; ///< first voxel of an image that is known to be contiguous
};

#define MOX_DECLARE(T)                                                                                                 \
    extern template class View<T>;                                                                                     \
    extern template class View<T, SimdVec::AlignedAllocator<T, 16>>;
MOX_FOR_EACH_REAL_VOXEL(MOX_DECLARE)
#undef MOX_DECLARE

} // namespace mox::access
