#include "Morphology/private/chords.h"

#include <bit>
#include <map>

namespace mox::morphology {

namespace {

using kernel::Offset3D;

struct Chord {
    Offset3D first;
    unsigned int length;
};

std::vector<Chord> chordsAlong(Offset3D const& step, std::span<Offset3D const> offsets)
{
    std::vector<Chord> chords;
    for (Offset3D const& offset : offsets) {
        bool const continues =
            !chords.empty() && offset == plus(chords.back().first, step, static_cast<int>(chords.back().length));
        if (continues) {
            ++chords.back().length;
        } else {
            chords.push_back({offset, 1});
        }
    }
    return chords;
}

/// Makes runs along a step of any stage as they are asked for.
class Runs {
public:
    Runs(RowProgram& program, Offset3D const& step)
        : program_(program)
        , step_(step)
        , powers_{0}
    {
    }

    /// Taps that together see a run from an offset on.
    void appendTaps(std::vector<Tap>& taps, Chord const& chord)
    {
        unsigned int const power = floorLog2(chord.length);
        unsigned int const rest = chord.length - (1U << power);
        taps.push_back({runOfPower(power), chord.first});
        if (rest > 0) {
            taps.push_back({runOfPower(power), plus(chord.first, step_, static_cast<int>(rest))});
        }
    }

    /// The stage of all runs of a length. One whose length is no power of two is made when it is asked for first.
    unsigned int stageOf(unsigned int length)
    {
        if (std::has_single_bit(length)) {
            return runOfPower(floorLog2(length));
        }
        auto const [entry, isNew] = stages_.try_emplace(length);
        if (isNew) {
            Stage stage;
            appendTaps(stage.taps, {{0, 0, 0}, length});
            entry->second = program_.append(std::move(stage));
        }
        return entry->second;
    }

    /// A tap that sees runs of a length side by side.
    Tap sideBySide(Chord const& first, unsigned int count)
    {
        auto const [entry, isNew] = sideBySide_.try_emplace({first.length, count});
        if (isNew) {
            Stage stage;
            for (unsigned int i = 0; i < count; ++i) {
                stage.taps.push_back({stageOf(first.length), {static_cast<int>(i), 0, 0}});
            }
            entry->second = program_.append(std::move(stage));
        }
        return {entry->second, first.first};
    }

private:
    static unsigned int floorLog2(unsigned int length) { return static_cast<unsigned int>(std::bit_width(length)) - 1; }

    unsigned int runOfPower(unsigned int power)
    {
        while (powers_.size() <= power) {
            auto const half = static_cast<int>(1U << (powers_.size() - 1));
            unsigned int const stage = powers_.back();
            powers_.push_back(
                program_.append({{{stage, {0, 0, 0}}, {stage, plus({0, 0, 0}, step_, half)}}, stage == 0}));
        }
        return powers_[power];
    }

    RowProgram& program_;
    Offset3D step_;
    std::vector<unsigned int> powers_;
    std::map<unsigned int, unsigned int> stages_;                              ///< by length
    std::map<std::pair<unsigned int, unsigned int>, unsigned int> sideBySide_; ///< by length and number
};

/// A stage of its own costs two reads and a write, and saves one of the two reads of each chord of its length.
constexpr std::size_t usesThatPayForAStage = 4;

/// How many chords from the first on are alike and stand side by side.
unsigned int numOfAlike(std::span<Chord const> chords)
{
    unsigned int count = 1;
    while (count < chords.size() && chords[count].length == chords[0].length &&
           chords[count].first == plus(chords[0].first, {1, 0, 0}, static_cast<int>(count))) {
        ++count;
    }
    return count;
}

RowProgram programAlong(Offset3D const& step, std::span<Offset3D const> offsets)
{
    std::vector<Chord> const chords = chordsAlong(step, offsets);
    std::map<unsigned int, std::size_t> uses;
    for (Chord const& chord : chords) {
        ++uses[chord.length];
    }
    RowProgram program;
    Runs runs(program, step);
    Stage result;
    if (chords.front().length > 1) {
        result.taps.push_back({0, offsets.front()});
    }
    for (std::size_t i = 0; i < chords.size();) {
        Chord const& chord = chords[i];
        unsigned int const alike = numOfAlike(std::span(chords).subspan(i));
        if (chord.length > 1 && isLengthOfRun(alike)) {
            result.taps.push_back(runs.sideBySide(chord, alike));
            i += alike;
            continue;
        }
        if (uses[chord.length] >= usesThatPayForAStage) {
            result.taps.push_back({runs.stageOf(chord.length), chord.first});
        } else {
            runs.appendTaps(result.taps, chord);
        }
        ++i;
    }
    program.append(std::move(result));
    return program;
}

/// Reads and writes per voxel.
std::size_t costOf(RowProgram const& program)
{
    std::size_t cost = 0;
    for (Stage const& stage : program.stages()) {
        cost += (isRun(stage) ? 1 : stage.taps.size()) + 1;
    }
    return cost;
}

} // namespace

RowProgram chordProgram(std::span<Offset3D const> offsets)
{
    RowProgram cheapest = programAlong({0, 0, 0}, offsets);
    std::size_t leastCost = costOf(cheapest);
    for (int plan = -1; plan <= 1; ++plan) {
        for (int row = -1; row <= 1; ++row) {
            for (int column = -1; column <= 1; ++column) {
                Offset3D const step{column, row, plan};
                if (chordsAlong(step, offsets).size() >= leastCost) {
                    continue;
                }
                RowProgram program = programAlong(step, offsets);
                std::size_t const cost = costOf(program);
                if (cost < leastCost) {
                    cheapest = std::move(program);
                    leastCost = cost;
                }
            }
        }
    }
    return cheapest;
}

std::optional<RowProgram> chordProgramOf(Element const& element)
{
    if (auto const* const inPlane = std::get_if<Shared<OffsetList2D>>(&element)) {
        OffsetList3D list;
        for (kernel::Offset2D const& offset : **inPlane) {
            list.push_back(kernel::inSpace(offset));
        }
        return chordProgram(list);
    }
    auto const* const inSpace = std::get_if<Shared<OffsetList3D>>(&element);
    return inSpace != nullptr ? std::optional(chordProgram(**inSpace)) : std::nullopt;
}

} // namespace mox::morphology
