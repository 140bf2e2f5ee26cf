#include "Core/private/filters/ManyToManyImageFilter.h"

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <algorithm>
#include <mutex>

#include "Core/private/filters/fixedView.h"
#include "testing/Allocations.h"
#include "testing/Images.h"
#include "testing/TestAlgorithm.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using access::Position;
using access::Region;
using ::testing::ElementsAre;

using Arch = SimdVec::arch_scalar_tag;

/// Two inputs, the second of half the columns and rows, make two outputs: their sum, and the row above of the first.
struct SumAndRowAbove {
    template <class Full, class Half, class Sum, class Above>
    void operator()(access::Block const& leaf, Full& full, Half& half, Sum& sum, Above& above) const
    {
        unsigned int const columns = leaf.getNumOfColumns();
        int const left = static_cast<int>(leaf.getBeginColumn());
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
                Position const halfRow{
                    left / 2, (static_cast<int>(leaf.getBeginRow()) + y) / 2, static_cast<int>(leaf.getBeginPlan()) + z,
                    static_cast<int>(leaf.getBeginTimeSeries()), static_cast<int>(leaf.getBeginSpectralSeries())};
                short const* const a = full.row(0, 0, y, z, columns);
                short const* const rowAbove = full.row(1, 0, y - 1, z, columns);
                unsigned char const* const b = half.rowAt(0, halfRow, columns / 2 + 1);
                sum.writeRow(y, z, [&](int* out) {
                    for (int x = 0; x < static_cast<int>(columns); ++x) {
                        out[x] = a[x] + b[(left + x) / 2 - left / 2];
                    }
                });
                above.writeRow(y, z, [&](double* out) { std::copy(rowAbove, rowAbove + columns, out); });
            }
        }
    }
};

template <class Dimensions>
class ManyToManyImageFilters : public ::testing::Test {
protected:
    using Filter = ManyToManyImageFilter<TypeVector<short, unsigned char>, TypeVector<int, double>, Arch,
                                         SumAndRowAbove, Dimensions>;
};

using BothDimensions = ::testing::Types<Filter2dTag, Filter3dTag>;
TYPED_TEST_SUITE(ManyToManyImageFilters, BothDimensions);

Region randomRegion(std::mt19937& random, Sizes const& sizes)
{
    auto const range = [&](unsigned int size) {
        unsigned int const a = static_cast<unsigned int>(random()) % (size + 1);
        unsigned int const b = static_cast<unsigned int>(random()) % (size + 1);
        return Region::Range{std::min(a, b), std::max(a, b)};
    };
    return {range(sizes.rows), range(sizes.columns), range(sizes.plans), range(sizes.timeSeries),
            range(sizes.spectralSeries)};
}

bool contains(Region const& region, Position const& p)
{
    auto const u = [](int coordinate) { return static_cast<unsigned int>(coordinate); };
    return u(p.x) >= region.getBeginColumn() && u(p.x) < region.getEndColumn() && u(p.y) >= region.getBeginRow() &&
           u(p.y) < region.getEndRow() && u(p.z) >= region.getBeginPlan() && u(p.z) < region.getEndPlan() &&
           u(p.t) >= region.getBeginTimeSeries() && u(p.t) < region.getEndTimeSeries() &&
           u(p.s) >= region.getBeginSpectralSeries() && u(p.s) < region.getEndSpectralSeries();
}

/// The positions of an image in memory order.
std::vector<Position> positionsOf(Sizes const& sizes)
{
    std::vector<Position> positions;
    Position p;
    for (p.s = 0; p.s < static_cast<int>(sizes.spectralSeries); ++p.s) {
        for (p.t = 0; p.t < static_cast<int>(sizes.timeSeries); ++p.t) {
            for (p.z = 0; p.z < static_cast<int>(sizes.plans); ++p.z) {
                for (p.y = 0; p.y < static_cast<int>(sizes.rows); ++p.y) {
                    for (p.x = 0; p.x < static_cast<int>(sizes.columns); ++p.x) {
                        positions.push_back(p);
                    }
                }
            }
        }
    }
    return positions;
}

std::size_t indexOf(Position const& p, Sizes const& sizes)
{
    std::size_t index = static_cast<std::size_t>(p.s) * sizes.timeSeries + static_cast<std::size_t>(p.t);
    index = index * sizes.plans + static_cast<std::size_t>(p.z);
    index = index * sizes.rows + static_cast<std::size_t>(p.y);
    return index * sizes.columns + static_cast<std::size_t>(p.x);
}

TYPED_TEST(ManyToManyImageFilters, makeEveryVoxelOfTheRegionAndNoOther)
{
    std::mt19937 random(3);
    for (int round = 0; round < 30; ++round) {
        Sizes const sizes = round == 0 ? Sizes{2500, 41, 2, 1, 1} : randomSizes(random, {60, 35, 15, 2, 2});
        Sizes halved = sizes;
        halved.columns = (sizes.columns + 1) / 2;
        halved.rows = (sizes.rows + 1) / 2;
        Region const region = round == 0 ? Region(sizes) : randomRegion(random, sizes);
        auto const full = randomVoxels<short>(random, sizes.numOfVoxels());
        auto const half = randomVoxels<unsigned char>(random, halved.numOfVoxels());
        auto const fullImage = makeImage(sizes, full);
        auto const halfImage = makeImage(halved, half);
        auto const sum = makeImage(sizes, std::vector<int>(full.size(), -77777));
        auto const above = makeImage(sizes, std::vector<double>(full.size(), 0.25));

        SumAndRowAbove const kernel;
        typename TestFixture::Filter filter(nullptr, kernel);
        filter.addInput(fixedView<short, Arch>(*fullImage, short{-3}));
        filter.addInput(fixedView<unsigned char, Arch>(*halfImage));
        filter.addOutput(fixedView<int, Arch>(*sum));
        filter.addOutput(fixedView<double, Arch>(*above));
        filter.setRegion(region);
        filter.run();

        std::vector<int> wantedSum;
        std::vector<double> wantedAbove;
        for (Position const& p : positionsOf(sizes)) {
            std::size_t const i = indexOf(p, sizes);
            bool const isInRegion = contains(region, p);
            Position halfOfP = p;
            halfOfP.x /= 2;
            halfOfP.y /= 2;
            wantedSum.push_back(isInRegion ? full[i] + half[indexOf(halfOfP, halved)] : -77777);
            wantedAbove.push_back(!isInRegion ? 0.25 : p.y == 0 ? -3 : full[i - sizes.columns]);
        }
        ASSERT_EQ(voxelsOf<int>(*sum), wantedSum);
        ASSERT_EQ(voxelsOf<double>(*above), wantedAbove);
        ASSERT_EQ(filter.getProgress(), region.numOfVoxels() == 0 ? 0.0 : 100.0);
    }
}

struct Nothing {
    template <class... Argument>
    void operator()(Argument&...) const
    {
    }
};

TEST(ManyToManyImageFilter, refusesViewsThatAreNotThoseOfItsTypes)
{
    auto const image = makeImage({1, 1, 1, 1, 1}, std::vector<short>{1});
    Nothing const kernel;
    ManyToManyImageFilter2d<TypeVector<int>, TypeVector<>, Arch, Nothing> filter(nullptr, kernel);
    EXPECT_THROW(filter.run(), std::out_of_range);
    filter.addInput(fixedView<short, Arch>(*image));
    EXPECT_THROW(filter.run(), boost::bad_any_cast);
}

/// Remembers where leaves begin, and counts them as a value.
struct LeafRecorder {
    struct Value {
        std::vector<Position> begins;
        void join(Value const& right) { begins.insert(begins.end(), right.begins.begin(), right.begins.end()); }
    };

    void operator()(access::Block const& leaf, Value& value) const
    {
        value.begins.push_back(access::detail::within(leaf, 0, 0, 0, 0, 0));
    }
};

TEST(ManyToManyImageFilter, goesThroughSpectralThenTimeThenPlanIndices)
{
    LeafRecorder const kernel;
    ManyToManyImageFilter2d<TypeVector<>, TypeVector<>, Arch, LeafRecorder> filter(nullptr, kernel);
    filter.setRegion({{0, 1}, {0, 1}, {2, 4}, {1, 3}, {5, 7}});
    auto const value = filter.run();
    EXPECT_THAT(value.begins, ElementsAre(Position{0, 0, 2, 1, 5}, Position{0, 0, 3, 1, 5}, Position{0, 0, 2, 2, 5},
                                          Position{0, 0, 3, 2, 5}, Position{0, 0, 2, 1, 6}, Position{0, 0, 3, 1, 6},
                                          Position{0, 0, 2, 2, 6}, Position{0, 0, 3, 2, 6}));
}

TEST(ManyToManyImageFilter, joinsValuesInTheOrderOfTheLeaves)
{
    for (std::size_t const threads : {1U, 2U, 4U, 8U}) {
        tbb::global_control const control(tbb::global_control::max_allowed_parallelism, threads);
        LeafRecorder const kernel;
        ManyToManyImageFilter3d<TypeVector<>, TypeVector<>, Arch, LeafRecorder> filter(nullptr, kernel);
        filter.setRegion({{3, 5000}, {0, 1}, {0, 1}, {0, 1}, {0, 1}});
        auto const begins = filter.run().begins;
        EXPECT_EQ(begins.front().y, 3);
        EXPECT_TRUE(std::is_sorted(begins.begin(), begins.end(),
                                   [](Position const& a, Position const& b) { return a.y < b.y; }));
    }
}

/// Copies and sums, modulo 2^64.
struct SummingCopy {
    struct Value {
        uint64 sum = 0;
        void join(Value const& right) { sum += right.sum; }
    };

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target, Value& value) const
    {
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
                auto const* const in = source.row(0, 0, y, z, leaf.getNumOfColumns());
                target.writeRow(y, z, [&](auto* out) {
                    for (unsigned int x = 0; x < leaf.getNumOfColumns(); ++x) {
                        out[x] = in[x];
                        value.sum += in[x];
                    }
                });
            }
        }
    }
};

template <class Dimensions>
using SummingFilter =
    ManyToManyImageFilter<TypeVector<unsigned short>, TypeVector<unsigned int>, Arch, SummingCopy, Dimensions>;

template <class Dimensions>
class FiltersWithReduction : public ::testing::Test {
};
TYPED_TEST_SUITE(FiltersWithReduction, BothDimensions);

TYPED_TEST(FiltersWithReduction, gatherTheSameValueWhateverTheThreads)
{
    std::mt19937 random(4);
    for (std::size_t const threads : {1U, 2U, 8U}) {
        tbb::global_control const control(tbb::global_control::max_allowed_parallelism, threads);
        for (int round = 0; round < 15; ++round) {
            Sizes const sizes = round == 0 ? Sizes{2500, 100, 3, 1, 1} : randomSizes(random, {60, 60, 15, 2, 2});
            auto const voxels = randomVoxels<unsigned short>(random, sizes.numOfVoxels());
            auto const input = makeImage(sizes, voxels);
            auto const output = makeImage(sizes, std::vector<unsigned int>(voxels.size()));
            SummingCopy const kernel;
            SummingFilter<TypeParam> filter(nullptr, kernel);
            filter.addInput(fixedView<unsigned short, Arch>(*input));
            filter.addOutput(fixedView<unsigned int, Arch>(*output));
            filter.setRegion(sizes);
            ASSERT_EQ(filter.run().sum, std::accumulate(voxels.begin(), voxels.end(), uint64{0}));
            ASSERT_EQ(voxelsOf<unsigned int>(*output), std::vector<unsigned int>(voxels.begin(), voxels.end()));
            ASSERT_EQ(filter.getProgress(), 100.0);
        }
    }
}

TEST(FilterWithReduction, startsAnewWithEachRun)
{
    auto const input = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned short>{7});
    auto const output = makeImage({1, 1, 1, 1, 1}, std::vector<unsigned int>{0});
    SummingCopy const kernel;
    SummingFilter<Filter2dTag> filter(nullptr, kernel);
    filter.addInput(fixedView<unsigned short, Arch>(*input));
    filter.addOutput(fixedView<unsigned int, Arch>(*output));
    filter.setRegion(Sizes::of(*input));
    EXPECT_EQ(filter.run().sum, 7U);
    EXPECT_EQ(filter.run().sum, 7U);
}

TEST(FilterWithReduction, countsItsPassesInOneProgress)
{
    auto const input = makeImage({4, 4, 1, 1, 1}, std::vector<unsigned short>(16, 7));
    auto const output = makeImage({4, 4, 1, 1, 1}, std::vector<unsigned int>(16));
    filters::PassSequence passes(nullptr, 64);
    SummingCopy const kernel;
    SummingFilter<Filter2dTag> filter(passes, kernel);
    filter.addInput(fixedView<unsigned short, Arch>(*input));
    filter.addOutput(fixedView<unsigned int, Arch>(*output));
    filter.setRegion(Sizes::of(*input));
    filter.run();
    EXPECT_EQ(passes.getProgress(), 25.0);
}

TEST(FilterWithReduction, stopsAtTheFirstFailure)
{
    for (auto const fault : {TestImage::Fault::returnsFalse, TestImage::Fault::throws}) {
        Sizes const sizes{8, 200, 2, 1, 1};
        TestImage input;
        fill(input, sizes, std::vector<unsigned short>(sizes.numOfVoxels()));
        auto const output = makeImage(sizes, std::vector<unsigned int>(sizes.numOfVoxels()));
        SummingCopy const kernel;
        SummingFilter<Filter2dTag> filter(nullptr, kernel);
        filter.addInput(fixedView<unsigned short, Arch>(input));
        filter.addOutput(fixedView<unsigned int, Arch>(*output));
        filter.setRegion(sizes);
        input.failAt(150, fault);
        if (fault == TestImage::Fault::throws) {
            EXPECT_THROW(filter.run(), std::runtime_error);
        } else {
            EXPECT_THROW(filter.run(), UnexpectedError);
        }
    }
}

TEST(FilterWithReduction, survivesEveryAllocationThatFails)
{
    Sizes const sizes{8, 200, 2, 1, 1};
    std::vector<unsigned short> const voxels(sizes.numOfVoxels(), 3);
    bool fails = true;
    for (int k = 1; fails; ++k) {
        ASSERT_LT(k, 1000);
        auto const input = makeImage(sizes, voxels);
        auto const output = makeImage(sizes, std::vector<unsigned int>(voxels.size()));
        SummingCopy const kernel;
        auto const run = [&] {
            SummingFilter<Filter2dTag> filter(nullptr, kernel);
            filter.addInput(fixedView<unsigned short, Arch>(*input));
            filter.addOutput(fixedView<unsigned int, Arch>(*output));
            filter.setRegion(sizes);
            return filter.run().sum;
        };
        Allocations::failAt(k);
        try {
            run();
            fails = Allocations::stopFailing();
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(Allocations::stopFailing());
        }
        EXPECT_EQ(run(), 3U * voxels.size());
    }
}

/// Cancels the run that it is part of at its first leaf.
struct CancellingKernel {
    BaseAlgorithm* algorithm;
    std::vector<Position>* begins;
    std::mutex* mutex;

    void operator()(access::Block const& leaf) const
    {
        std::lock_guard const lock(*mutex);
        begins->push_back(access::detail::within(leaf, 0, 0, 0, 0, 0));
        algorithm->cancelExecution();
    }
};

TEST(ManyToManyImageFilter, startsNoFurtherSliceWhenCancelled)
{
    auto const algorithm = TestAlgorithm::New();
    std::vector<Position> begins;
    std::mutex mutex;
    algorithm->work = [&](TestAlgorithm& running) {
        CancellingKernel const kernel{&running, &begins, &mutex};
        ManyToManyImageFilter2d<TypeVector<>, TypeVector<>, Arch, CancellingKernel> filter(&running, kernel);
        filter.setRegion({{0, 4}, {0, 4}, {0, 3}, {0, 3}, {0, 3}});
        filter.run();
        EXPECT_TRUE(filter.isExecutionCancelled());
    };
    algorithm->run();
    EXPECT_THAT(begins, ElementsAre(Position{0, 0, 0, 0, 0}));
}

/// The bands of a loop over bands.
class BandRecorder final : public filters::Reduction {
public:
    void fold(access::Block const& leaf) override
    {
        EXPECT_EQ(leaf.getBeginColumn(), 2U);
        EXPECT_EQ(leaf.getEndColumn(), 5000U);
        joins.push_back(static_cast<int>(leaf.getBeginRow()));
    }
    std::unique_ptr<Reduction> fresh() const override { return std::make_unique<BandRecorder>(); }
    void join(Reduction& right) noexcept override
    {
        auto const& other = static_cast<BandRecorder const&>(right).joins;
        joins.push_back(-1);
        joins.insert(joins.end(), other.begin(), other.end());
    }

    std::vector<int> joins;
};

class BandFilter final : public filters::Filter {
public:
    BandFilter()
        : Filter(nullptr)
    {
    }
    ~BandFilter() override { detach(); }

    using Filter::reduceBands;
};

TEST(Filter, joinsBandsInTheSameGroupsWhateverTheThreads)
{
    std::vector<int> grouped;
    for (std::size_t const threads : {1U, 2U, 4U, 8U}) {
        tbb::global_control const control(tbb::global_control::max_allowed_parallelism, threads);
        BandFilter filter;
        BandRecorder bands;
        filter.reduceBands({{1, 1001}, {2, 5000}, {0, 1}, {0, 1}, {0, 1}}, {}, 64, bands);
        EXPECT_EQ(std::count(bands.joins.begin(), bands.joins.end(), -1), 15); // 16 bands of 62 or 63 rows
        if (grouped.empty()) {
            grouped = bands.joins;
        }
        EXPECT_EQ(bands.joins, grouped);
    }
}

TEST(Filter, hasNoBandsInAnEmptyRegion)
{
    BandFilter filter;
    BandRecorder bands;
    filter.reduceBands({{1, 1}, {2, 5000}, {0, 1}, {0, 1}, {0, 1}}, {}, 64, bands);
    filter.reduceBands({{1, 2}, {2, 2}, {0, 1}, {0, 1}, {0, 1}}, {}, 64, bands);
    EXPECT_TRUE(bands.joins.empty());
}

} // namespace

} // namespace mox::testing
