#pragma once

#include "Core/private/filters/leafRows.h"
#include "Morphology/private/Lane.h"
#include "Morphology/private/NeighborhoodToValue.h"
#include "Morphology/private/RowReductionSimd.h"

namespace mox::morphology {

namespace details {

/// Reduces the rows before the centre's in order, then the centre's row at x - 1, x and x + 1, then the rows behind.
template <class Functor, std::size_t numOfRows, class T>
struct CrossRow {
    using L = Lane<T>;

    std::array<T const*, numOfRows> before;
    filters::Line<T> centre;
    std::array<T const*, numOfRows> behind;

    MOX_SSE41 void reduceTo(T* out, unsigned int columns, Ahead<T> const& ahead) const
    {
        unsigned int const lastVector = (columns - 1) / L::size * L::size;
        __m128i previous = L::splat(centre.left);
        __m128i present = lastVector > 0 ? L::load(centre.voxels) : lastOfCentre(0, columns);
        for (unsigned int x = 0; x < lastVector; x += L::size) {
            fetchToRead(ahead.toRead, x);
            fetchToWrite(ahead.toWrite, x);
            unsigned int const after = x + L::size;
            __m128i const next =
                after < lastVector ? L::load(centre.voxels + after) : lastOfCentre(after, columns - after);
            L::store(out + x, cross(previous, present, next, Whole{x}));
            previous = present;
            present = next;
        }
        unsigned int const count = columns - lastVector;
        L::store(out + lastVector, cross(previous, present, L::splat(centre.right), Part{lastVector, count}), count);
    }

private:
    struct Whole {
        unsigned int x;
        MOX_SSE41 __m128i operator()(T const* row) const { return L::load(row + x); }
    };
    struct Part {
        unsigned int x;
        unsigned int count;
        MOX_SSE41 __m128i operator()(T const* row) const { return L::load(row + x, count); }
    };

    template <class Load>
    MOX_SSE41 __m128i cross(__m128i previous, __m128i present, __m128i next, Load load) const
    {
        __m128i running = load(before[0]);
        for (std::size_t i = 1; i < numOfRows; ++i) {
            running = reduce<T>(Functor(), running, load(before[i]));
        }
        running = reduce<T>(Functor(), running, L::earlier(previous, present));
        running = reduce<T>(Functor(), running, present);
        running = reduce<T>(Functor(), running, L::later(present, next));
        for (T const* const row : behind) {
            running = reduce<T>(Functor(), running, load(row));
        }
        return running;
    }

    /// The last register of the row, and the voxel beside the row if there is room.
    MOX_SSE41 __m128i lastOfCentre(unsigned int x, unsigned int count) const
    {
        T all[L::size] = {};
        std::copy_n(centre.voxels + x, count, all);
        if (count < L::size) {
            all[count] = centre.right;
        }
        return L::load(all);
    }
};

/// One pass over a leaf with the cross of 5 voxels in the plane or of 7 in space.
template <class Functor, class Tag>
class CrossKernel {
public:
    static filters::Use use() { return {box.reach(), false, leafOfSmallElement}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        ElementRows lines(box, leaf.getNumOfRows(),
                          [&](std::size_t slot, int y, int z) { return source.line(slot, y, z); });
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
                lines.moveTo(y, z);
                Ahead<T> const ahead{isInSpace ? source.ahead(y + 1, z + 1) : source.ahead(y + 2, z),
                                     target.ahead(y + 1, z)};
                target.writeRow(y, z, [&](T* out) { crossAt<T>(lines).reduceTo(out, leaf.getNumOfColumns(), ahead); });
            }
        }
    }

private:
    static constexpr OffsetBox box = boxOf(Tag::offsets);
    static constexpr bool isInSpace = box.most.plan > 0;

    template <class T, class Lines>
    static auto crossAt(Lines const& lines)
    {
        if constexpr (isInSpace) {
            return CrossRow<Functor, 2, T>{{lines.at(0, -1).voxels, lines.at(-1, 0).voxels},
                                           lines.at(0, 0),
                                           {lines.at(1, 0).voxels, lines.at(0, 1).voxels}};
        } else {
            return CrossRow<Functor, 1, T>{{lines.at(-1, 0).voxels}, lines.at(0, 0), {lines.at(1, 0).voxels}};
        }
    }
};

} // namespace details

/// Twin of `Neighborhood2dToValue`.
template <class Functor, class Tag, class Payload>
class Neighborhood2dToValueSimd : public details::OffsetListKernel<RowReductionSimd<Functor>, Tag, Payload> {
public:
    using details::OffsetListKernel<RowReductionSimd<Functor>, Tag, Payload>::OffsetListKernel;
};

template <class Functor>
class Neighborhood2dToValueSimd<Functor, access::Neighborhood2D_4Tag, NoDataType>
    : public details::CrossKernel<Functor, access::Neighborhood2D_4Tag> {
};

/// Twin of `Neighborhood3dToValue`.
template <class Functor, class Tag, class Payload>
class Neighborhood3dToValueSimd : public details::OffsetListKernel<RowReductionSimd<Functor>, Tag, Payload> {
public:
    using details::OffsetListKernel<RowReductionSimd<Functor>, Tag, Payload>::OffsetListKernel;
};

template <class Functor>
class Neighborhood3dToValueSimd<Functor, access::Neighborhood3D_6Tag, NoDataType>
    : public details::CrossKernel<Functor, access::Neighborhood3D_6Tag> {
};

} // namespace mox::morphology
