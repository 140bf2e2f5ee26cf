#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/Vector.h>

namespace mox::morphology {

/// A table that tells for each binary pattern of a voxel and its 26 neighbours whether it is a hit.
///
/// The index of a pattern has a bit for each of the 27 voxels, set where the voxel is not 0. Bits count in raster
/// order, columns fastest, plans slowest: bit 0 is the neighbour at column, row and plan -1, bit 13 the voxel itself,
/// bit 26 the neighbour at column, row and plan 1.
///
/// A new table is empty: it has no entries and no hits. A full one takes 16 MiB, a bit per pattern. Copies are deep.
class MOXELCORE_API MorphologicalLut3D {
public:
    static constexpr unsigned int fullSize = 134217728;

    MorphologicalLut3D();
    MorphologicalLut3D(MorphologicalLut3D const& other);
    MorphologicalLut3D& operator=(MorphologicalLut3D const& other);
    ~MorphologicalLut3D();

    bool operator==(MorphologicalLut3D const& other) const;
    bool operator!=(MorphologicalLut3D const& other) const;

    /// Whether the pattern is a hit. False for an index that the table does not have.
    bool operator[](unsigned int const& index) const;

    /// 0 or `fullSize`.
    unsigned int size() const;

    /// Makes a hit of each pattern that fits the kernel, beside the hits that are there: 27 values in raster order, 0
    /// for a voxel that is 0, 1 for one that is not, any other for one that does not matter. Throws `InvalidCall` for
    /// another number of values.
    void addKernel(Vector<unsigned char> const& kernel);

    /// Takes over `fullSize` entries; one whose low byte is not 0 is a hit. Throws `InvalidCall` for a null array or
    /// another size.
    void buildFromLut(int const* entries, unsigned int size);

    /// Makes the table empty.
    void reset();

private:
    friend struct MorphologicalLutAccess;
    struct Entries;
    Entries* entries_;
};

} // namespace mox::morphology
