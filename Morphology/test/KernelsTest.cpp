#include <Moxelcore/Core/access/Block3d.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numeric>
#include <random>

#include "Morphology/private/ColumnsReduction.h"
#include "Morphology/private/ColumnsReductionSimd.h"
#include "Morphology/private/NeighborhoodToValue.h"
#include "Morphology/private/NeighborhoodToValueSimd.h"
#include "Morphology/private/RowProgramKernel.h"
#include "Morphology/private/chains.h"
#include "Morphology/private/chords.h"
#include "Morphology/private/pairs.h"
#include "Morphology/private/runPasses.h"
#include "testing/Images.h"
#include "testing/references/morphologyElements.h"

// The scheduler cuts as it likes; here a kernel meets leaves of every shape, on two images and in place.

namespace mox::testing {
namespace {

using namespace mox::morphology;
using access::Block3d;
using access::GrainedRange;
using Scalar = SimdVec::arch_scalar_tag;
using Vector = SimdVec::arch_128_tag;
using details::DilationFunctor;
using details::ErosionFunctor;

template <class T, class Arch, class Phase, class Kernel>
void runOver(ImageModel const& input, ImageModel& output, LeafKernelOf<T, Arch, Kernel> const& kernel, T outside,
             Sizes const& leaf)
{
    auto const source = fixedView<T, Arch>(input, outside);
    auto const target = fixedView<T, Arch>(output, outside);
    using Context = RecursiveImageContext<T, T, Arch, Phase>;
    Context context(*source, *target, kernel.use());
    TbbBodyRecursiveImage<LeafKernel<T, Arch>, Context> body(kernel, context);
    Sizes const sizes = Sizes::of(input);
    auto const cut = [](unsigned int begin, unsigned int size, unsigned int end) {
        return GrainedRange{std::min(begin + size, end), begin, 1};
    };
    for (unsigned int z = 0; z < sizes.plans; z += leaf.plans) {
        for (unsigned int y = 0; y < sizes.rows; y += leaf.rows) {
            for (unsigned int x = 0; x < sizes.columns; x += leaf.columns) {
                body(Block3d(cut(z, leaf.plans, sizes.plans), cut(y, leaf.rows, sizes.rows),
                             cut(x, leaf.columns, sizes.columns), 0, 0));
            }
        }
    }
    context.flush();
}

template <class T>
::testing::AssertionResult sameBits(std::vector<T> const& voxels, std::vector<T> const& wanted, char const* what)
{
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (std::memcmp(&voxels[i], &wanted[i], sizeof(T)) != 0) {
            return ::testing::AssertionFailure()
                   << what << ": voxel " << i << " is " << +voxels[i] << ", wanted " << +wanted[i];
        }
    }
    return ::testing::AssertionSuccess();
}

template <class T, class Arch, class Functor, class Kernel>
void expectReference(Kernel kernel, OrderedElement const& element, std::mt19937& random)
{
    LeafKernelOf<T, Arch, Kernel> const leafKernel(std::move(kernel));
    T const outside = Functor::template outside<T>;
    Extremum const extremum = std::is_same_v<Functor, DilationFunctor> ? Extremum::maximum : Extremum::minimum;
    for (int round = 0; round < 12; ++round) {
        Sizes const sizes = randomSizes(random, {round % 3 == 0 ? 70U : 9U, 9, 6, 1, 1});
        Sizes const leaf = randomSizes(random, {sizes.columns, sizes.rows, sizes.plans, 1, 1});
        auto const voxels = randomVoxels<T>(random, sizes.numOfVoxels());
        auto const wanted = extremumReference(voxels, sizes, element, extremum);
        auto const image = makeImage(sizes, voxels);
        auto const output = makeImage(sizes, std::vector<T>(voxels.size(), T(77)));
        runOver<T, Arch, InputToOutput>(*image, *output, leafKernel, outside, leaf);
        ASSERT_TRUE(sameBits(voxelsOf<T>(*output), wanted, "two images"));
        runOver<T, Arch, OutputToOutput>(*image, *image, leafKernel, outside, leaf);
        ASSERT_TRUE(sameBits(voxelsOf<T>(*image), wanted, "in place"));
    }
}

std::vector<Offset> someOffsets(std::mt19937& random, int plans)
{
    std::vector<Offset> offsets(1 + random() % 12);
    for (Offset& o : offsets) {
        auto const within = [&](int most) {
            return static_cast<int>(random() % static_cast<unsigned int>(2 * most + 1)) - most;
        };
        o = {within(5), within(4), plans == 0 ? 0 : within(plans)};
    }
    offsets[random() % offsets.size()] = {0, 0, 0};
    return offsets;
}

OffsetList2D inPlane(std::vector<Offset> const& offsets)
{
    OffsetList2D list;
    for (Offset const& o : offsets) {
        list.push_back({o[0], o[1]});
    }
    return list;
}

OffsetList3D inSpace(std::vector<Offset> const& offsets)
{
    OffsetList3D list;
    for (Offset const& o : offsets) {
        list.push_back({o[0], o[1], o[2]});
    }
    return list;
}

template <class T, class Functor>
void expectScalarKernels(std::mt19937& random)
{
    using access::Neighborhood2D_4Tag, access::Neighborhood2D_GenTag;
    using access::Neighborhood3D_6Tag, access::Neighborhood3D_18Tag, access::Neighborhood3D_GenTag;
    auto const flat = someOffsets(random, 0);
    auto const deep = someOffsets(random, 3);
    expectReference<T, Scalar, Functor>(Neighborhood2dToValue<Functor, Neighborhood2D_4Tag, NoDataType>(), cross4(),
                                        random);
    expectReference<T, Scalar, Functor>(Neighborhood8ColumnsReduction<Functor>(), squareOf9(), random);
    expectReference<T, Scalar, Functor>(
        Neighborhood2dToValue<Functor, Neighborhood2D_GenTag, OffsetList2D>(inPlane(flat)), listed(flat), random);
    expectReference<T, Scalar, Functor>(Neighborhood3dToValue<Functor, Neighborhood3D_6Tag, NoDataType>(), cross6(),
                                        random);
    expectReference<T, Scalar, Functor>(Neighborhood3dToValue<Functor, Neighborhood3D_18Tag, NoDataType>(), edged18(),
                                        random);
    expectReference<T, Scalar, Functor>(Neighborhood26PlansReduction<Functor>(), cubeOf27(), random);
    expectReference<T, Scalar, Functor>(
        Neighborhood3dToValue<Functor, Neighborhood3D_GenTag, OffsetList3D>(inSpace(deep)), listed(deep), random);
}

template <class T, class Functor>
void expectVectorKernels(std::mt19937& random)
{
    using access::Neighborhood2D_4Tag, access::Neighborhood2D_GenTag;
    using access::Neighborhood3D_6Tag, access::Neighborhood3D_18Tag, access::Neighborhood3D_GenTag;
    auto const flat = someOffsets(random, 0);
    auto const deep = someOffsets(random, 3);
    expectReference<T, Vector, Functor>(Neighborhood2dToValueSimd<Functor, Neighborhood2D_4Tag, NoDataType>(), cross4(),
                                        random);
    expectReference<T, Vector, Functor>(Neighborhood8ColumnsReductionSimd<Functor>(), squareOf9(), random);
    expectReference<T, Vector, Functor>(
        Neighborhood2dToValueSimd<Functor, Neighborhood2D_GenTag, OffsetList2D>(inPlane(flat)), listed(flat), random);
    expectReference<T, Vector, Functor>(Neighborhood3dToValueSimd<Functor, Neighborhood3D_6Tag, NoDataType>(), cross6(),
                                        random);
    expectReference<T, Vector, Functor>(Neighborhood3dToValueSimd<Functor, Neighborhood3D_18Tag, NoDataType>(),
                                        edged18(), random);
    expectReference<T, Vector, Functor>(Neighborhood26PlansReductionSimd<Functor>(), cubeOf27(), random);
    expectReference<T, Vector, Functor>(
        Neighborhood3dToValueSimd<Functor, Neighborhood3D_GenTag, OffsetList3D>(inSpace(deep)), listed(deep), random);
}

/// Voxels of which all, one or none is such that a folded chain is not right for it; every other time few different
/// ones, so that it is the zeros that win.
template <class T>
std::vector<T> voxelsFor(int round, std::size_t count, std::mt19937& random)
{
    auto voxels = randomVoxels<T>(random, count);
    if constexpr (std::is_floating_point_v<T>) {
        if (round % 2 == 1) {
            T const loser = T(random() % 2 == 0 ? -1 : 1);
            std::generate(voxels.begin(), voxels.end(), [&] {
                T const values[] = {T(0), T(-0.0), loser, randomNaN<T>(random)};
                return values[random() % (round % 4 == 1 ? 3 : 4)];
            });
        }
        if (round % 3 == 0) {
            return voxels;
        }
        for (T& voxel : voxels) {
            voxel = std::isnan(voxel) || voxel == 0 ? T(0) : voxel;
        }
        if (round % 3 == 1) {
            voxels[random() % count] = random() % 2 == 0 ? T(-0.0) : randomNaN<T>(random);
        }
    }
    return voxels;
}

/// A program in leaves of every shape against the definition of what it stands for.
template <class T, class Functor>
void expectReference(RowProgramKernel<Functor> kernel, std::vector<ReferenceStep> const& steps, Sizes const& most,
                     std::mt19937& random)
{
    LeafKernelOf<T, Vector, RowProgramKernel<Functor>> const leafKernel(std::move(kernel));
    T const outside = Functor::template outside<T>;
    Extremum const extremum = std::is_same_v<Functor, DilationFunctor> ? Extremum::maximum : Extremum::minimum;
    for (int round = 0; round < 12; ++round) {
        Sizes const sizes = randomSizes(random, most);
        Sizes const leaf = randomSizes(random, {sizes.columns, sizes.rows, sizes.plans, 1, 1});
        auto const voxels = voxelsFor<T>(round, sizes.numOfVoxels(), random);
        auto const wanted = extremumReference(voxels, sizes, steps, extremum);
        auto const image = makeImage(sizes, voxels);
        auto const output = makeImage(sizes, std::vector<T>(voxels.size(), T(77)));
        runOver<T, Vector, InputToOutput>(*image, *output, leafKernel, outside, leaf);
        ASSERT_TRUE(sameBits(voxelsOf<T>(*output), wanted, "two images"));
        runOver<T, Vector, OutputToOutput>(*image, *image, leafKernel, outside, leaf);
        ASSERT_TRUE(sameBits(voxelsOf<T>(*image), wanted, "in place"));
    }
}

template <class T, class Functor>
void expectChains(std::mt19937& random)
{
    using access::Neighborhood2D_4Tag;
    auto const expectChain = [&](Steps const& steps, std::vector<ReferenceStep> const& reference, Sizes const& most) {
        RowProgramKernel<Functor> kernel(foldedProgram(steps), literalProgram(steps), {1, 1, 1}, 1);
        expectReference<T, Functor>(std::move(kernel), reference, most, random);
    };
    for (unsigned int const n : {1U, 2U, 3U, 4U, 7U}) {
        expectChain({{SquareElement(), n}}, {{squareOf9(), n}}, {70, 20, 2, 1, 1});
        expectChain({{Neighborhood2D_4Tag(), n}}, {{cross4(), n}}, {70, 20, 2, 1, 1});
    }
    for (unsigned int const n : {8U, 16U, 31U}) {
        expectChain({{SquareElement(), n}}, {{squareOf9(), n}}, {200, 12, 1, 1, 1});
        expectChain({{SquareElement(), n}}, {{squareOf9(), n}}, {17, 12, 2, 1, 1});
    }
    expectChain({{SquareElement(), 2}, {Neighborhood2D_4Tag(), 3}}, {{squareOf9(), 2}, {cross4(), 3}},
                {40, 20, 1, 1, 1});
    expectChain({{CubeElement(), 2}}, {{cubeOf27(), 2}}, {30, 9, 8, 1, 1});
    expectChain({{CubeElement(), 4}}, {{cubeOf27(), 4}}, {20, 9, 9, 1, 1});
}

template <class T, class Functor>
void expectChords(std::mt19937& random)
{
    auto const expectList = [&](std::vector<Offset> const& offsets, Sizes const& most) {
        RowProgramKernel<Functor> kernel(chordProgram(inSpace(offsets), std::is_floating_point_v<T>), {1, 1, 1});
        expectReference<T, Functor>(std::move(kernel), {{listed(offsets), 1}}, most, random);
        if (auto pairs = pairProgram(inSpace(offsets)); pairs && std::is_integral_v<T>) {
            RowProgramKernel<Functor> paired(*std::move(pairs), {1, 1, 1});
            expectReference<T, Functor>(std::move(paired), {{listed(offsets), 1}}, most, random);
        }
    };
    expectList(diskReference(1), {50, 20, 1, 1, 1});
    expectList(diskReference(4), {50, 20, 2, 1, 1});
    expectList(diskReference(9), {50, 30, 1, 1, 1});
    expectList(ballReference(2), {20, 9, 8, 1, 1});
    expectList(ballReference(3), {20, 9, 8, 1, 1});
    for (double const angle : {0.0, 30.0, 45.0, 90.0, 135.0, 200.0, 270.0, 315.0}) {
        expectList(lineReference2D(angle, 9), {50, 20, 1, 1, 1});
    }
    expectList({{5, 0, 0}}, {12, 5, 1, 1, 1}); // none of which holds the voxel itself
    expectList({{-5, 2, 0}, {-5, 3, 0}}, {12, 9, 1, 1, 1});
    expectList({{0, -3, 0}, {1, -3, 0}}, {12, 9, 1, 1, 1});
    std::vector<Offset> unequal; // a long chord, five short ones, and many side by side
    for (int y = -10; y < 30; ++y) {
        unequal.push_back({0, y, 0});
    }
    for (int x = 2; x <= 10; x += 2) {
        for (int y = 0; y < 5; ++y) {
            unequal.push_back({x, y, 0});
        }
    }
    for (int x = 12; x < 33; ++x) {
        unequal.insert(unequal.end(), {{x, 0, 0}, {x, 1, 0}});
    }
    expectList(unequal, {60, 50, 1, 1, 1});
    for (int round = 0; round < 5; ++round) {
        expectList(someOffsets(random, 0), {50, 20, 1, 1, 1});
        expectList(someOffsets(random, 3), {20, 9, 8, 1, 1});
    }
}

/// In runs of registers, voxels that a kernel may not read are not there at all.
template <class T, class Functor>
void expectRuns(std::mt19937& random)
{
    for (std::size_t const length : {3, 4, 5, 6, 7, 8, 16, 32}) {
        for (int round = 0; round < 40; ++round) {
            std::size_t const count = 1 + random() % 150;
            std::size_t const room = random() % 2 * (random() % 40);
            std::vector<T> row(count + length - 1 + room);
            std::generate(row.begin(), row.end(), [&] { return T(random() % 5) * (random() % 2 == 0 ? T(-1) : T(1)); });
            std::vector<T> wanted(count);
            for (std::size_t x = 0; x < count; ++x) {
                wanted[x] = std::accumulate(row.begin() + x + 1, row.begin() + x + length, row[x], Functor());
            }
            std::vector<T> made(count);
            RunSimd<Functor>::run(std::span<T const>(row), length, made.data(), count, {});
            ASSERT_TRUE(sameBits(made, wanted, "run"));
        }
    }
}

template <class T, class Functor, bool passesOverNan>
void expectLadders(std::mt19937& random)
{
    using Ladder = LadderSimd<Functor>;
    for (int round = 0; round < 60; ++round) {
        std::size_t const count = 1 + random() % 150;
        std::vector<std::vector<T>> older(1 + random() % Ladder::mostRungs);
        std::vector<std::vector<T>> made(older.size(), std::vector<T>(count));
        std::vector<std::vector<T>> wanted(older.size(), std::vector<T>(count));
        std::vector<Rung<T>> rungs;
        auto const newest = randomVoxels<T>(random, count);
        std::vector<T> const* last = &newest;
        for (std::size_t k = 0; k < older.size(); ++k) {
            older[k] = randomVoxels<T>(random, count);
            rungs.push_back({older[k].data(), made[k].data()});
            for (std::size_t x = 0; x < count; ++x) {
                T const first =
                    passesOverNan && k == 0 ? Functor()(Functor::template worst<T>, older[k][x]) : older[k][x];
                wanted[k][x] = Functor()(first, (*last)[x]);
            }
            last = &wanted[k];
        }
        Ladder::template climb<passesOverNan, T>(newest.data(), rungs, count, {});
        for (std::size_t k = 0; k < older.size(); ++k) {
            ASSERT_TRUE(sameBits(made[k], wanted[k], "rung"));
        }
    }
}

/// A program that reads its run from the image itself, beside which there is none but what the border tells.
template <class T, class Functor>
void expectRunOfTheImage(std::mt19937& random)
{
    RowProgram program;
    Stage run;
    std::vector<Offset> offsets;
    for (int x = -8; x < 8; ++x) {
        run.taps.push_back({0, {x, 0, 0}});
        offsets.push_back({x, 0, 0});
    }
    program.append(run);
    RowProgramKernel<Functor> kernel(std::move(program), {1, 1, 1});
    expectReference<T, Functor>(std::move(kernel), {{listed(offsets), 1}}, {200, 5, 2, 1, 1}, random);
}

template <class T>
class MorphologyKernels : public ::testing::Test {
};
using KernelVoxels = ::testing::Types<unsigned char, unsigned short, int, float, double>;
TYPED_TEST_SUITE(MorphologyKernels, KernelVoxels);

TYPED_TEST(MorphologyKernels, ofTheScalarLevelFollowTheDefinition)
{
    std::mt19937 random(1);
    expectScalarKernels<TypeParam, DilationFunctor>(random);
    expectScalarKernels<TypeParam, ErosionFunctor>(random);
}

TYPED_TEST(MorphologyKernels, ofTheVectorLevelFollowTheDefinition)
{
    std::mt19937 random(2);
    expectVectorKernels<TypeParam, DilationFunctor>(random);
    expectVectorKernels<TypeParam, ErosionFunctor>(random);
}

TYPED_TEST(MorphologyKernels, runChainsAsTheirIterations)
{
    std::mt19937 random(3);
    expectChains<TypeParam, DilationFunctor>(random);
    expectChains<TypeParam, ErosionFunctor>(random);
}

TYPED_TEST(MorphologyKernels, runListsByTheirChords)
{
    std::mt19937 random(4);
    expectChords<TypeParam, DilationFunctor>(random);
    expectChords<TypeParam, ErosionFunctor>(random);
}

TYPED_TEST(MorphologyKernels, doubleRunsInRegisters)
{
    std::mt19937 random(5);
    expectRunOfTheImage<TypeParam, DilationFunctor>(random);
    expectRuns<TypeParam, DilationFunctor>(random);
    expectRuns<TypeParam, ErosionFunctor>(random);
}

TYPED_TEST(MorphologyKernels, doubleRunsDownTheRows)
{
    std::mt19937 random(6);
    expectLadders<TypeParam, DilationFunctor, false>(random);
    expectLadders<TypeParam, ErosionFunctor, false>(random);
    if constexpr (std::is_floating_point_v<TypeParam>) {
        expectLadders<TypeParam, DilationFunctor, true>(random);
        expectLadders<TypeParam, ErosionFunctor, true>(random);
    }
}

} // namespace
} // namespace mox::testing
