#pragma once

#include <vector>

#include "Core/private/access/View.h"

namespace mox::access {

/// A stretch of voxels with its position in an image, which may lie outside.
template <class ViewType, class Allocator = typename ViewType::RowAllocator>
class BaseRow {
public:
    using Voxel = typename ViewType::Voxel;

    virtual ~BaseRow() = default;

    Position const& position() const { return position_; }
    unsigned int length() const { return length_; }

protected:
    BaseRow() = default;

    void place(ViewType const& view, Position const& position, unsigned int length)
    {
        view_ = &view;
        position_ = position;
        length_ = length;
    }

    /// The row's own buffer with room for its voxels. Voxels that it grows by are zero; it keeps what it has.
    Voxel* ownBuffer()
    {
        buffer_.resize(length_);
        return buffer_.data();
    }

    ViewType const* view_ = nullptr;

private:
    std::vector<Voxel, Allocator> buffer_;
    Position position_;
    unsigned int length_ = 0;
};

/// A row that has been read.
template <class ViewType, class Allocator = typename ViewType::RowAllocator>
class InputRow final : public BaseRow<ViewType, Allocator> {
public:
    using Voxel = typename ViewType::Voxel;

    /// Whether a row may be the image's own memory or must be a copy, because the image is about to change.
    enum class Source { shared, copied };

    void read(ViewType const& view, Position const& position, unsigned int length, Source source);

    Voxel const* voxels() const { return voxels_; }

private:
    Voxel const* voxels_ = nullptr;
};

/// The box of a leaf within which voxels may be written while neighbours still read. Bounds are inclusive.
struct SafeBox {
    int64 firstColumn, lastColumn;
    int64 firstRow, lastRow;
    int64 firstPlan, lastPlan;

    bool containsLine(Position const& p) const
    {
        return p.y >= firstRow && p.y <= lastRow && p.z >= firstPlan && p.z <= lastPlan;
    }
};

/// Voxels of a leaf's rim, held back until the parallel loop has ended.
template <class ViewType>
class WriteQueue {
public:
    using Voxel = typename ViewType::Voxel;

    void push(Voxel const* voxels, unsigned int count, Position const& position);
    /// Writes all that it holds, and is empty afterwards.
    void flush(ViewType const& view);
    bool empty() const { return entries_.empty(); }

private:
    struct Entry {
        Position position;
        unsigned int count;
        std::size_t begin;
    };

    std::vector<Entry> entries_;
    std::vector<Voxel> voxels_;
};

/// A row to write, flushed to the image when it is complete.
template <class ViewType, class Allocator = typename ViewType::RowAllocator>
class OuputRow final : public BaseRow<ViewType, Allocator> {
public:
    using Voxel = typename ViewType::Voxel;

    /// Whether the row begins with the image's present voxels or with none in particular.
    enum class ReadBack { no, yes };

    OuputRow() = default;
    OuputRow(OuputRow const&) = delete;
    OuputRow& operator=(OuputRow const&) = delete;
    /// A part of a row has no image to be flushed to: throws `UnexpectedError`.
    OuputRow(OuputRow const& other, unsigned int first, unsigned int count);

    /// Without a box, or where it allows, the row may be the image's own memory.
    void place(ViewType const& view, Position const& position, unsigned int length, ReadBack readBack,
               SafeBox const* box);

    Voxel* voxels() { return voxels_; }

    /// Writes what lies inside the image. With a box, what lies inside the image but outside the box goes to the
    /// queue.
    void flush(SafeBox const* box, WriteQueue<ViewType>& queue);

private:
    void write(int64 firstColumn, int64 lastColumn, WriteQueue<ViewType>* queue) const;

    Voxel* voxels_ = nullptr;
    bool isImageMemory_ = false;
};

#define MOX_DECLARE_VIEW(...)                                                                                          \
    extern template class InputRow<__VA_ARGS__>;                                                                       \
    extern template class WriteQueue<__VA_ARGS__>;                                                                     \
    extern template class OuputRow<__VA_ARGS__>;
#define MOX_DECLARE(T)                                                                                                 \
    MOX_DECLARE_VIEW(View<T>)                                                                                          \
    MOX_DECLARE_VIEW(View<T, SimdVec::AlignedAllocator<T, 16>>)
MOX_FOR_EACH_REAL_VOXEL(MOX_DECLARE)
#undef MOX_DECLARE
#undef MOX_DECLARE_VIEW

} // namespace mox::access
