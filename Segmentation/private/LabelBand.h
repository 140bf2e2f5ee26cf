#pragma once

#include <memory>
#include <vector>

#include "Segmentation/private/RowStrip.h"

namespace mox::segmentation {

/// The components of a band of rows, numbered in the order of their first voxels.
class LabelBand {
public:
    using Number = unsigned int;

    /// Memory that a thread keeps from band to band.
    struct Scratch {
        RowStrip strip;
        RowStrip stripAbove;
        std::vector<Word> upperEnds; ///< of the runs with a voxel in the upper row
        std::vector<Number> runs;
        std::vector<Number> parents;
    };

    /// The most rows of a band whose runs can be numbered.
    static unsigned int maxNumOfRows(unsigned int columns);

    LabelBand(unsigned int beginRow, unsigned int numOfRows, std::size_t numOfWords)
        : beginRow_(beginRow)
        , numOfRows_(numOfRows)
        , numOfWords_(numOfWords)
        , bits_(numOfRows * numOfWords)
    {
    }

    unsigned int beginRow() const { return beginRow_; }
    unsigned int numOfRows() const { return numOfRows_; }
    std::size_t numOfWords() const { return numOfWords_; }
    Word* row(unsigned int y) { return bits_.data() + y * numOfWords_; }
    Word const* row(unsigned int y) const { return bits_.data() + y * numOfWords_; }

    /// To be called once all rows have their bits.
    void label(Scratch& scratch);

    void buildStrip(unsigned int y, RowStrip& strip) const
    {
        strip.build(row(y), y + 1 < numOfRows_ ? row(y + 1) : nullptr, numOfWords_);
    }
    unsigned int lastStrip() const { return (numOfRows_ - 1) / 2 * 2; }

    /// The component of each run, strip by strip, by rank.
    Number const* runs() const { return runs_.get(); }
    Number numOfComponents() const { return numOfComponents_; }

    /// The components that may touch a neighbouring band, ascending. Those of the first row come first, and are
    /// numbers 0, 1, ... of the band.
    std::vector<Number> const& rim() const { return rim_; }
    /// Where the component of each run of the last strip stands in the rim.
    std::vector<Number> const& lastRuns() const { return lastRuns_; }

private:
    Number numberRuns(Word const* upper, Scratch& scratch) const;
    void findRim(Number numOfFirstRow, Number numBeforeLastStrip, std::size_t beginOfLastStrip);

    unsigned int beginRow_;
    unsigned int numOfRows_;
    std::size_t numOfWords_;
    std::vector<Word> bits_;
    std::unique_ptr<Number[]> runs_;
    std::size_t numOfRuns_ = 0;
    Number numOfComponents_ = 0;
    std::vector<Number> rim_;
    std::vector<Number> lastRuns_;
};

} // namespace mox::segmentation
