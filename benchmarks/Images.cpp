#include "benchmarks/Images.h"

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <random>

namespace mox::benchmarks {

namespace {

template <class T>
struct Voxels {
    T* begin;
    T* end;
};

/// Calls `work` with the image's voxels in their type.
template <class Work>
void visit(memory::InMemoryImage& image, Work const& work)
{
    void* memory = nullptr;
    image.getRowPointerAt(0, memory, 0, 0, 0, 0, 0);
    std::size_t const count = numOfVoxels(image);
    dispatch(RealVoxels(), image.getVoxelType(), [&]<class T>() {
        work(Voxels<T>{static_cast<T*>(memory), static_cast<T*>(memory) + count});
    });
}

} // namespace

std::size_t numOfVoxels(ImageModel const& image)
{
    return std::size_t{image.getSize(COLUMNS)} * image.getSize(ROWS) * image.getSize(PLANS) *
           image.getSize(TIME_SERIES) * image.getSize(SPECTRAL_SERIES);
}

void fillWithNoise(memory::InMemoryImage& image, VoxelTypes type, Size const& size, unsigned int levels)
{
    image.allocate(type, size.columns, size.rows, size.plans, 1, 1);
    std::mt19937 random(1);
    visit(image, [&]<class T>(Voxels<T> voxels) {
        for (T* voxel = voxels.begin; voxel != voxels.end; ++voxel) {
            *voxel = static_cast<T>((random() & 0xFFFFU) % levels);
        }
    });
}

std::vector<double> voxelsOf(memory::InMemoryImage& image)
{
    std::vector<double> result;
    visit(image, [&]<class T>(Voxels<T> voxels) {
        for (T const* voxel = voxels.begin; voxel != voxels.end; ++voxel) {
            result.push_back(static_cast<double>(*voxel));
        }
    });
    return result;
}

} // namespace mox::benchmarks
