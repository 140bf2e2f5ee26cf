#include "Morphology/private/chains.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace mox::morphology {

namespace {

using kernel::Offset3D;

constexpr Offset3D across{1, 0, 0};
constexpr Offset3D down{0, 1, 0};
constexpr Offset3D back{0, 0, 1};

// Longer ones would read too far around a leaf.
constexpr unsigned int mostInPlane = 31;
constexpr unsigned int mostInSpace = 12;

bool isSquare(Element const& element)
{
    return std::holds_alternative<SquareElement>(element);
}
bool isCross(Element const& element)
{
    return std::holds_alternative<access::Neighborhood2D_4Tag>(element);
}
bool isCube(Element const& element)
{
    return std::holds_alternative<CubeElement>(element);
}

/// 0 for elements that are not chained.
unsigned int mostIterations(Element const& element)
{
    if (isSquare(element) || isCross(element)) {
        return mostInPlane;
    }
    return isCube(element) ? mostInSpace : 0;
}

/// Elements that are chained, in the plane or in space.
bool areChained(Element const& a, Element const& b)
{
    return mostIterations(a) != 0 && mostIterations(a) == mostIterations(b);
}

/// Appends a stage whose taps see the last one at the given multiples of a step.
void appendAlong(RowProgram& program, Offset3D const& step, std::initializer_list<int> multiples,
                 bool endsIteration = false)
{
    Stage stage;
    for (int const n : multiples) {
        stage.taps.push_back({program.last(), plus({0, 0, 0}, step, n)});
    }
    stage.endsIteration = endsIteration;
    program.append(std::move(stage));
}

/// The run of voxels from an offset on. A long one is made of overlapping runs of about the square root of its length.
void appendRun(RowProgram& program, Offset3D first, Offset3D const& step, int length)
{
    constexpr int atOnce = 8;
    int const part = length <= atOnce ? 1 : static_cast<int>(std::ceil(std::sqrt(length)));
    if (part > 1) {
        appendRun(program, first, step, part);
        first = {0, 0, 0};
    }
    Stage stage;
    for (int begin = 0; begin < length; begin += part) {
        stage.taps.push_back({program.last(), plus(first, step, std::min(begin, length - part))});
    }
    program.append(std::move(stage));
}

/// The run of 2n + 1 voxels along a step around the voxel, by doubling.
void appendLadder(RowProgram& program, Offset3D const& step, unsigned int n)
{
    int const whole = 2 * static_cast<int>(n) + 1;
    Offset3D first = plus({0, 0, 0}, step, -static_cast<int>(n));
    for (int length = 1; length < whole;) {
        int const added = std::min(length, whole - length);
        program.append({{{program.last(), first}, {program.last(), plus(first, step, added)}}});
        length += added;
        first = {0, 0, 0};
    }
}

/// The same across, of one run that is made in registers or of two that overlap.
void appendRow(RowProgram& program, unsigned int n)
{
    int const whole = 2 * static_cast<int>(n) + 1;
    int const part = whole <= 8 ? whole : static_cast<int>(std::bit_floor(static_cast<unsigned int>(whole)));
    Stage stage;
    for (int i = 0; i < part; ++i) {
        stage.taps.push_back({program.last(), {i - static_cast<int>(n), 0, 0}});
    }
    program.append(std::move(stage));
    if (part < whole) {
        program.append({{{program.last(), {0, 0, 0}}, {program.last(), {whole - part, 0, 0}}}});
    }
}

void appendCross(RowProgram& program, bool endsIteration)
{
    Stage stage;
    for (kernel::Offset2D const& offset : access::Neighborhood2D_4Tag::offsets) {
        stage.taps.push_back({program.last(), kernel::inSpace(offset)});
    }
    stage.endsIteration = endsIteration;
    program.append(std::move(stage));
}

/// Runs of n voxels along both diagonals make every second voxel of a diamond of radius n - 1; a cross fills it up to
/// radius n.
void appendDiamond(RowProgram& program, unsigned int n)
{
    int const length = static_cast<int>(n);
    if (length > 1) {
        appendRun(program, {1 - length, 0, 0}, {1, 1, 0}, length);
        appendRun(program, {0, 0, 0}, {1, -1, 0}, length);
    }
    appendCross(program, false);
}

} // namespace

std::vector<Chain> chainsOf(Steps const& steps)
{
    std::vector<Chain> chains;
    for (Step const& step : steps) {
        unsigned int const most = mostIterations(step.element);
        if (most == 0) {
            chains.push_back({{{step.element, 1, step.symmetry}}, step.iterations});
            continue;
        }
        unsigned int const repetitions = step.iterations / most;
        unsigned int const rest = step.iterations % most;
        if (repetitions > 0) {
            chains.push_back({{{step.element, most}}, repetitions});
        }
        if (rest == 0) {
            continue;
        }
        bool const joins = repetitions == 0 && !chains.empty() && chains.back().repetitions == 1 &&
                           areChained(chains.back().steps.back().element, step.element) &&
                           numOfIterations(chains.back().steps) + rest <= most;
        if (!joins) {
            chains.emplace_back();
        }
        chains.back().steps.push_back({step.element, rest});
    }
    return chains;
}

bool isFoldable(Chain const& chain)
{
    return mostIterations(chain.steps.front().element) != 0 && numOfIterations(chain.steps) > 1;
}

bool foldingPays(Chain const& chain, unsigned int columns)
{
    return !isCube(chain.steps.front().element) || numOfIterations(chain.steps) > 3 || columns >= 512;
}

RowProgram literalProgram(Steps const& steps)
{
    RowProgram program;
    for (Step const& step : steps) {
        for (unsigned int i = 0; i < step.iterations; ++i) {
            if (isCross(step.element)) {
                appendCross(program, true);
                continue;
            }
            appendAlong(program, down, {-1, 0, 1});
            appendAlong(program, across, {-1, 0, 1}, isSquare(step.element));
            if (isCube(step.element)) {
                appendAlong(program, back, {-1, 0, 1}, true);
            }
        }
    }
    return program;
}

RowProgram foldedProgram(Steps const& steps)
{
    RowProgram program;
    for (Step const& step : steps) {
        if (isCross(step.element)) {
            appendDiamond(program, step.iterations);
            continue;
        }
        appendLadder(program, down, step.iterations);
        appendRow(program, step.iterations);
        if (isCube(step.element)) {
            appendLadder(program, back, step.iterations);
        }
    }
    return program;
}

} // namespace mox::morphology
