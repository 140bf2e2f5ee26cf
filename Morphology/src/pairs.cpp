#include "Morphology/private/pairs.h"

#include <algorithm>
#include <tuple>

namespace mox::morphology {

namespace {

using kernel::Offset3D;

constexpr std::size_t mostOffsets = 64;

/// In the order in which a sweep makes voxels.
bool isBefore(Offset3D const& a, Offset3D const& b)
{
    return std::tie(a.plan, a.row, a.column) < std::tie(b.plan, b.row, b.column);
}

/// Offsets without repetitions, in the order of a sweep.
class OffsetSet {
public:
    explicit OffsetSet(std::span<Offset3D const> offsets)
        : offsets_(offsets.begin(), offsets.end())
    {
        std::sort(offsets_.begin(), offsets_.end(), isBefore);
        offsets_.erase(std::unique(offsets_.begin(), offsets_.end()), offsets_.end());
    }

    std::span<Offset3D const> offsets() const { return offsets_; }
    std::size_t size() const { return offsets_.size(); }

    bool contains(Offset3D const& offset) const
    {
        return std::binary_search(offsets_.begin(), offsets_.end(), offset, isBefore);
    }

private:
    std::vector<Offset3D> offsets_;
};

/// A set taken apart into voxels with their fellows one step on, and those that have none.
struct Pairing {
    Offset3D step;
    std::vector<Offset3D> pairs;
    std::vector<Offset3D> singles;

    std::size_t numOfTaps() const { return pairs.size() + singles.size(); }
};

Pairing pairingOf(OffsetSet const& set, Offset3D const& step)
{
    Pairing pairing{step, {}, {}};
    for (Offset3D const& first : set.offsets()) {
        if (set.contains(plus(first, step, -1))) {
            continue; // within a row of voxels that has been taken apart
        }
        int length = 1;
        while (set.contains(plus(first, step, length))) {
            ++length;
        }
        if (length == 1) {
            pairing.singles.push_back(first);
            continue;
        }
        for (int i = 0; i < length; i += 2) {
            pairing.pairs.push_back(plus(first, step, std::min(i, length - 2)));
        }
    }
    return pairing;
}

/// With the step from the first offset that leaves the fewest taps, and of those the fewest singles.
Pairing bestPairing(OffsetSet const& set)
{
    Pairing best{{}, {}, {set.offsets().begin(), set.offsets().end()}};
    auto const measure = [](Pairing const& p) { return std::pair(p.numOfTaps(), p.singles.size()); };
    for (Offset3D const& other : set.offsets().subspan(1)) {
        Pairing pairing = pairingOf(set, plus(other, set.offsets().front(), -1));
        if (measure(pairing) < measure(best)) {
            best = std::move(pairing);
        }
    }
    return best;
}

} // namespace

std::optional<RowProgram> pairProgram(std::span<Offset3D const> list)
{
    constexpr std::size_t costOfStage = 3; // two reads and a write
    if (list.size() > mostOffsets) {
        return std::nullopt;
    }
    RowProgram program;
    Stage result;
    unsigned int stage = 0;
    OffsetSet set(list);
    for (;;) {
        Pairing const pairing = bestPairing(set);
        if (pairing.numOfTaps() + costOfStage >= set.size()) {
            break;
        }
        for (Offset3D const& single : pairing.singles) {
            result.taps.push_back({stage, single});
        }
        stage = program.append({{{stage, {0, 0, 0}}, {stage, pairing.step}}});
        set = OffsetSet(pairing.pairs);
    }
    for (Offset3D const& offset : set.offsets()) {
        result.taps.push_back({stage, offset});
    }
    program.append(std::move(result));
    return program;
}

} // namespace mox::morphology
