#include "Segmentation/private/HistogramSweep.h"

#include <Moxelcore/Core/Exception.h>

#include <cmath>
#include <limits>

#include "Core/private/Helper/raise.h"
#include "Segmentation/private/BinCounts.h"
#include "Segmentation/private/PackedSums.h"
#include "Segmentation/private/windowPasses.h"

namespace mox::segmentation {

namespace {

__extension__ using int128 = __int128;

/// Sums of powers of the bin numbers of a window. The fourth powers are told in two parts, each of 32 bits.
enum PowerSum : std::size_t { total, first, second, third, fourthLow, fourthHigh, numOfPowerSums };

/// Counts are signed, so that vectors of them compare fast, and as small as one and a half windows allow.
template <class Count>
class Sweep final : public HistogramSweep {
public:
    explicit Sweep(TexturePlan const& plan)
        : plan_(plan)
        , windowSize_(numOfPositions(plan.disk))
        , numOfBins_(static_cast<std::size_t>(plan.bins.count))
        , wantsPeak_(plan.usesTypes(HISTO_Peak, HISTO_Peak + 1))
        , counts_(plan.bins)
    {
        for (int type = HISTO_Quantile10; type <= HISTO_QuantileR6; ++type) {
            if (plan.usesTypes(type, type + 1)) {
                quantiles_.push_back(static_cast<TextureFeatureTypes>(type));
            }
        }
        std::stable_sort(quantiles_.begin(), quantiles_.end(),
                         [this](auto a, auto b) { return ratioOf(a) < ratioOf(b); });
        packSums();
        makeTables();
    }

    void begin(std::size_t width) override
    {
        width_ = width;
        words_.reset(2 * plan_.radius + 1, width * packing_.numOfWords());
    }

    void compute(RowRing<std::uint32_t> const& bins, int y, std::size_t firstColumn, std::size_t count) override
    {
        for (WindowRow const& row : plan_.disk) {
            if (!words_.holds(y + row.y)) {
                makeWords(bins.row(y + row.y), words_.claim(y + row.y));
            }
        }
        sums_.resize(count * packing_.numOfWords());
        for (std::size_t word = 0; word < packing_.numOfWords(); ++word) {
            collectRuns(wordRuns_, words_, y, firstColumn + word * width_);
            slideSums(wordRuns_, count, sums_.data() + word * count);
        }
        requireFilled(count);
        if (plan_.usesTypes(HISTO_Mean, HISTO_Peak)) {
            double const bits = std::log2(static_cast<double>(windowSize_ * numOfBins_)); // of the largest first sum
            bits < 15   ? computeMoments<int64, int64>(count)
            : bits < 31 ? computeMoments<int64, int128>(count)
                        : computeMoments<int128, int128>(count);
        }
        if (wantsPeak_ || !quantiles_.empty()) {
            collectRuns(binRuns_, bins, y, firstColumn);
            slideCounts(count);
        }
    }

private:
    bool wants(TextureFeatureTypes type) const { return plan_.usesTypes(type, type + 1); }

    std::vector<double>& resultOf(TextureFeatureTypes type)
    {
        return results_[static_cast<std::size_t>(type - HISTO_Mean)];
    }

    double ratioOf(TextureFeatureTypes type) const
    {
        double const ratio = plan_.quantileRatios[static_cast<std::size_t>(type - HISTO_Quantile10)];
        return std::isnan(ratio) ? std::numeric_limits<double>::infinity() : ratio; // neither is ever reached
    }

    void packSums()
    {
        uint64 const top = numOfBins_ - 1;
        uint64 const square = top * top;
        bool const wantsFourth = wants(HISTO_Kurtosis);
        bool const wantsThird = wantsFourth || wants(HISTO_Skewness);
        bool const wantsSecond = wantsThird || wants(HISTO_Stddev) || wants(HISTO_Variance);
        bool const wantsFirst = wantsSecond || wants(HISTO_Mean);
        auto const pack = [this](PowerSum sum, bool isWanted, uint64 largest) {
            if (isWanted) {
                packed_[sum] = packing_.add(windowSize_ * largest);
            }
        };
        pack(total, true, 1);
        pack(first, wantsFirst, top);
        pack(second, wantsSecond, square);
        pack(third, wantsThird, square * top);
        pack(fourthLow, wantsFourth, std::min<uint64>(square * square, 0xffffffffU));
        pack(fourthHigh, wantsFourth, (square * square) >> 32U);
    }

    /// By word, what each bin adds to the packed sums; the outside adds nothing.
    void makeTables()
    {
        tables_.assign(packing_.numOfWords(), std::vector<uint64>(static_cast<std::size_t>(plan_.bins.outside) + 1));
        for (uint64 v = 0; v < numOfBins_; ++v) {
            uint64 const fourth = v * v * v * v;
            std::array<uint64, numOfPowerSums> const powers = {
                1, v, v * v, v * v * v, fourth & 0xffffffffU, fourth >> 32U};
            for (std::size_t sum = 0; sum < numOfPowerSums; ++sum) {
                if (packed_[sum].mask != 0) {
                    tables_[packed_[sum].word][v] += powers[sum] << packed_[sum].shift;
                }
            }
        }
    }

    void makeWords(std::uint32_t const* bins, uint64* words) const
    {
        for (std::size_t word = 0; word < packing_.numOfWords(); ++word) {
            uint64 const* const table = tables_[word].data();
            for (std::size_t x = 0; x < width_; ++x) {
                words[word * width_ + x] = table[bins[x]];
            }
        }
    }

    template <class T>
    void collectRuns(Runs<T>& runs, RowRing<T> const& rows, int y, std::size_t firstColumn) const
    {
        runs.clear();
        for (WindowRow const& row : plan_.disk) {
            T const* const centre = rows.row(y + row.y) + firstColumn + plan_.radius;
            runs.push_back({centre + row.first, centre + row.last});
        }
    }

    uint64 at(PowerSum sum, std::size_t x, std::size_t count) const
    {
        return packed_[sum].of(sums_[packed_[sum].word * count + x]);
    }

    void requireFilled(std::size_t count) const
    {
        for (std::size_t x = 0; x < count; ++x) {
            if (at(total, x, count) == 0) {
                helper::raise<InvalidCall>("Math/src/Histogram",
                                           "The histogram is empty: impossible to compute a measure.");
            }
        }
    }

    /// Central moments of bin numbers times powers of the total are integers, so that a window within one bin has none.
    /// `Integer` holds twice the bits of the first sum, `Wide` those of six times its fourth power.
    template <class Integer, class Wide>
    void computeMoments(std::size_t count)
    {
        double const binSize = plan_.bins.binSize;
        auto const power = [&](PowerSum s, std::size_t x) { return static_cast<Integer>(at(s, x, count)); };
        auto const n = [&](std::size_t x) { return static_cast<double>(at(total, x, count)); };
        auto const spread = [&](std::size_t x) { // N^2 m2
            return static_cast<double>(power(total, x) * power(second, x) - power(first, x) * power(first, x));
        };
        auto const variance = [&](std::size_t x) { return binSize * binSize * (spread(x) / (n(x) * n(x))); };
        auto const hasSpread = [&](std::size_t x) { return variance(x) > std::numeric_limits<double>::min(); };
        auto const fill = [&](TextureFeatureTypes type, auto&& value) {
            if (wants(type)) {
                resultOf(type).resize(count);
                for (std::size_t x = 0; x < count; ++x) {
                    resultOf(type)[x] = value(x);
                }
            }
        };
        fill(HISTO_Mean, [&](std::size_t x) { return plan_.bins.centre(static_cast<double>(power(first, x)) / n(x)); });
        fill(HISTO_Variance, variance);
        fill(HISTO_Stddev, [&](std::size_t x) { return hasSpread(x) ? std::sqrt(variance(x)) : 0.0; });
        fill(HISTO_Skewness, [&](std::size_t x) {
            double const m2 = spread(x);
            return hasSpread(x) ? thirdMoment<Wide>(x, count) / (std::sqrt(m2) * m2) : 0.0;
        });
        fill(HISTO_Kurtosis, [&](std::size_t x) {
            double const m2 = spread(x);
            return hasSpread(x) ? fourthMoment<Wide>(x, count) / (m2 * m2) - 3.0 : 0.0;
        });
    }

    /// N^3 m3.
    template <class Wide>
    double thirdMoment(std::size_t x, std::size_t count) const
    {
        auto const n = static_cast<Wide>(at(total, x, count));
        auto const s1 = static_cast<Wide>(at(first, x, count));
        auto const s2 = static_cast<Wide>(at(second, x, count));
        auto const s3 = static_cast<Wide>(at(third, x, count));
        return static_cast<double>(n * n * s3 - 3 * n * s1 * s2 + 2 * s1 * s1 * s1);
    }

    /// N^4 m4.
    template <class Wide>
    double fourthMoment(std::size_t x, std::size_t count) const
    {
        auto const n = static_cast<Wide>(at(total, x, count));
        auto const s1 = static_cast<Wide>(at(first, x, count));
        auto const s2 = static_cast<Wide>(at(second, x, count));
        auto const s3 = static_cast<Wide>(at(third, x, count));
        Wide const s4 =
            (static_cast<Wide>(at(fourthHigh, x, count)) << 32U) + static_cast<Wide>(at(fourthLow, x, count));
        return static_cast<double>(n * n * n * s4 - 4 * n * n * s1 * s3 + 6 * n * s1 * s1 * s2 - 3 * s1 * s1 * s1 * s1);
    }

    void slideCounts(std::size_t count)
    {
        if (wantsPeak_) {
            resultOf(HISTO_Peak).resize(count);
        }
        for (TextureFeatureTypes const type : quantiles_) {
            resultOf(type).resize(count);
        }
        Count* const n = counts_.bins();
        for (Run<std::uint32_t> const& run : binRuns_) {
            std::for_each(run.first, run.last + 1, [&](std::uint32_t bin) { ++n[bin]; });
        }
        for (std::size_t x = 0;;) {
            search(x, at(total, x, count));
            if (++x == count) {
                break;
            }
            for (Run<std::uint32_t> const& run : binRuns_) {
                --n[run.first[x - 1]];
                ++n[run.last[x]];
            }
        }
        for (Run<std::uint32_t> const& run : binRuns_) {
            std::for_each(run.first + count - 1, run.last + count, [&](std::uint32_t bin) { --n[bin]; });
        }
    }

    void search(std::size_t x, uint64 inside)
    {
        Count const most = counts_.largest();
        if (wantsPeak_) {
            resultOf(HISTO_Peak)[x] = plan_.bins.centre(static_cast<double>(counts_.firstWith(most)));
        }
        std::size_t from = 0; // thresholds ascend, and with them the bins
        for (TextureFeatureTypes const type : quantiles_) {
            double const threshold = static_cast<double>(inside) * ratioOf(type);
            from = firstBeyond(threshold, most, from);
            resultOf(type)[x] = quantile(threshold, from);
        }
    }

    std::size_t firstBeyond(double threshold, Count most, std::size_t from) const
    {
        if (threshold < 0) {
            return 0;
        }
        if (!(threshold < (most >> 1) + most)) {
            return numOfBins_;
        }
        return counts_.firstAbove(static_cast<Count>(threshold), from);
    }

    /// Between the first bin beyond the threshold and its left neighbour, whose quantile count is smaller.
    double quantile(double threshold, std::size_t bin) const
    {
        if (bin == 0) {
            return plan_.bins.centre(0);
        }
        auto const at = static_cast<double>(bin);
        if (bin == numOfBins_) {
            return plan_.bins.centre(at - 1);
        }
        double const reached = counts_.quantileCount(bin);
        double const below = counts_.quantileCount(bin - 1);
        double const weight = (reached - threshold) / (reached - below);
        return plan_.bins.centre(at) * (1.0 - weight) + plan_.bins.centre(at - 1) * weight;
    }

    TexturePlan const& plan_;
    std::size_t windowSize_;
    std::size_t numOfBins_;
    bool wantsPeak_;
    std::vector<TextureFeatureTypes> quantiles_; ///< by ascending ratio
    BinCounts<Count> counts_;
    PackedSums packing_;
    std::array<PackedSum, numOfPowerSums> packed_ = {};
    std::vector<std::vector<uint64>> tables_;
    std::size_t width_ = 0;
    RowRing<uint64> words_; ///< the words of a row one after the other, each as wide as the row
    Runs<uint64> wordRuns_;
    Runs<std::uint32_t> binRuns_;
    std::vector<uint64> sums_;
};

} // namespace

std::unique_ptr<HistogramSweep> makeHistogramSweep(TexturePlan const& plan)
{
    if (numOfPositions(plan.disk) * 3 / 2 <= std::numeric_limits<std::int16_t>::max()) {
        return std::make_unique<Sweep<std::int16_t>>(plan);
    }
    return std::make_unique<Sweep<std::int32_t>>(plan);
}

} // namespace mox::segmentation
