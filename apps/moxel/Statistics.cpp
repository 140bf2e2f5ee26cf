#include "apps/moxel/Statistics.h"

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "apps/moxel/Interrupt.h"
#include "apps/moxel/NumberText.h"

namespace moxel {

namespace {

template <class T>
Number number(T value)
{
    return {numberText(value), value};
}

template <class T>
bool isNaN(T voxel)
{
    if constexpr (std::is_floating_point_v<T>) {
        return std::isnan(voxel);
    }
    return false;
}

template <class T>
class TypedStatistics final : public Statistics {
public:
    void add(mox::ImageModel const& image) override
    {
        std::vector<T> row(image.getSize(mox::COLUMNS));
        for (unsigned int s = 0; s < image.getSize(mox::SPECTRAL_SERIES); ++s) {
            for (unsigned int t = 0; t < image.getSize(mox::TIME_SERIES); ++t) {
                for (unsigned int z = 0; z < image.getSize(mox::PLANS); ++z) {
                    for (unsigned int y = 0; y < image.getSize(mox::ROWS); ++y) {
                        interrupt::check();
                        image.readRowAt(image.getSize(mox::COLUMNS), row.data(), 0, y, z, t, s);
                        addRow(row);
                    }
                }
            }
        }
    }

    std::optional<Number> minimum() const override { return tell(minimum_); }
    std::optional<Number> maximum() const override { return tell(maximum_); }
    std::optional<Number> mean() const override
    {
        return tell(static_cast<double>(sum_ / static_cast<long double>(std::max<std::uint64_t>(1, count_))));
    }
    unsigned long long numOfNaN() const override { return nan_; }

private:
    void addRow(std::vector<T> const& row)
    {
        long double sum = 0;
        for (T const voxel : row) {
            if (isNaN(voxel)) {
                ++nan_;
                continue;
            }
            minimum_ = count_ == 0 ? voxel : std::min(minimum_, voxel);
            maximum_ = count_ == 0 ? voxel : std::max(maximum_, voxel);
            ++count_;
            sum += static_cast<long double>(voxel);
        }
        sum_ += sum; // by rows, so that little is lost when very many voxels are summed
    }

    template <class Value>
    std::optional<Number> tell(Value value) const
    {
        return count_ == 0 ? std::nullopt : std::optional(number(value));
    }

    T minimum_ = T();
    T maximum_ = T();
    long double sum_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t nan_ = 0;
};

} // namespace

std::unique_ptr<Statistics> Statistics::create(mox::VoxelTypes voxelType)
{
    std::unique_ptr<Statistics> statistics;
    mox::dispatch(mox::RealVoxels(), voxelType,
                  [&]<class T>() { statistics = std::make_unique<TypedStatistics<T>>(); });
    return statistics;
}

} // namespace moxel
