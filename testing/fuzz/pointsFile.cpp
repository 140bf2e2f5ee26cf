// Reads any bytes as a file of points: an error, or points.

#include <Moxelcore/Math/MathProperty.h>

#include "apps/moxel/Errors.h"
#include "apps/moxel/PointsFile.h"
#include "testing/fuzz/MemoryFile.h"

namespace {

template <class Point>
void read(mox::fuzz::MemoryFile const& file)
{
    try {
        moxel::readPoints<Point>(file.path());
    } catch (moxel::FileError const&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    mox::fuzz::MemoryFile const file(data, size);
    read<mox::math::Vector2<double>>(file);
    read<mox::math::Vector3<int>>(file);
    return 0;
}
