#pragma once

#include <Moxelcore/Core/InMemoryImage.h>
#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "Core/private/access/Sizes.h"

namespace mox::testing {

using access::Sizes;

/// Gives an image voxels in memory order: columns fastest, then rows, plans, time series, spectral series.
template <class T>
void fill(ImageModel& image, Sizes const& sizes, std::vector<T> const& voxels)
{
    if (voxels.size() != sizes.numOfVoxels()) {
        throw std::invalid_argument("as many voxels as the sizes tell");
    }
    access::allocate(image, voxelTypeOf<T>, sizes);
    T const* row = voxels.data();
    for (unsigned int s = 0; s < sizes.spectralSeries; ++s) {
        for (unsigned int t = 0; t < sizes.timeSeries; ++t) {
            for (unsigned int z = 0; z < sizes.plans; ++z) {
                for (unsigned int y = 0; y < sizes.rows; ++y) {
                    image.writeRowAt(sizes.columns, row, 0, y, z, t, s);
                    row += sizes.columns;
                }
            }
        }
    }
}

template <class T>
std::unique_ptr<memory::InMemoryImage> makeImage(Sizes const& sizes, std::vector<T> const& voxels)
{
    auto image = std::make_unique<memory::InMemoryImage>();
    fill(*image, sizes, voxels);
    return image;
}

/// The voxels in memory order.
template <class T>
std::vector<T> voxelsOf(ImageModel const& image)
{
    Sizes const sizes = Sizes::of(image);
    std::vector<T> voxels(sizes.numOfVoxels());
    T* row = voxels.data();
    for (unsigned int s = 0; s < sizes.spectralSeries; ++s) {
        for (unsigned int t = 0; t < sizes.timeSeries; ++t) {
            for (unsigned int z = 0; z < sizes.plans; ++z) {
                for (unsigned int y = 0; y < sizes.rows; ++y) {
                    image.readRowAt(sizes.columns, row, 0, y, z, t, s);
                    row += sizes.columns;
                }
            }
        }
    }
    return voxels;
}

/// A quiet one of either sign, with whatever it carries beside.
template <class T>
T randomNaN(std::mt19937& random)
{
    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    constexpr int digits = std::numeric_limits<T>::digits - 2; // of which none tells that it is a NaN
    auto const bits = std::bit_cast<Bits>(std::numeric_limits<T>::quiet_NaN());
    auto const payload = static_cast<Bits>(std::uniform_int_distribution<Bits>()(random) >> (8 * sizeof(T) - digits));
    return std::copysign(std::bit_cast<T>(static_cast<Bits>(bits | payload)), random() % 2 == 0 ? T(1) : T(-1));
}

/// Voxels over the whole range of the type, its extremes more often than by chance; floating ones with NaN,
/// infinities and zeros of both signs.
template <class T>
std::vector<T> randomVoxels(std::mt19937& random, std::size_t count)
{
    std::vector<T> voxels(count);
    for (T& voxel : voxels) {
        if constexpr (std::is_floating_point_v<T>) {
            using Limits = std::numeric_limits<T>;
            T const special[] = {randomNaN<T>(random), Limits::infinity(), -Limits::infinity(), T(0), -T(0)};
            auto const choice = random() % 32;
            voxel = choice < 5 ? special[choice] : std::uniform_real_distribution<T>(-300, 300)(random);
        } else {
            using Wide = std::conditional_t<std::is_signed_v<T>, long long, unsigned long long>;
            std::uniform_int_distribution<Wide> whole(std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
            auto const choice = random() % 32;
            voxel = choice == 0   ? std::numeric_limits<T>::min()
                    : choice == 1 ? std::numeric_limits<T>::max()
                    : choice < 8  ? static_cast<T>(random() % 128)
                                  : static_cast<T>(whole(random));
        }
    }
    return voxels;
}

/// Sizes from 0 or 1 up, small ones more often.
inline Sizes randomSizes(std::mt19937& random, Sizes const& most)
{
    auto const size = [&](unsigned int largest) {
        return std::uniform_int_distribution<unsigned int>(1, largest)(random);
    };
    return {size(most.columns), size(most.rows), size(most.plans), size(most.timeSeries), size(most.spectralSeries)};
}

} // namespace mox::testing
