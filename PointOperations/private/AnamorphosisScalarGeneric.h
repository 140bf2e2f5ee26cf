#pragma once

#include <Moxelcore/Core/Integers.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace mox::point_operations {

/// A table of intensities and where it applies.
struct AnamorphosisTable {
    double begin;
    double end;
    double step;
    double const* entries;
    std::size_t numOfEntries;
    double lowIntensity;
    double highIntensity;

    double at(double v) const
    {
        if (begin > v) {
            return lowIntensity;
        }
        if (v > end) {
            return highIntensity;
        }
        return numOfEntries == 0 ? 0 : entries[indexOf(v / step)];
    }

private:
    /// The nearest entry; NaN has the first.
    std::size_t indexOf(double place) const
    {
        if (!(place >= 1)) {
            return 0;
        }
        return place < static_cast<double>(numOfEntries) ? static_cast<std::size_t>(place) : numOfEntries - 1;
    }
};

/// A value without its fraction: the nearest 64-bit integer beyond their range, 0 for NaN. Then it wraps into T.
template <class T>
T truncatedTo(double value)
{
    constexpr double bound = 0x1p63; // exact, and the first that is too large
    if (std::isnan(value)) {
        return T(0);
    }
    int64 const whole = value >= bound    ? std::numeric_limits<int64>::max()
                        : value <= -bound ? std::numeric_limits<int64>::min()
                                          : static_cast<int64>(value);
    return static_cast<T>(whole);
}

/// Each voxel through the table.
template <class T>
class AnamorphosisScalarGeneric {
public:
    explicit AnamorphosisScalarGeneric(AnamorphosisTable const& table)
        : table_(table)
    {
    }

    void row(T const* in, T* out, std::size_t count) const
    {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = truncatedTo<T>(table_.at(static_cast<double>(in[i])));
        }
    }

private:
    AnamorphosisTable table_;
};

/// The same for voxels of 8 or 16 bits, whose results are all found beforehand.
template <class T>
class FoldedAnamorphosis {
public:
    explicit FoldedAnamorphosis(AnamorphosisTable const& table)
        : results_(std::size_t{std::numeric_limits<Index>::max()} + 1)
    {
        for (std::size_t i = 0; i < results_.size(); ++i) {
            results_[i] = truncatedTo<T>(table.at(static_cast<double>(static_cast<T>(i))));
        }
    }

    /// Several voxels go through one register, which halves the loads and stores.
    void row(T const* in, T* out, std::size_t count) const
    {
        T const* const results = results_.data();
        std::size_t const whole = count / perRegister * perRegister;
        for (std::size_t i = 0; i < whole; i += perRegister) {
            uint64 voxels = 0;
            std::memcpy(&voxels, in + i, sizeof voxels);
            uint64 made = 0;
            for (std::size_t k = 0; k < perRegister; ++k) {
                auto const index = static_cast<Index>(voxels >> k * bits);
                made |= uint64{static_cast<Index>(results[index])} << k * bits;
            }
            std::memcpy(out + i, &made, sizeof made);
        }
        for (std::size_t i = whole; i < count; ++i) {
            out[i] = results[static_cast<Index>(in[i])];
        }
    }

private:
    using Index = std::make_unsigned_t<T>;
    static constexpr std::size_t bits = 8 * sizeof(T);
    static constexpr std::size_t perRegister = sizeof(uint64) / sizeof(T);

    std::vector<T> results_;
};

} // namespace mox::point_operations
