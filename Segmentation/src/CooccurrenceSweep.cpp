#include "Segmentation/private/CooccurrenceSweep.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "Segmentation/private/LaneCounts.h"
#include "Segmentation/private/PackedSums.h"
#include "Segmentation/private/cooccurrenceMeasures.h"
#include "Segmentation/private/windowPasses.h"

namespace mox::segmentation {

namespace {

using namespace cooccurrence;

double square(double x)
{
    return x * x;
}

/// 1 - exp(-t) without the loss of digits at small t.
double oneMinusExp(double t)
{
    return t < 0x1p-8 ? t * (1 - t / 2 * (1 - t / 3 * (1 - t / 4 * (1 - t / 5)))) : 1 - std::exp(-t);
}

/// Cells are numbered by the smallest type that holds them all.
template <class Cell>
class Sweep final : public CooccurrenceSweep {
public:
    Sweep(TexturePlan const& plan, DirectionPlan const& direction)
        : plan_(plan)
        , direction_(direction)
        , needs_(direction.wanted)
        , numOfPairs_(numOfPositions(direction.window))
        , numOfLevels_(static_cast<std::size_t>(plan.levels.count))
        , cells_(numOfLevels_)
    {
        makeWeights();
        packSums();
        if (numOfLevels_ <= mostTabledLevels) {
            makeTables();
        }
        int const wantedTables = 2 * needs_.endFunctions + needs_.sumFunctions + needs_.differenceFunctions;
        if (wantedTables > 1 && numOfLevels_ <= LaneCounts::mostLevels &&
            direction.window.size() <= LaneCounts::mostRows && 2 * numOfPairs_ <= 0x7fff) {
            lanes_.emplace(numOfLevels_, cells_.count(), cells_);
        }
        usesCells_ = needs_.pairFunctions || needs_.pairCounts || lanes_;
        counts_.resize(std::max(usesCells_ ? cells_.count() : 0, 2 * numOfLevels_));
    }

    void begin(std::size_t width) override
    {
        width_ = width;
        int const rows = 2 * plan_.radius + 1;
        words_.reset(rows,
                     width * std::max<std::size_t>(packing_.numOfWords(), 1)); // it also tells which rows are made
        pairCells_.reset(rows, usesCells_ || !cellTable_.empty() ? width : 0);
        pairSums_.reset(rows, usesSums() ? width : 0);
        pairDifferences_.reset(rows, usesDifferences() ? width : 0);
    }

    void compute(RowRing<std::uint16_t> const& levels, int y, std::size_t first, std::size_t count) override
    {
        for (WindowRow const& row : direction_.window) {
            if (!words_.holds(y + row.y)) {
                makePairRow(levels, y + row.y);
            }
        }
        slideAll(levels, y, first, count);
        for (std::size_t measure = 0; measure < numOfCooccurrenceMeasures; ++measure) {
            if (direction_.wanted[measure]) {
                results_[measure].resize(count);
                evaluate(static_cast<Measure>(measure), count, results_[measure].data());
            }
        }
    }

private:
    /// 1 / (1 + (b k)^2) for differences k > 0, as whole multiples of `weightUnit_`, the largest weight fitting in so
    /// that sums of them fit into 62 bits.
    void makeWeights()
    {
        double const b2 = square(plan_.levels.binSize);
        double const largest = 1 / (1 + b2);
        int const bits = 62 - std::ilogb(static_cast<double>(numOfPairs_)) - 1;
        weightUnit_ = std::ldexp(largest, -bits);
        weights_.assign(numOfLevels_, 0);
        for (std::size_t k = 1; k < numOfLevels_ && largest > 0; ++k) {
            double const relative = (1 + b2) / (1 + b2 * square(static_cast<double>(k)));
            weights_[k] = static_cast<uint64>(std::ldexp(relative, bits));
        }
    }

    void packSums()
    {
        uint64 const n = numOfPairs_;
        uint64 const top = numOfLevels_ - 1;
        std::array<uint64, numOfPairSums> const largest = {n * top * top,   n * top * top, 2 * n * top, n * top, n,
                                                           uint64{1} << 62U};
        for (std::size_t sum = 0; sum < numOfPairSums; ++sum) {
            if (needs_.pairSums[sum]) {
                packed_[sum] = packing_.add(largest[sum]);
            }
        }
    }

    /// The cell of each pair of levels, and the words of each cell: the sums do not ask which level comes first.
    void makeTables()
    {
        std::vector<std::uint16_t> first(cells_.count());
        std::vector<std::uint16_t> second(cells_.count());
        for (std::size_t a = 0; a < numOfLevels_; ++a) {
            for (std::size_t b = 0; b < numOfLevels_; ++b) {
                std::size_t const cell = cells_(a, b);
                cellTable_.push_back(static_cast<Cell>(cell));
                first[cell] = static_cast<std::uint16_t>(a);
                second[cell] = static_cast<std::uint16_t>(b);
            }
        }
        wordTable_.resize(cells_.count() * packing_.numOfWords());
        makeWords(first.data(), second.data(), cells_.count(), wordTable_.data(), cells_.count());
    }

    /// All that is needed of the pairs that begin in row y, made once and used for every window that they lie in.
    void makePairRow(RowRing<std::uint16_t> const& levels, int y)
    {
        int const dx = direction_.direction[0];
        auto const begin = static_cast<std::size_t>(std::max(0, -dx));
        std::size_t const end = width_ - static_cast<std::size_t>(std::max(0, dx));
        std::uint16_t const* const a = levels.row(y) + begin;
        std::uint16_t const* const b =
            levels.row(y + direction_.direction[1]) + static_cast<std::ptrdiff_t>(begin) + dx;
        std::size_t const count = end - begin;
        uint64* const words = words_.claim(y) + begin;
        if (!cellTable_.empty()) {
            Cell* const cells = pairCells_.claim(y) + begin;
            lookUpCells(a, b, count, cells);
            lookUpWords(cells, count, words);
        } else {
            makeWords(a, b, count, words, width_);
            if (usesCells_) {
                Cell* const out = pairCells_.claim(y) + begin;
                for (std::size_t x = 0; x < count; ++x) {
                    out[x] = static_cast<Cell>(cells_(a[x], b[x]));
                }
            }
        }
        if (usesSums()) {
            std::uint16_t* const out = pairSums_.claim(y) + begin;
            for (std::size_t x = 0; x < count; ++x) {
                out[x] = static_cast<std::uint16_t>(a[x] + b[x]);
            }
        }
        if (usesDifferences()) {
            std::uint16_t* const out = pairDifferences_.claim(y) + begin;
            for (std::size_t x = 0; x < count; ++x) {
                out[x] = static_cast<std::uint16_t>(std::abs(a[x] - b[x]));
            }
        }
    }

    void lookUpCells(std::uint16_t const* a, std::uint16_t const* b, std::size_t count, Cell* cells) const
    {
        Cell const* const table = cellTable_.data();
        auto const levels = static_cast<std::uint32_t>(numOfLevels_);
        for (std::size_t x = 0; x < count; ++x) {
            cells[x] = table[a[x] * levels + b[x]];
        }
    }

    void lookUpWords(Cell const* cells, std::size_t count, uint64* words) const
    {
        for (std::size_t word = 0; word < packing_.numOfWords(); ++word) {
            uint64 const* const table = wordTable_.data() + word * cells_.count();
            uint64* const out = words + word * width_;
            for (std::size_t x = 0; x < count; ++x) {
                out[x] = table[cells[x]];
            }
        }
    }

    /// The first words of all pairs, then, `stride` further on, the second ones, and so on.
    void makeWords(std::uint16_t const* a, std::uint16_t const* b, std::size_t count, uint64* words,
                   std::size_t stride) const
    {
        for (std::size_t word = 0; word < packing_.numOfWords(); ++word) {
            std::fill(words + word * stride, words + word * stride + count, uint64{0});
        }
        auto const add = [&](PairSum sum, auto&& value) {
            if (!needs_.pairSums[sum] || packed_[sum].mask == 0) {
                return;
            }
            uint64* const out = words + packed_[sum].word * stride;
            for (std::size_t x = 0; x < count; ++x) {
                out[x] += static_cast<uint64>(value(std::int32_t{a[x]}, std::int32_t{b[x]})) << packed_[sum].shift;
            }
        };
        using Level = std::int32_t;
        add(squaredDifferences, [](Level p, Level q) { return static_cast<std::uint32_t>((p - q) * (p - q)); });
        add(products, [](Level p, Level q) { return static_cast<std::uint32_t>(p * q); });
        add(sums, [](Level p, Level q) { return static_cast<std::uint32_t>(p + q); });
        add(differences, [](Level p, Level q) { return static_cast<std::uint32_t>(std::abs(p - q)); });
        add(equals, [](Level p, Level q) { return static_cast<std::uint32_t>(p == q); });
        add(weights, [this](Level p, Level q) { return weights_[static_cast<std::size_t>(std::abs(p - q))]; });
    }

    void slideAll(RowRing<std::uint16_t> const& levels, int y, std::size_t first, std::size_t count)
    {
        sums_.resize(count * std::max<std::size_t>(packing_.numOfWords(), 1)); // that of nothing is read, and masked
        for (std::size_t word = 0; word < packing_.numOfWords(); ++word) {
            collectRuns(wordRuns_, words_, y, first + word * width_);
            slideSums(wordRuns_, count, sums_.data() + word * count);
        }
        if (usesCells_) {
            collectRuns(cellRuns_, pairCells_, y, first);
            slidePairs(count);
        }
        if (lanes_) {
            endFunctions_.resize(count);
            sumFunctions_.resize(count);
            differenceFunctions_.resize(count);
            lanes_->slide(cellRuns_, count, plan_.logarithm->values(), endFunctions_.data(),
                          differenceFunctions_.data(), sumFunctions_.data());
            return;
        }
        if (needs_.endFunctions) {
            collectRuns(levelRuns_, levels, y, first);
            addSecondEnds(levels, y, first);
            slideFunctions(levelRuns_, count, endFunctions_);
        }
        if (needs_.sumFunctions) {
            collectRuns(levelRuns_, pairSums_, y, first);
            slideFunctions(levelRuns_, count, sumFunctions_);
        }
        if (needs_.differenceFunctions) {
            collectRuns(levelRuns_, pairDifferences_, y, first);
            slideFunctions(levelRuns_, count, differenceFunctions_);
        }
    }

    template <class T>
    void collectRuns(Runs<T>& runs, RowRing<T> const& rows, int y, std::size_t first) const
    {
        runs.clear();
        for (WindowRow const& row : direction_.window) {
            T const* const centre = rows.row(y + row.y) + first + plan_.radius;
            runs.push_back({centre + row.first, centre + row.last});
        }
    }

    void addSecondEnds(RowRing<std::uint16_t> const& levels, int y, std::size_t first)
    {
        auto const& d = direction_.direction;
        for (WindowRow const& row : direction_.window) {
            std::uint16_t const* const centre = levels.row(y + row.y + d[1]) + first + plan_.radius + d[0];
            levelRuns_.push_back({centre + row.first, centre + row.last});
        }
    }

    void slidePairs(std::size_t count)
    {
        pairFunctions_.resize(count);
        pairCounts_.resize(count);
        TableSums const tableSums{plan_.logarithm->steps(), pairFunctions_.data(), pairCounts_.data(), numOfLevels_};
        if (needs_.pairFunctions && needs_.pairCounts) {
            slideTable<true, true>(cellRuns_, count, counts_.data(), tableSums);
        } else if (needs_.pairFunctions) {
            slideTable<true, false>(cellRuns_, count, counts_.data(), tableSums);
        } else if (needs_.pairCounts) {
            slideTable<false, true>(cellRuns_, count, counts_.data(), tableSums);
        }
    }

    void slideFunctions(Runs<std::uint16_t> const& runs, std::size_t count, std::vector<int64>& functions)
    {
        functions.resize(count);
        slideTable<true, false>(runs, count, counts_.data(), {plan_.logarithm->steps(), functions.data()});
    }

    bool usesSums() const { return needs_.sumFunctions && !lanes_; }
    bool usesDifferences() const { return needs_.differenceFunctions && !lanes_; }

    /// A sum over the pairs of the window, by place.
    struct SumRow {
        uint64 const* words;
        PackedSum packed;

        int64 operator[](std::size_t x) const { return static_cast<int64>(packed.of(words[x])); }
    };

    SumRow sumRow(PairSum sum, std::size_t count) const
    {
        return {sums_.data() + packed_[sum].word * count, packed_[sum]};
    }

    // With M = 2N ordered pairs, the marginal distribution has the sum of levels S = sum (a + b) and the sum of their
    // squares 2 AB + D2 over M; F is n log n, so that the entropy of counts n of total T is (F(T) - sum F(n)) / T.

    void evaluate(Measure measure, std::size_t count, double* out) const
    {
        auto const pairs = static_cast<int64>(numOfPairs_);
        auto const n = static_cast<double>(numOfPairs_);
        double const m = 2 * n;
        double const b = plan_.levels.binSize;
        double const b2 = square(b);
        double const lowest = 2 * plan_.levels.minGrey;
        auto const fill = [&](auto&& value) {
            for (std::size_t x = 0; x < count; ++x) {
                out[x] = value(x);
            }
        };
        SumRow const d2 = sumRow(squaredDifferences, count);
        SumRow const ab = sumRow(products, count);
        SumRow const s1 = sumRow(sums, count);
        SumRow const d1 = sumRow(differences, count);
        SumRow const d0 = sumRow(equals, count);
        SumRow const w = sumRow(weights, count);
        auto const variance = [&](std::size_t x) { // times M^2
            return 2 * pairs * (2 * ab[x] + d2[x]) - s1[x] * s1[x];
        };
        switch (measure) {
        case angularSecondMoment:
            return fill([&](std::size_t x) {
                auto const squares = 2 * pairCounts_[x] + static_cast<uint64>(pairs + d0[x]);
                return 2 * static_cast<double>(squares) / (m * m);
            });
        case contrast:
            return fill([&, scale = b2 / n](std::size_t x) { return static_cast<double>(d2[x]) * scale; });
        case correlation:
            return fill([&](std::size_t x) {
                int64 const v = variance(x);
                int64 const covariance = 4 * pairs * ab[x] - s1[x] * s1[x];
                return v == 0 ? 0.0 : static_cast<double>(covariance) / static_cast<double>(v);
            });
        case sumOfSquares:
            return fill([&](std::size_t x) { return b2 * (static_cast<double>(variance(x)) / (m * m)); });
        case inverseDifferenceMoment:
            return fill([&](std::size_t x) {
                return (static_cast<double>(d0[x]) + static_cast<double>(w[x]) * weightUnit_) / n;
            });
        case sumAverage:
            return fill([&](std::size_t x) { return b2 * (static_cast<double>(s1[x]) / n) + lowest; });
        case sumVariance:
            return fill([&](std::size_t x) {
                int64 const squares = 4 * ab[x] + d2[x];
                return b2 * b2 * (static_cast<double>(pairs * squares - s1[x] * s1[x]) / (n * n));
            });
        case sumEntropy:
            return fill([&, h = ScaledEntropy(*this, numOfPairs_)](std::size_t x) { return h(sumFunctions_[x]); });
        case entropy:
            return fill(
                [&, h = ScaledEntropy(*this, 2 * numOfPairs_)](std::size_t x) { return h(orderedFunctions(x, d0)); });
        case differenceVariance:
            return fill([&](std::size_t x) {
                int64 const d = d1[x];
                return b2 * (static_cast<double>(pairs * d2[x] - d * d) / (n * n));
            });
        case differenceEntropy:
            return fill(
                [&, h = ScaledEntropy(*this, numOfPairs_)](std::size_t x) { return h(differenceFunctions_[x]); });
        case informationMeasure1:
            return fill([&, h = ScaledEntropy(*this, 2 * numOfPairs_)](std::size_t x) {
                double const hx = h(endFunctions_[x]);
                return std::abs(hx) > 0x1p-23 ? b * excessEntropy(x, d0) / hx : 0.0;
            });
        case informationMeasure2:
            return fill([&](std::size_t x) {
                double const t = 2 * b * std::abs(excessEntropy(x, d0));
                return std::sqrt(std::max(0.0, oneMinusExp(t)));
            });
        }
    }

    /// (log b + H) b of counts of one total, given the sum of F over them.
    struct ScaledEntropy {
        ScaledEntropy(Sweep const& sweep, std::size_t total)
            : largest((*sweep.plan_.logarithm)(total))
            , scale(sweep.plan_.logarithm->unit() / static_cast<double>(total))
            , logBinSize(std::log(sweep.plan_.levels.binSize))
            , binSize(sweep.plan_.levels.binSize)
        {
        }

        double operator()(int64 functions) const
        {
            return (logBinSize + static_cast<double>(largest - functions) * scale) * binSize;
        }

        int64 largest;
        double scale;
        double logBinSize;
        double binSize;
    };

    /// The sum of F over the ordered pairs: off the diagonal a count stands twice, on it the doubled count.
    int64 orderedFunctions(std::size_t x, SumRow const& d0) const
    {
        return 2 * (pairFunctions_[x] + plan_.logarithm->logarithmOf2() * d0[x]);
    }

    /// H(pairs) - 2 H(marginal): minus the mutual information of the ends, exactly 0 when they are independent.
    double excessEntropy(std::size_t x, SumRow const& d0) const
    {
        auto const& f = *plan_.logarithm;
        int64 const ends = endFunctions_[x];
        int64 const excess = (ends - f(2 * numOfPairs_)) + (ends - orderedFunctions(x, d0));
        return static_cast<double>(excess) * f.unit() / static_cast<double>(2 * numOfPairs_);
    }

    /// Tables for these stay in the caches.
    static constexpr std::size_t mostTabledLevels = 128;

    TexturePlan const& plan_;
    DirectionPlan const& direction_;
    Needs needs_;
    std::size_t numOfPairs_;
    std::size_t numOfLevels_;
    PairCells cells_;
    std::vector<uint64> weights_;
    double weightUnit_ = 0;
    PackedSums packing_;
    std::array<PackedSum, numOfPairSums> packed_ = {};
    std::vector<Cell> cellTable_;   ///< of two levels, the second running first; empty for many levels
    std::vector<uint64> wordTable_; ///< by cell, the first words before the second ones
    std::size_t width_ = 0;

    RowRing<uint64> words_; ///< the words of a row one after the other, each as wide as the row
    RowRing<Cell> pairCells_;
    RowRing<std::uint16_t> pairSums_;
    RowRing<std::uint16_t> pairDifferences_;

    Runs<uint64> wordRuns_;
    Runs<Cell> cellRuns_;
    Runs<std::uint16_t> levelRuns_;
    std::vector<std::uint32_t> counts_;
    std::optional<LaneCounts> lanes_; ///< instead of tables of ends, sums and differences
    bool usesCells_ = false;

    std::vector<uint64> sums_;
    std::vector<int64> pairFunctions_;
    std::vector<uint64> pairCounts_;
    std::vector<int64> endFunctions_;
    std::vector<int64> sumFunctions_;
    std::vector<int64> differenceFunctions_;
};

} // namespace

std::unique_ptr<CooccurrenceSweep> makeCooccurrenceSweep(TexturePlan const& plan, DirectionPlan const& direction)
{
    if (plan.levels.empty()) {
        throw std::runtime_error("Cooccurrence matrix used but not initialized");
    }
    auto const cells = PairCells(static_cast<std::size_t>(plan.levels.count)).count();
    if (cells <= std::size_t{1} << 16U) {
        return std::make_unique<Sweep<std::uint16_t>>(plan, direction);
    }
    return std::make_unique<Sweep<std::uint32_t>>(plan, direction);
}

} // namespace mox::segmentation
