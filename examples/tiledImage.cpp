// An application's own image class: voxels lie in tiles that are made when they are first written, so that an image
// that is mostly empty needs little memory. The library reads and writes it by rows.

#include <Moxelcore/Moxelcore.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <vector>

namespace {

/// 8-bit planes of any size, in tiles of 256 by 256 voxels. A tile that was never written reads 0.
class TiledImage final : public mox::ImageModel {
public:
    std::size_t numOfTiles() const { return tiles_.size(); }

    unsigned int getSize(mox::ImageDimension const& dimension) const override
    {
        return dimension == mox::COLUMNS ? columns_ : dimension == mox::ROWS ? rows_ : 1;
    }
    mox::VoxelTypes getVoxelType() const override { return mox::MOX_UINT8; }

    bool allocate(mox::VoxelTypes const& voxelType, unsigned int columns, unsigned int rows, unsigned int plans,
                  unsigned int timeSeries, unsigned int spectralSeries) override
    {
        if (voxelType != mox::MOX_UINT8 || plans != 1 || timeSeries != 1 || spectralSeries != 1) {
            return false; // the caller gets a clear error from the rule that asked
        }
        columns_ = columns;
        rows_ = rows;
        tiles_.clear();
        return true;
    }

    bool readRowAt(unsigned int count, void* buffer, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                   unsigned int s) const override
    {
        if (!contains(count, x, y, z, t, s)) {
            return false;
        }
        std::shared_lock const lock(mutex_); // rows are asked for from many threads at once
        auto* to = static_cast<unsigned char*>(buffer);
        forEachPiece(count, x, [&](unsigned int first, unsigned int length) {
            auto const tile = tiles_.find({first / side, y / side});
            if (tile == tiles_.end()) {
                std::memset(to, 0, length);
            } else {
                std::memcpy(to, rowOf(*tile->second, first, y), length);
            }
            to += length;
        });
        return true;
    }

    bool writeRowAt(unsigned int count, void const* buffer, unsigned int x, unsigned int y, unsigned int z,
                    unsigned int t, unsigned int s) override
    {
        if (!contains(count, x, y, z, t, s)) {
            return false;
        }
        std::unique_lock const lock(mutex_);
        auto const* from = static_cast<unsigned char const*>(buffer);
        forEachPiece(count, x, [&](unsigned int first, unsigned int length) {
            bool const empty = std::all_of(from, from + length, [](unsigned char voxel) { return voxel == 0; });
            auto& tile = tiles_[{first / side, y / side}];
            if (!tile && !empty) {
                tile = std::make_unique<Tile>();
            }
            if (tile) {
                std::memcpy(rowOf(*tile, first, y), from, length);
            } else {
                tiles_.erase({first / side, y / side});
            }
            from += length;
        });
        return true;
    }

    /// There is no memory to point to: the library then reads and writes copies.
    bool getRowPointerAt(unsigned int, void*&, unsigned int, unsigned int, unsigned int, unsigned int,
                         unsigned int) override
    {
        return false;
    }
    bool getConstRowPointerAt(unsigned int, void const*&, unsigned int, unsigned int, unsigned int, unsigned int,
                              unsigned int) const override
    {
        return false;
    }

    mox::ImageInterpretation getInterpretation() const override { return interpretation_; }
    bool setInterpretation(mox::ImageInterpretation const& interpretation) override
    {
        interpretation_ = interpretation;
        return true;
    }

    // This image has no calibration and no texts: it reads as a new one and takes no other.
    bool setCalibrationOrigin(mox::ImageDimension const&, double) override { return false; }
    double getCalibrationOrigin(mox::ImageDimension const&) const override { return 0; }
    bool setCalibrationStep(mox::ImageDimension const&, double) override { return false; }
    double getCalibrationStep(mox::ImageDimension const&) const override { return 0; }
    bool setDescription(mox::String const&) override { return false; }
    mox::String getDescription() const override { return ""; }
    bool setUnit(mox::String const&) override { return false; }
    mox::String getUnit() const override { return ""; }
    bool lockRegion(int, int, int, int, int) override { return false; }

private:
    static constexpr unsigned int side = 256;
    using Tile = std::array<unsigned char, side * side>;

    static unsigned char* rowOf(Tile& tile, unsigned int x, unsigned int y)
    {
        return tile.data() + (y % side) * side + x % side;
    }

    bool contains(unsigned int count, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                  unsigned int s) const
    {
        return std::size_t{x} + count <= columns_ && y < rows_ && z == 0 && t == 0 && s == 0;
    }

    /// Calls `piece(first column, length)` for each stretch of the row that lies in one tile.
    template <class Piece>
    static void forEachPiece(unsigned int count, unsigned int x, Piece const& piece)
    {
        for (unsigned int const end = x + count; x < end;) {
            unsigned int const length = std::min(end - x, side - x % side);
            piece(x, length);
            x += length;
        }
    }

    unsigned int columns_ = 0;
    unsigned int rows_ = 0;
    mox::ImageInterpretation interpretation_ = mox::INTERPRETATION_VALUE;
    std::map<std::pair<unsigned int, unsigned int>, std::unique_ptr<Tile>> tiles_;
    mutable std::shared_mutex mutex_;
};

} // namespace

int main()
{
    TiledImage input;
    input.allocate(mox::MOX_UINT8, 5000, 4000, 1, 1, 1);
    std::vector<unsigned char> const bright(300, 200);
    for (unsigned int y = 1000; y < 1100; ++y) {
        input.writeRowAt(300, bright.data(), 2000, y, 0, 0, 0);
    }

    TiledImage mask;
    auto const threshold = mox::segmentation::Threshold::New();
    threshold->input = &input;
    threshold->lowLevel = 100;
    threshold->output = &mask;
    threshold->run();

    std::size_t count = 0;
    std::vector<unsigned char> row(5000);
    for (unsigned int y = 0; y < 4000; ++y) {
        mask.readRowAt(5000, row.data(), 0, y, 0, 0, 0);
        count += static_cast<std::size_t>(std::count(row.begin(), row.end(), 1));
    }
    std::cout << count << " voxels set, in " << mask.numOfTiles() << " tiles of " << 20 * 16 << '\n';
    return count == 300 * 100 ? 0 : 1;
}
