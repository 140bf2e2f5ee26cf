#include "Core/private/access/Rows.h"

#include <algorithm>
#include <limits>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/rowExtent.h"

namespace mox::access {

template <class ViewType, class Allocator>
void InputRow<ViewType, Allocator>::read(ViewType const& view, Position const& position, unsigned int length,
                                         Source source)
{
    this->place(view, position, length);
    voxels_ = source == Source::shared ? view.pointer(position, length) : nullptr;
    if (voxels_ != nullptr) {
        return;
    }
    Voxel* const buffer = this->ownBuffer();
    view.readRow(buffer, buffer + length, position);
    voxels_ = buffer;
}

template <class ViewType>
void WriteQueue<ViewType>::push(Voxel const* voxels, unsigned int count, Position const& position)
{
    entries_.push_back({position, count, voxels_.size()});
    voxels_.insert(voxels_.end(), voxels, voxels + count);
}

template <class ViewType>
void WriteQueue<ViewType>::flush(ViewType const& view)
{
    for (Entry const& entry : entries_) {
        view.writeRow(voxels_.data() + entry.begin, entry.count, entry.position);
    }
    entries_.clear();
    voxels_.clear();
}

template <class ViewType, class Allocator>
OuputRow<ViewType, Allocator>::OuputRow(OuputRow const&, unsigned int, unsigned int)
{
    helper::raise<UnexpectedError>("Core/private/access/OuputRow",
                                   "Impossible use of OuputRow partial copy constructor");
}

template <class ViewType, class Allocator>
void OuputRow<ViewType, Allocator>::place(ViewType const& view, Position const& position, unsigned int length,
                                          ReadBack readBack, SafeBox const* box)
{
    BaseRow<ViewType, Allocator>::place(view, position, length);
    bool const mayWriteAtOnce = box == nullptr || (box->containsLine(position) && position.x >= box->firstColumn &&
                                                   int64{position.x} + length - 1 <= box->lastColumn);
    voxels_ = mayWriteAtOnce ? view.writablePointer(position, length) : nullptr;
    isImageMemory_ = voxels_ != nullptr;
    if (isImageMemory_) {
        return;
    }
    voxels_ = this->ownBuffer();
    if (readBack == ReadBack::yes) {
        view.readRow(voxels_, voxels_ + length, position);
    }
}

template <class ViewType, class Allocator>
void OuputRow<ViewType, Allocator>::write(int64 firstColumn, int64 lastColumn, WriteQueue<ViewType>* queue) const
{
    if (firstColumn > lastColumn) {
        return;
    }
    Position start = this->position();
    Voxel const* const first = voxels_ + (firstColumn - start.x);
    start.x = static_cast<int>(firstColumn);
    auto const count = static_cast<unsigned int>(lastColumn - firstColumn + 1);
    if (queue != nullptr) {
        queue->push(first, count, start);
    } else {
        this->view_->writeRow(first, count, start);
    }
}

template <class ViewType, class Allocator>
void OuputRow<ViewType, Allocator>::flush(SafeBox const* box, WriteQueue<ViewType>& queue)
{
    if (isImageMemory_) {
        return;
    }
    Position const& p = this->position();
    Sizes const& sizes = this->view_->sizes();
    if (!isInside(p.s, sizes.spectralSeries) || !isInside(p.t, sizes.timeSeries) || !isInside(p.z, sizes.plans) ||
        !isInside(p.y, sizes.rows)) {
        return;
    }
    int64 const first = std::max<int64>(p.x, 0);
    int64 const last = std::min<int64>(int64{p.x} + this->length(), sizes.columns) - 1;
    if (box == nullptr) {
        write(first, last, nullptr);
        return;
    }
    if (!box->containsLine(p) || box->firstColumn > box->lastColumn) {
        write(first, last, &queue);
        return;
    }
    write(first, std::min(last, box->firstColumn - 1), &queue);
    write(std::max(first, box->firstColumn), std::min(last, box->lastColumn), nullptr);
    write(std::max(first, box->lastColumn + 1), last, &queue);
}

#define MOX_INSTANTIATE_VIEW(...)                                                                                      \
    template class InputRow<__VA_ARGS__>;                                                                              \
    template class WriteQueue<__VA_ARGS__>;                                                                            \
    template class OuputRow<__VA_ARGS__>;
#define MOX_INSTANTIATE(T)                                                                                             \
    MOX_INSTANTIATE_VIEW(View<T>)                                                                                      \
    MOX_INSTANTIATE_VIEW(View<T, SimdVec::AlignedAllocator<T, 16>>)
MOX_FOR_EACH_REAL_VOXEL(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE
#undef MOX_INSTANTIATE_VIEW

} // namespace mox::access
