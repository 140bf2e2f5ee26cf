#pragma once

#include <Moxelcore/Core/access/Block.h>

#include <type_traits>
#include <vector>

#include "Core/private/filters/leafRows.h"
#include "Morphology/private/RowProgram.h"
#include "Morphology/private/RowSweep.h"
#include "Morphology/private/holdsUnordered.h"

namespace mox::morphology {

/// Runs a program over a leaf. With a second one, that is for the leaves that hold voxels for which the first is not
/// right: those are found before anything is written.
template <class Functor>
class RowProgramKernel {
public:
    RowProgramKernel(RowProgram program, filters::LeafShape const& leaf)
        : programs_{std::move(program)}
        , leaf_(leaf)
    {
        extents_.push_back(extentsOf(programs_.front()));
    }

    /// For a chain, which stands for a number of iterations.
    RowProgramKernel(RowProgram folded, RowProgram literal, filters::LeafShape const& leaf, unsigned int iterations)
        : RowProgramKernel(std::move(folded), leaf)
    {
        programs_.push_back(std::move(literal));
        extents_.push_back(extentsOf(programs_.back()));
        iterations_ = iterations;
    }

    filters::Use use() const { return {reach().reach(), false, leaf_, iterations_}; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        using T = typename Source::Voxel;
        std::size_t chosen = 0;
        bool mayRegroup = true;
        if constexpr (std::is_floating_point_v<T>) {
            mayRegroup = programs_.size() > 1 && !holdsUnordered(leaf, reach(), source);
            chosen = programs_.size() > 1 && !mayRegroup ? 1 : 0;
        }
        RowSweep<Functor, Source>(programs_[chosen], extents_[chosen], mayRegroup, leaf, source).run(target);
    }

private:
    OffsetBox const& reach() const { return extents_.front().front().around; }

    std::vector<RowProgram> programs_;
    std::vector<std::vector<StageExtent>> extents_;
    filters::LeafShape leaf_;
    unsigned int iterations_ = 1;
};

} // namespace mox::morphology
