#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "Morphology/private/ElementRows.h"

namespace mox::morphology {

namespace details {

/// Reduces to each voxel of a row the voxels that the pointers see from there, in their order.
template <class Functor>
struct ScalarReduction {
    template <class T>
    static void row(T const* const* pointers, std::size_t numOfPointers, T* out, unsigned int count)
    {
        for (unsigned int x = 0; x < count; ++x) {
            T running = pointers[0][x];
            for (std::size_t k = 1; k < numOfPointers; ++k) {
                running = Functor()(running, pointers[k][x]);
            }
            out[x] = running;
        }
    }
};

template <class Tag, class Payload>
struct Offsets {
    Payload list;

    Payload const& get() const { return list; }
};

template <class Tag>
struct Offsets<Tag, NoDataType> {
    NoDataType none;

    static auto const& get() { return Tag::offsets; }
};

/// One pass over a leaf with an element that is a list of offsets.
template <class Reduction, class Tag, class Payload>
class OffsetListKernel {
public:
    explicit OffsetListKernel(Payload payload = Payload())
        : offsets_{std::move(payload)}
        , box_(boxOf(offsets_.get()))
    {
    }

    filters::Use use() const { return {box_.reach()}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        unsigned int const columns = leaf.getNumOfColumns();
        int const first = box_.least.column;
        unsigned int const width = columns + static_cast<unsigned int>(box_.most.column - first);
        ElementRows rows(box_, leaf.getNumOfRows(),
                         [&](std::size_t slot, int y, int z) { return source.row(slot, first, y, z, width) - first; });
        auto const& offsets = offsets_.get();
        std::vector<T const*> pointers(offsets.size());
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
                if (target.isStopped()) {
                    return;
                }
                rows.moveTo(y, z);
                std::transform(offsets.begin(), offsets.end(), pointers.begin(), [&](auto const& offset) {
                    kernel::Offset3D const o = kernel::inSpace(offset);
                    return rows.at(o.row, o.plan) + o.column;
                });
                target.writeRow(y, z, [&](T* out) { reduce(pointers, out, columns, target); });
            }
        }
    }

private:
    /// In stretches, so that a run with an element of millions of voxels can be cancelled within a row.
    template <class T, class Target>
    void reduce(std::vector<T const*>& pointers, T* out, unsigned int columns, Target const& target) const
    {
        constexpr std::size_t comparisonsPerStretch = std::size_t{1} << 26;
        constexpr std::size_t shortest = 64;
        auto const stretch = static_cast<unsigned int>(
            std::clamp<std::size_t>(comparisonsPerStretch / pointers.size(), shortest, std::max(columns, 64U)));
        for (unsigned int x = 0; x < columns && !target.isStopped(); x += stretch) {
            unsigned int const count = std::min(stretch, columns - x);
            Reduction::row(pointers.data(), pointers.size(), out + x, count);
            for (T const*& pointer : pointers) {
                pointer += count;
            }
        }
    }

    Offsets<Tag, Payload> offsets_;
    OffsetBox box_;
};

} // namespace details

/// 4-neighbourhood, or lists of `kernel::Offset2D`.
template <class Functor, class Tag, class Payload>
class Neighborhood2dToValue : public details::OffsetListKernel<details::ScalarReduction<Functor>, Tag, Payload> {
public:
    using details::OffsetListKernel<details::ScalarReduction<Functor>, Tag, Payload>::OffsetListKernel;
};

/// 6- and 18-neighbourhood, or lists of `kernel::Offset3D`.
template <class Functor, class Tag, class Payload>
class Neighborhood3dToValue : public details::OffsetListKernel<details::ScalarReduction<Functor>, Tag, Payload> {
public:
    using details::OffsetListKernel<details::ScalarReduction<Functor>, Tag, Payload>::OffsetListKernel;
};

} // namespace mox::morphology
