#include "Segmentation/private/LabelBand.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>

#include "Segmentation/private/unite.h"

namespace mox::segmentation {

void RowStrip::build(Word const* upper, Word const* lower, std::size_t numOfWords)
{
    auto const columnsAt = [&](std::size_t w) { return upper[w] | (lower != nullptr ? lower[w] : 0); };
    words_.resize(numOfWords);
    numOfRuns_ = 0;
    Word columns = columnsAt(0);
    for (std::size_t w = 0; w < numOfWords; ++w) {
        Word const next = w + 1 < numOfWords ? columnsAt(w + 1) : 0;
        Word const ends = endsOf(columns, next);
        Word const bytes = countsByByte(ends);
        words_[w] = {columns, ends, bytes, numOfRuns_};
        numOfRuns_ += static_cast<unsigned int>(bytes >> 56U);
        columns = next;
    }
}

/// A strip has at most a run in every second column.
unsigned int LabelBand::maxNumOfRows(unsigned int columns)
{
    constexpr unsigned int wantedStrips = 32;
    unsigned int const runsPerStrip = columns / 2 + 1;
    return 2 * std::clamp(std::numeric_limits<Number>::max() / runsPerStrip, 1U, wantedStrips);
}

/// A strip's runs by rank. Numbers go first to the runs with a voxel in the upper row, so that the order of numbers is
/// that of the runs' first voxels. Returns how many those are.
LabelBand::Number LabelBand::numberRuns(Word const* upper, Scratch& scratch) const
{
    RowStrip const& strip = scratch.strip;
    scratch.upperEnds.resize(numOfWords_);
    Number numOfUpper = 0;
    Word carry = 0;
    for (std::size_t w = 0; w < numOfWords_; ++w) {
        Word const columns = strip.columns(w);
        Word const reached = flood(columns, upper[w] | (carry & columns));
        carry = reached >> 63U;
        scratch.upperEnds[w] = reached & strip.ends(w);
        numOfUpper += popCount(scratch.upperEnds[w]);
    }

    auto const first = static_cast<Number>(scratch.parents.size());
    scratch.parents.resize(first + strip.numOfRuns());
    std::iota(scratch.parents.begin() + first, scratch.parents.end(), first);
    scratch.runs.resize(scratch.parents.size());
    Number* out = scratch.runs.data() + first;
    if (numOfUpper == strip.numOfRuns()) {
        std::iota(out, out + numOfUpper, first);
        return numOfUpper;
    }
    std::array<Number, 2> next = {first + numOfUpper, first};
    for (std::size_t w = 0; w < numOfWords_; ++w) {
        forEachBit(strip.ends(w),
                   [&, upperEnds = scratch.upperEnds[w]](unsigned int x) { *out++ = next[upperEnds >> x & 1U]++; });
    }
    return numOfUpper;
}

void LabelBand::label(Scratch& scratch)
{
    scratch.runs.clear();
    scratch.parents.clear();
    Number numOfRunsInFirstRow = 0;
    std::size_t above = 0; // first run of the strip above
    std::size_t begin = 0;
    for (unsigned int y = 0; y < numOfRows_; y += 2) {
        begin = scratch.runs.size();
        buildStrip(y, scratch.strip);
        Number const numOfUpper = numberRuns(row(y), scratch);
        if (y == 0) {
            numOfRunsInFirstRow = numOfUpper;
        } else {
            Number* const parents = scratch.parents.data();
            Number const* const runsAbove = scratch.runs.data() + above;
            Number const* const runs = scratch.runs.data() + begin;
            forEachContact(row(y - 1), scratch.stripAbove, row(y), scratch.strip, numOfWords_,
                           [=](Number a, Number b) { unite(parents, runsAbove[a], runs[b]); });
        }
        above = begin;
        std::swap(scratch.strip, scratch.stripAbove);
    }

    // A parent comes before its child, and so has been replaced by its component.
    auto const countComponents = [parents = scratch.parents.data()](std::size_t firstRun, std::size_t lastRun,
                                                                    Number count) {
        for (std::size_t i = firstRun; i < lastRun; ++i) {
            Number const parent = parents[i];
            bool const isRoot = parent == i;
            parents[i] = isRoot ? count : parents[parent];
            count += isRoot ? 1 : 0;
        }
        return count;
    };
    std::size_t const beginOfLastStrip = std::max<std::size_t>(begin, numOfRunsInFirstRow);
    Number const numOfFirstRow = countComponents(0, numOfRunsInFirstRow, 0);
    Number const numBeforeLastStrip = countComponents(numOfRunsInFirstRow, beginOfLastStrip, numOfFirstRow);
    numOfComponents_ = countComponents(beginOfLastStrip, scratch.parents.size(), numBeforeLastStrip);

    numOfRuns_ = scratch.runs.size();
    runs_ = std::make_unique_for_overwrite<Number[]>(numOfRuns_);
    std::transform(scratch.runs.begin(), scratch.runs.end(), runs_.get(),
                   [parents = scratch.parents.data()](Number run) { return parents[run]; });
    findRim(numOfFirstRow, numBeforeLastStrip, begin);
}

/// The components that begin in the last strip are numbered one after the other, at the end.
void LabelBand::findRim(Number numOfFirstRow, Number numBeforeLastStrip, std::size_t beginOfLastStrip)
{
    Number const* const begin = runs_.get() + beginOfLastStrip;
    Number const* const end = runs_.get() + numOfRuns_;
    rim_.resize(numOfFirstRow);
    std::iota(rim_.begin(), rim_.end(), 0U);
    std::copy_if(begin, end, std::back_inserter(rim_),
                 [=](Number run) { return run >= numOfFirstRow && run < numBeforeLastStrip; });
    std::sort(rim_.begin() + numOfFirstRow, rim_.end());
    rim_.erase(std::unique(rim_.begin() + numOfFirstRow, rim_.end()), rim_.end());
    auto const numOfOlder = static_cast<Number>(rim_.size());
    rim_.resize(numOfOlder + (numOfComponents_ - numBeforeLastStrip));
    std::iota(rim_.begin() + numOfOlder, rim_.end(), numBeforeLastStrip);

    lastRuns_.resize(static_cast<std::size_t>(end - begin));
    std::transform(begin, end, lastRuns_.begin(), [&](Number run) {
        if (run < numOfFirstRow) {
            return run;
        }
        if (run >= numBeforeLastStrip) {
            return numOfOlder + (run - numBeforeLastStrip);
        }
        return static_cast<Number>(std::lower_bound(rim_.begin(), rim_.begin() + numOfOlder, run) - rim_.begin());
    });
}

} // namespace mox::segmentation
