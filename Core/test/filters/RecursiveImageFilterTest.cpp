#include "Core/private/filters/RecursiveImageFilter.h"

#include <Moxelcore/Core/access/Block3d.h>

#include <gmock/gmock.h>

#include <tbb/global_control.h>

#include <algorithm>

#include "Core/private/filters/fixedView.h"
#include "testing/Images.h"
#include "testing/TestAlgorithm.h"
#include "testing/TestImage.h"

namespace mox::testing {

namespace {

using filters::Reach;
using ::testing::Each;

using Arch = SimdVec::arch_scalar_tag;

/// The maximum over a box of voxels around each. Reads all that a leaf needs before it writes.
class BoxMaximum {
public:
    explicit BoxMaximum(Reach reach)
        : reach_(reach)
    {
    }

    Reach reach() const { return reach_; }

    template <class Source, class Target>
    void operator()(access::Block const& leaf, Source& source, Target& target) const
    {
        int const left = static_cast<int>(reach_.columnsBegin);
        int const width = static_cast<int>(leaf.getNumOfColumns());
        int const depth = static_cast<int>(leaf.getNumOfPlans() + reach_.plansBegin + reach_.plansEnd);
        int const height = static_cast<int>(leaf.getNumOfRows() + reach_.rowsBegin + reach_.rowsEnd);
        std::vector<short const*> rows;
        for (int z = 0; z < depth; ++z) {
            for (int y = 0; y < height; ++y) {
                rows.push_back(source.row(rows.size(), -left, y - static_cast<int>(reach_.rowsBegin),
                                          z - static_cast<int>(reach_.plansBegin),
                                          leaf.getNumOfColumns() + reach_.columnsBegin + reach_.columnsEnd));
            }
        }
        for (int z = 0; z < static_cast<int>(leaf.getNumOfPlans()); ++z) {
            for (int y = 0; y < static_cast<int>(leaf.getNumOfRows()); ++y) {
                target.writeRow(y, z, [&](short* out) {
                    for (int x = 0; x < width; ++x) {
                        out[x] = maximumAt(rows, height, x, y, z);
                    }
                });
            }
        }
    }

private:
    short maximumAt(std::vector<short const*> const& rows, int height, int x, int y, int z) const
    {
        short maximum = std::numeric_limits<short>::min();
        for (unsigned int k = 0; k <= reach_.plansBegin + reach_.plansEnd; ++k) {
            for (unsigned int j = 0; j <= reach_.rowsBegin + reach_.rowsEnd; ++j) {
                short const* const row = rows[(static_cast<unsigned int>(z) + k) * static_cast<unsigned int>(height) +
                                              static_cast<unsigned int>(y) + j];
                for (unsigned int i = 0; i <= reach_.columnsBegin + reach_.columnsEnd; ++i) {
                    maximum = std::max(maximum, row[static_cast<unsigned int>(x) + i]);
                }
            }
        }
        return maximum;
    }

    Reach reach_;
};

/// The same from the definition, `iterations` times over the whole image; -5 outside.
std::vector<short> reference(std::vector<short> voxels, Sizes const& n, Reach const& reach, unsigned int iterations)
{
    auto const at = [&](std::vector<short> const& from, int x, int y, int z, unsigned int series) {
        bool const inside = x >= 0 && y >= 0 && z >= 0 && x < static_cast<int>(n.columns) &&
                            y < static_cast<int>(n.rows) && z < static_cast<int>(n.plans);
        auto const u = [](int c) { return static_cast<std::size_t>(c); };
        return inside ? from[((series * n.plans + u(z)) * n.rows + u(y)) * n.columns + u(x)] : short(-5);
    };
    auto const i = [](unsigned int c) { return static_cast<int>(c); };
    for (unsigned int iteration = 0; iteration < iterations; ++iteration) {
        std::vector<short> result;
        for (unsigned int series = 0; series < n.timeSeries * n.spectralSeries; ++series) {
            for (int z = 0; z < i(n.plans); ++z) {
                for (int y = 0; y < i(n.rows); ++y) {
                    for (int x = 0; x < i(n.columns); ++x) {
                        short maximum = std::numeric_limits<short>::min();
                        for (int dz = -i(reach.plansBegin); dz <= i(reach.plansEnd); ++dz) {
                            for (int dy = -i(reach.rowsBegin); dy <= i(reach.rowsEnd); ++dy) {
                                for (int dx = -i(reach.columnsBegin); dx <= i(reach.columnsEnd); ++dx) {
                                    maximum = std::max(maximum, at(voxels, x + dx, y + dy, z + dz, series));
                                }
                            }
                        }
                        result.push_back(maximum);
                    }
                }
            }
        }
        voxels = result;
    }
    return voxels;
}

std::vector<short> smallVoxels(std::mt19937& random, Sizes const& sizes)
{
    std::vector<short> voxels(sizes.numOfVoxels());
    std::generate(voxels.begin(), voxels.end(), [&] { return static_cast<short>(random() % 1000); });
    return voxels;
}

template <class Image>
auto viewOf(Image& image)
{
    return fixedView<short, Arch>(image, -5);
}

template <class Dimensions>
double runMaximum(ImageModel const& input, ImageModel& output, Reach const& reach, unsigned int iterations,
                  int extraMemory)
{
    auto const algorithm = TestAlgorithm::New();
    algorithm->setMaximumExtraMemoryUsage(extraMemory);
    double progress = 0;
    algorithm->work = [&](TestAlgorithm& running) {
        BoxMaximum const kernel(reach);
        RecursiveImageFilter<short, short, Arch, BoxMaximum, Dimensions> filter(&running, kernel);
        filter.setInput(viewOf(input));
        filter.setOutput(viewOf(output));
        filter.setIterations(iterations);
        filter.run();
        progress = filter.getProgress();
    };
    algorithm->run();
    return progress;
}

constexpr Reach square{1, 1, 1, 1, 0, 0};
constexpr Reach cube{1, 1, 1, 1, 1, 1};
constexpr Reach lopsidedPlane{0, 3, 2, 0, 0, 0};
constexpr Reach lopsidedSpace{2, 0, 0, 1, 3, 1};

template <class Dimensions>
class RecursiveImageFilters : public ::testing::Test {
protected:
    static constexpr bool is2d = std::is_same_v<Dimensions, Filter2dTag>;
    static std::vector<Reach> reaches()
    {
        return is2d ? std::vector{square, lopsidedPlane} : std::vector{cube, lopsidedSpace};
    }
};

using BothDimensions = ::testing::Types<Filter2dTag, Filter3dTag>;
TYPED_TEST_SUITE(RecursiveImageFilters, BothDimensions);

TYPED_TEST(RecursiveImageFilters, equalTheDefinitionWhateverTheStorage)
{
    std::mt19937 random(7);
    for (int round = 0; round < 30; ++round) {
        for (Reach const& reach : this->reaches()) {
            Sizes const sizes = round == 0 ? Sizes{1100, 25, 3, 1, 1} : randomSizes(random, {40, 36, 24, 2, 2});
            unsigned int const iterations = 1 + random() % 4;
            auto const voxels = smallVoxels(random, sizes);
            auto const wanted = reference(voxels, sizes, reach, iterations);
            for (int const extraMemory : {0, 1, -1}) {
                auto const input = makeImage(sizes, voxels);
                auto const output = makeImage(sizes, std::vector<short>(voxels.size()));
                EXPECT_EQ(runMaximum<TypeParam>(*input, *output, reach, iterations, extraMemory), 100.0);
                ASSERT_EQ(voxelsOf<short>(*output), wanted) << iterations << " iterations, memory " << extraMemory;
                ASSERT_EQ(voxelsOf<short>(*input), voxels);
                runMaximum<TypeParam>(*input, *input, reach, iterations, extraMemory);
                ASSERT_EQ(voxelsOf<short>(*input), wanted) << "in place, memory " << extraMemory;
            }
        }
    }
}

TYPED_TEST(RecursiveImageFilters, equalTheDefinitionOnImagesWithoutRowPointers)
{
    std::mt19937 random(8);
    Sizes const sizes{33, 34, 12, 1, 1};
    auto const voxels = smallVoxels(random, sizes);
    for (bool const givesPointers : {false, true}) {
        TestImage image;
        image.givesPointers = givesPointers;
        fill(image, sizes, voxels);
        Reach const reach = this->reaches().back();
        runMaximum<TypeParam>(image, image, reach, 2, 0);
        EXPECT_EQ(voxelsOf<short>(image), reference(voxels, sizes, reach, 2));
    }
}

TYPED_TEST(RecursiveImageFilters, giveOneResultForAnyNumberOfThreads)
{
    std::mt19937 random(9);
    Sizes const sizes{60, 70, 24, 1, 1};
    auto const voxels = smallVoxels(random, sizes);
    auto const wanted = reference(voxels, sizes, this->reaches().back(), 3);
    for (std::size_t const threads : {1U, 2U, 3U, 8U}) {
        tbb::global_control const limit(tbb::global_control::max_allowed_parallelism, threads);
        for (int const extraMemory : {0, 10}) {
            auto const image = makeImage(sizes, voxels);
            runMaximum<TypeParam>(*image, *image, this->reaches().back(), 3, extraMemory);
            EXPECT_EQ(voxelsOf<short>(*image), wanted);
        }
    }
}

// The scheduler cuts as it likes; here every cut into leaves of one size is tried.
TEST(RecursiveImageFilter, holdsBackTheRimOfEveryShapeOfLeaf)
{
    std::mt19937 random(10);
    Sizes const sizes{9, 8, 7, 1, 1};
    auto const voxels = smallVoxels(random, sizes);
    for (Reach const& reach : {square, cube, lopsidedPlane, lopsidedSpace}) {
        auto const wanted = reference(voxels, sizes, reach, 1);
        for (unsigned int size = 1; size <= 9; ++size) {
            auto const image = makeImage(sizes, voxels);
            auto const view = viewOf(*image);
            BoxMaximum const kernel(reach);
            using Context = RecursiveImageContext<short, short, Arch, OutputToOutput>;
            Context context(*view, *view, {reach});
            TbbBodyRecursiveImage<BoxMaximum, Context> body(kernel, context);
            auto const cut = [&](unsigned int begin, unsigned int end) {
                return access::GrainedRange{std::min(begin + size, end), begin, 1};
            };
            for (unsigned int z = 0; z < sizes.plans; z += size) {
                for (unsigned int y = 0; y < sizes.rows; y += size) {
                    for (unsigned int x = 0; x < sizes.columns; x += size) {
                        body(access::Block3d(cut(z, sizes.plans), cut(y, sizes.rows), cut(x, sizes.columns), 0, 0));
                    }
                }
            }
            context.flush();
            ASSERT_EQ(voxelsOf<short>(*image), wanted) << "leaves of size " << size;
        }
    }
}

TEST(RecursiveImageFilter, hasNoRimAtAFaceOfTheImage)
{
    Sizes const sizes{10, 10, 10, 1, 1};
    auto const whole = access::GrainedRange{10, 0, 1};
    auto const inner = access::GrainedRange{7, 2, 1};
    Reach const reach{1, 2, 3, 4, 1, 0};
    auto const all = filters::safeBox(access::Block3d(whole, whole, whole, 0, 0), reach, sizes);
    EXPECT_EQ(all.firstColumn, 0);
    EXPECT_EQ(all.lastColumn, 9);
    EXPECT_EQ(all.firstRow, 0);
    EXPECT_EQ(all.lastPlan, 9);
    auto const part = filters::safeBox(access::Block3d(inner, inner, inner, 0, 0), reach, sizes);
    EXPECT_EQ(part.firstColumn, 4); // a neighbour to the left reads 2 to its right
    EXPECT_EQ(part.lastColumn, 5);
    EXPECT_EQ(part.firstRow, 6);
    EXPECT_EQ(part.lastRow, 3); // nothing is safe
    EXPECT_EQ(part.firstPlan, 2);
    EXPECT_EQ(part.lastPlan, 5);
}

/// Row operations on the output tell which iterations wrote or read it: as many as it has rows for each.
int numOfOutputOperations(unsigned int iterations, int extraMemory)
{
    Sizes const sizes{8, 5, 1, 1, 1};
    auto const input = makeImage(sizes, std::vector<short>(40, 1));
    TestImage output;
    fill(output, sizes, std::vector<short>(40));
    int const before = output.numOfRowOperations();
    runMaximum<Filter3dTag>(*input, output, {}, iterations, extraMemory);
    return output.numOfRowOperations() - before;
}

TEST(RecursiveImageFilter, takesTurnsSoThatTheLastIterationWritesTheOutput)
{
    EXPECT_EQ(numOfOutputOperations(1, 0), 5);
    EXPECT_EQ(numOfOutputOperations(1, 100), 5);
    EXPECT_EQ(numOfOutputOperations(2, 100), 5);         // temporary, output
    EXPECT_EQ(numOfOutputOperations(3, 100), 5 + 5 + 5); // output, temporary (reads it), output
    EXPECT_EQ(numOfOutputOperations(2, 0), 5 + 5 + 5);   // output, output (reads and writes it)
    EXPECT_EQ(numOfOutputOperations(3, 0), 5 + 10 + 10);
}

TEST(RecursiveImageFilter, leavesTheOutputAloneWithoutIterations)
{
    auto const input = makeImage({2, 1, 1, 1, 1}, std::vector<short>{1, 2});
    auto const output = makeImage({2, 1, 1, 1, 1}, std::vector<short>{8, 9});
    runMaximum<Filter2dTag>(*input, *output, square, 0, 0);
    EXPECT_EQ(voxelsOf<short>(*output), (std::vector<short>{8, 9}));
}

TEST(RecursiveImageFilter, failsAtEachRowOperationWithoutHarm)
{
    Sizes const sizes{6, 4, 2, 1, 1};
    std::mt19937 random(12);
    auto const voxels = smallVoxels(random, sizes);
    auto const wanted = reference(voxels, sizes, cube, 2);
    for (int k = 1;; ++k) {
        ASSERT_LT(k, 1000);
        TestImage image;
        fill(image, sizes, voxels);
        image.failAt(k, k % 2 == 0 ? TestImage::Fault::returnsFalse : TestImage::Fault::throws);
        try {
            runMaximum<Filter3dTag>(image, image, cube, 2, 0);
        } catch (UnexpectedError const&) {
            continue;
        }
        EXPECT_GT(k, 32);
        image.failAt(0, TestImage::Fault::throws);
        EXPECT_EQ(voxelsOf<short>(image), wanted);
        break;
    }
}

/// Copies, and cancels the run at the first row of a chosen pass.
class CancellingKernel {
public:
    CancellingKernel(BaseAlgorithm& algorithm, bool cancels)
        : algorithm_(algorithm)
        , cancels_(cancels)
    {
    }

    void row(short const* in, short* out, std::size_t count) const
    {
        std::copy(in, in + count, out);
        if (cancels_) {
            algorithm_.cancelExecution();
        }
    }

private:
    BaseAlgorithm& algorithm_;
    bool cancels_;
};

using CancellingFilter = RecursiveImageFilter3d<short, short, Arch, CancellingKernel>;

TEST(RecursiveImageFilter, stopsBetweenIterationsWhenCancelled)
{
    Sizes const sizes{4, 3, 2, 2, 1};
    auto const image = makeImage(sizes, std::vector<short>(48, 1));
    auto const algorithm = TestAlgorithm::New();
    algorithm->work = [&](TestAlgorithm& running) {
        CancellingKernel const kernel(running, true);
        CancellingFilter filter(&running, kernel);
        filter.setInput(viewOf(*image));
        filter.setOutput(viewOf(*image));
        filter.setIterations(1000);
        filter.run();
        EXPECT_DOUBLE_EQ(filter.getProgress(), 100.0 * 24 / (48 * 1000));
    };
    algorithm->run();
}

TEST(PassSequence, hasOneProgressAndOneCancel)
{
    Sizes const sizes{4, 3, 2, 1, 1};
    for (int const cancelledPass : {-1, 0, 1}) {
        auto const image = makeImage(sizes, std::vector<short>(24, 1));
        auto const algorithm = TestAlgorithm::New();
        algorithm->work = [&](TestAlgorithm& running) {
            filters::PassSequence run(&running, 3 * sizes.numOfVoxels());
            for (int pass = 0; pass < 3 && !run.isStopped(); ++pass) {
                CancellingKernel const kernel(running, pass == cancelledPass);
                CancellingFilter filter(run, kernel);
                filter.setInput(viewOf(*image));
                filter.setOutput(viewOf(*image));
                filter.run();
                EXPECT_NEAR(running.getProgress(), 100.0 * (pass + 1) / 3, 1e-9);
            }
            EXPECT_EQ(running.isExecutionCancelled(), cancelledPass >= 0);
            EXPECT_NEAR(running.getProgress(), cancelledPass < 0 ? 100.0 : 100.0 * (cancelledPass + 1) / 3, 1e-9);
        };
        algorithm->run();
    }
}

TEST(PassSequence, startsNoLeafOnceCancelled)
{
    auto const image = makeImage({4, 1, 1, 1, 1}, std::vector<short>(4, 1));
    auto const output = makeImage({4, 1, 1, 1, 1}, std::vector<short>(4, 0));
    auto const algorithm = TestAlgorithm::New();
    algorithm->work = [&](TestAlgorithm& running) {
        filters::PassSequence run(&running, 8);
        running.cancelExecution();
        CancellingKernel const kernel(running, false);
        CancellingFilter filter(run, kernel);
        filter.setInput(viewOf(*image));
        filter.setOutput(viewOf(*output));
        filter.run();
    };
    algorithm->run();
    EXPECT_THAT(voxelsOf<short>(*output), Each(0));
}

} // namespace

} // namespace mox::testing
