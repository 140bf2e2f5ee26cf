#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/Vector.h>

namespace mox::morphology {

/// A table that tells for each binary pattern of a voxel and its 8 neighbours whether it is a hit.
///
/// The index of a pattern has a bit for each of the 9 voxels, set where the voxel is not 0. Bits count in raster
/// order, columns fastest: bit 0 is the neighbour at column -1 and row -1, bit 4 the voxel itself, bit 8 the neighbour
/// at column 1 and row 1.
///
/// A new table is empty: it has no entries and no hits. Copies are deep.
class MOXELCORE_API MorphologicalLut2D {
public:
    static constexpr unsigned int fullSize = 512;

    MorphologicalLut2D();
    MorphologicalLut2D(MorphologicalLut2D const& other);
    MorphologicalLut2D& operator=(MorphologicalLut2D const& other);
    ~MorphologicalLut2D();

    bool operator==(MorphologicalLut2D const& other) const;
    bool operator!=(MorphologicalLut2D const& other) const;

    /// The entry, which is not 0 for a hit. 0 for an index that the table does not have.
    unsigned char const& operator[](unsigned int index) const;

    /// 0 or `fullSize`.
    unsigned int size() const;

    /// Makes a hit of each pattern that fits the kernel, beside the hits that are there: 9 values in raster order, 0
    /// for a voxel that is 0, 1 for one that is not, any other for one that does not matter. Throws `InvalidCall` for
    /// another number of values.
    void addKernel(Vector<unsigned char> const& kernel);

    /// Takes over `fullSize` entries. Throws `InvalidCall` for a null array or another size. Of an `int` the low byte
    /// counts.
    void buildFromLut(unsigned char const* entries, unsigned int size);
    void buildFromLut(int const* entries, unsigned int size);

    /// Makes the table empty.
    void reset();

private:
    struct Entries;
    Entries* entries_;
};

} // namespace mox::morphology
