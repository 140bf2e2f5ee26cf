#include "Segmentation/private/LabelBand.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>

#include "Segmentation/private/unite.h"

namespace mox::segmentation {

void RowStrip::build(Word const* upper, Word const* lower, std::size_t numOfWords)
{
    columns_.resize(numOfWords);
    ends_.resize(numOfWords);
    before_.resize(numOfWords);
    for (std::size_t w = 0; w < numOfWords; ++w) {
        columns_[w] = upper[w] | (lower != nullptr ? lower[w] : 0);
    }
    numOfRuns_ = 0;
    for (std::size_t w = 0; w < numOfWords; ++w) {
        Word const next = w + 1 < numOfWords ? columns_[w + 1] : 0;
        ends_[w] = columns_[w] & ~(columns_[w] >> 1U | next << 63U);
        before_[w] = numOfRuns_;
        numOfRuns_ += popCount(ends_[w]);
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
    auto const first = static_cast<Number>(scratch.runs.size());
    scratch.runs.resize(first + strip.numOfRuns());
    scratch.parents.resize(scratch.runs.size());
    std::iota(scratch.parents.begin() + first, scratch.parents.end(), first);

    Number* const runs = scratch.runs.data() + first;
    Word carry = 0;
    Number numOfUpper = 0;
    Number numOfOthers = 0;
    for (std::size_t w = 0; w < numOfWords_; ++w) {
        Word const columns = strip.columns(w);
        Word const reached = flood(columns, upper[w] | (carry & columns));
        carry = reached >> 63U;
        Number* out = runs + numOfUpper + numOfOthers;
        // The lowest bit tells the two kinds apart until all of the first have been counted.
        forEachBit(strip.ends(w), [&](unsigned int x) {
            Number const isUpper = reached >> x & 1U;
            *out++ = 2 * (isUpper != 0 ? numOfUpper : numOfOthers) + isUpper;
            numOfUpper += isUpper;
            numOfOthers += 1 - isUpper;
        });
    }
    std::for_each(runs, runs + strip.numOfRuns(),
                  [&](Number& run) { run = first + run / 2 + (run % 2 != 0 ? 0 : numOfUpper); });
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

    auto const countComponents = [&](std::size_t firstRun, std::size_t lastRun) {
        for (std::size_t i = firstRun; i < lastRun; ++i) {
            // A parent comes before its child, and so has been replaced by its component.
            Number& parent = scratch.parents[i];
            parent = parent == i ? numOfComponents_++ : scratch.parents[parent];
        }
    };
    countComponents(0, numOfRunsInFirstRow);
    Number const numOfFirstRow = numOfComponents_;
    countComponents(numOfRunsInFirstRow, scratch.parents.size());

    runs_.resize(scratch.runs.size());
    std::transform(scratch.runs.begin(), scratch.runs.end(), runs_.begin(),
                   [&](Number run) { return scratch.parents[run]; });
    findRim(numOfFirstRow, begin);
}

void LabelBand::findRim(Number numOfFirstRow, std::size_t beginOfLastStrip)
{
    rim_.resize(numOfFirstRow);
    std::iota(rim_.begin(), rim_.end(), 0U);
    auto const last = runs_.begin() + static_cast<std::ptrdiff_t>(beginOfLastStrip);
    std::copy_if(last, runs_.end(), std::back_inserter(rim_), [&](Number run) { return run >= numOfFirstRow; });
    auto const added = rim_.begin() + numOfFirstRow;
    std::sort(added, rim_.end());
    rim_.erase(std::unique(added, rim_.end()), rim_.end());
    lastRuns_.resize(static_cast<std::size_t>(runs_.end() - last));
    std::transform(last, runs_.end(), lastRuns_.begin(), [&](Number run) {
        return static_cast<Number>(std::lower_bound(rim_.begin(), rim_.end(), run) - rim_.begin());
    });
}

} // namespace mox::segmentation
