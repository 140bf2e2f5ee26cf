#include "Morphology/private/chords.h"

#include <algorithm>
#include <bit>
#include <map>

namespace mox::morphology {

namespace {

using kernel::Offset3D;

struct Chord {
    Offset3D first;
    unsigned int length;
};

std::size_t numOfChordsAlong(Offset3D const& step, std::span<Offset3D const> offsets)
{
    std::size_t count = 1;
    for (std::size_t i = 1; i < offsets.size(); ++i) {
        count += offsets[i] == plus(offsets[i - 1], step, 1) ? 0 : 1;
    }
    return count;
}

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

/// Runs up to this much shorter than the longest one are rungs of a ladder too: they cost little to make, but all rungs
/// are made with the newest row of the image, so that shorter ones are kept for as many rows more.
constexpr unsigned int mostShorter = 32;

/// A stage of its own saves one of two reads of each chord of its length. As a rung it costs a read and a write,
constexpr std::size_t usesThatPayForARung = 2;
/// and two reads and a write by itself.
constexpr std::size_t usesThatPayForAStage = 4;

/// Stages of runs along a step, each made of two runs that overlap. Of a disk of radius 10, whose chords have 1, 9, 13,
/// 15, 17, 19 and 21 voxels, the ladder has 2, 4 and 8, and 9, 13, 15, 17 and 19, which are used often enough. 21 is
/// read as two of 19; of the chords of 19, each four side by side are one run across.
class Runs {
public:
    /// For chords of such lengths, with the number of each.
    Runs(RowProgram& program, Offset3D const& step, std::map<unsigned int, std::size_t> const& lengths)
        : program_(program)
        , step_(step)
    {
        unsigned int const longest = lengths.rbegin()->first;
        for (auto const& [length, uses] : lengths) {
            while (2 * longestRung(length).first < length) {
                appendRung(2 * longestRung(length).first);
            }
            if (uses >= usesThatPayForARung && longest - length <= mostShorter && !ladder_.contains(length)) {
                appendRung(length);
            }
        }
        for (auto const& [length, uses] : lengths) {
            if (uses >= usesThatPayForAStage && !ladder_.contains(length)) {
                others_[length] = append(length);
            }
        }
    }

    /// For chords of more than one voxel.
    std::optional<unsigned int> stageOf(unsigned int length) const
    {
        for (auto const* const stages : {&ladder_, &others_}) {
            if (auto const found = stages->find(length); length > 1 && found != stages->end()) {
                return found->second;
            }
        }
        return std::nullopt;
    }

    /// One or two taps that together see a chord.
    void appendTaps(std::vector<Tap>& taps, Chord const& chord) const
    {
        if (auto const stage = stageOf(chord.length)) {
            taps.push_back({*stage, chord.first});
            return;
        }
        auto const [length, stage] = longestRung(chord.length);
        taps.push_back({stage, chord.first});
        if (length < chord.length) {
            taps.push_back({stage, plus(chord.first, step_, static_cast<int>(chord.length - length))});
        }
    }

    /// Taps that see equal chords side by side, whose stage is given, in runs of a length that is made in registers.
    void appendSideBySide(std::vector<Tap>& taps, unsigned int stage, Offset3D const& first, unsigned int count)
    {
        unsigned int const atOnce = count <= 8 ? count : std::bit_floor(std::min(count, 32U));
        unsigned int const run = runAcross(stage, atOnce);
        for (unsigned int begin = 0; begin < count; begin += atOnce) {
            taps.push_back({run, plus(first, {1, 0, 0}, static_cast<int>(std::min(begin, count - atOnce)))});
        }
    }

private:
    using Stages = std::map<unsigned int, unsigned int>; ///< by length

    unsigned int runAcross(unsigned int stage, unsigned int count)
    {
        auto const [entry, isNew] = sideBySide_.try_emplace({stage, count});
        if (isNew) {
            Stage run;
            for (unsigned int i = 0; i < count; ++i) {
                run.taps.push_back({stage, {static_cast<int>(i), 0, 0}});
            }
            entry->second = program_.append(std::move(run));
        }
        return entry->second;
    }

    /// No longer than that.
    Stages::value_type longestRung(unsigned int length) const { return *std::prev(ladder_.upper_bound(length)); }

    void appendRung(unsigned int length) { ladder_[length] = append(length); }

    unsigned int append(unsigned int length)
    {
        auto const [before, stage] = longestRung(length);
        Offset3D const second = plus({0, 0, 0}, step_, static_cast<int>(length - before));
        return program_.append({{{stage, {0, 0, 0}}, {stage, second}}, stage == 0});
    }

    RowProgram& program_;
    Offset3D step_;
    Stages ladder_{{1, 0}};
    Stages others_;
    std::map<std::pair<unsigned int, unsigned int>, unsigned int> sideBySide_; ///< by stage and number
};

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

RowProgram programAsItStands(std::span<Offset3D const> offsets)
{
    Stage result;
    for (Offset3D const& offset : offsets) {
        result.taps.push_back({0, offset});
    }
    RowProgram program;
    program.append(std::move(result));
    return program;
}

RowProgram programAlong(Offset3D const& step, std::span<Offset3D const> offsets, bool mayHoldNan)
{
    std::vector<Chord> const chords = chordsAlong(step, offsets);
    std::map<unsigned int, std::size_t> uses;
    for (Chord const& chord : chords) {
        ++uses[chord.length];
    }
    RowProgram program;
    Runs runs(program, step, uses);
    Stage result;
    if (mayHoldNan && chords.front().length > 1) {
        result.taps.push_back({0, offsets.front()});
    }
    for (std::size_t i = 0; i < chords.size();) {
        auto const stage = runs.stageOf(chords[i].length);
        unsigned int const alike = stage ? numOfAlike(std::span(chords).subspan(i)) : 1;
        if (alike >= shortestRun) {
            runs.appendSideBySide(result.taps, *stage, chords[i].first, alike);
            i += alike;
        } else {
            runs.appendTaps(result.taps, chords[i]);
            ++i;
        }
    }
    program.append(std::move(result));
    return program;
}

} // namespace

RowProgram chordProgram(std::span<Offset3D const> offsets, bool mayHoldNan)
{
    RowProgram cheapest = programAsItStands(offsets);
    std::size_t leastCost = costOf(cheapest);
    for (int plan = -1; plan <= 1; ++plan) {
        for (int row = -1; row <= 1; ++row) {
            for (int column = -1; column <= 1; ++column) {
                Offset3D const step{column, row, plan};
                std::size_t const numOfChords = numOfChordsAlong(step, offsets);
                if (numOfChords == offsets.size() || numOfChords >= leastCost) {
                    continue;
                }
                RowProgram program = programAlong(step, offsets, mayHoldNan);
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

} // namespace mox::morphology
