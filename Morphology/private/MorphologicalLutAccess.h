#pragma once

#include <Moxelcore/Core/Integers.h>
#include <Moxelcore/Morphology/MorphologicalLut3D.h>

#include <vector>

namespace mox::morphology {

/// What the library does with a table and an application need not.
struct MorphologicalLutAccess {
    /// The entries of a full table, 64 to a word.
    static uint64 const* words(MorphologicalLut3D const& lut);
    /// Makes a full table with these hits.
    static void setHits(MorphologicalLut3D& lut, std::vector<unsigned int> const& indices);
};

} // namespace mox::morphology
