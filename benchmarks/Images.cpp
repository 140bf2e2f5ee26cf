#include "benchmarks/Images.h"

#include <Moxelcore/Core/Integers.h>

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
    std::size_t const count = std::size_t{image.getSize(COLUMNS)} * image.getSize(ROWS) * image.getSize(PLANS);
    auto const as = [&]<class T>(T*) { work(Voxels<T>{static_cast<T*>(memory), static_cast<T*>(memory) + count}); };
    switch (image.getVoxelType()) {
    case MOX_UINT8:
        return as(static_cast<unsigned char*>(nullptr));
    case MOX_UINT16:
        return as(static_cast<unsigned short*>(nullptr));
    case MOX_UINT32:
        return as(static_cast<unsigned int*>(nullptr));
    case MOX_UINT64:
        return as(static_cast<uint64*>(nullptr));
    case MOX_INT8:
        return as(static_cast<signed char*>(nullptr));
    case MOX_INT16:
        return as(static_cast<short*>(nullptr));
    case MOX_INT32:
        return as(static_cast<int*>(nullptr));
    case MOX_INT64:
        return as(static_cast<int64*>(nullptr));
    case MOX_FLOAT32:
        return as(static_cast<float*>(nullptr));
    case MOX_FLOAT64:
        return as(static_cast<double*>(nullptr));
    default:
        return;
    }
}

} // namespace

void fillWithNoise(memory::InMemoryImage& image, VoxelTypes type, Size const& size)
{
    image.allocate(type, size.columns, size.rows, size.plans, 1, 1);
    std::mt19937 random(1);
    visit(image, [&]<class T>(Voxels<T> voxels) {
        for (T* voxel = voxels.begin; voxel != voxels.end; ++voxel) {
            *voxel = static_cast<T>(random() & 0xFFU);
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
