#pragma once

#include <vector>

#include "Segmentation/private/BitRows.h"

namespace mox::segmentation {

/// Two rows, or the single last one of a band, seen as one: under 8-connectivity, adjacent columns that each hold a
/// voxel are connected, so that a run of such columns belongs to one component.
class RowStrip {
public:
    /// `lower` may be null.
    void build(Word const* upper, Word const* lower, std::size_t numOfWords);

    Word columns(std::size_t word) const { return words_[word].columns; }
    /// The last column of each run.
    Word ends(std::size_t word) const { return words_[word].ends; }
    unsigned int numOfRuns() const { return numOfRuns_; }

    /// The number of runs that end before a column, which is the rank of the run that holds the column.
    unsigned int rank(std::size_t word, unsigned int bit) const
    {
        WordOfRuns const& runs = words_[word];
        unsigned int const byte = bit & 56U;
        auto const inBytesBefore = static_cast<unsigned int>(runs.bytes << 8U >> byte & 255U);
        auto const inByte = static_cast<unsigned int>(runs.ends >> byte) & ((1U << (bit & 7U)) - 1);
        return runs.before + inBytesBefore + bitsOfByte[inByte];
    }

private:
    struct WordOfRuns {
        Word columns;
        Word ends;
        Word bytes;          ///< in each byte, the ends up to that byte
        unsigned int before; ///< runs that end before the word
    };

    std::vector<WordOfRuns> words_;
    unsigned int numOfRuns_ = 0;
};

/// The last columns of the runs of a word, by the word that follows.
inline Word endsOf(Word columns, Word next)
{
    return columns & ~(columns >> 1U | next << 63U);
}

/// The bits of each run from its first seed on; the seeds lie within runs. The sum carries through the run.
inline Word flood(Word runs, Word seeds)
{
    return (((runs + seeds) ^ runs) | seeds) & runs;
}

/// Finds where voxels of row `a`, the last of the strip above, and of row `b`, the first of the strip below, touch.
/// Calls `link(rank above, rank below)` for each pair of runs that do, as a rule once.
template <class Link>
void forEachContact(Word const* a, RowStrip const& above, Word const* b, RowStrip const& below, std::size_t numOfWords,
                    Link const& link)
{
    Word carry = 0; // 1 when the runs that go on from the word before have been linked
    Word aBefore = 0;
    Word bothBefore = 0;
    for (std::size_t w = 0; w < numOfWords; ++w) {
        bool const isLast = w + 1 == numOfWords;
        Word const aNext = isLast ? 0 : a[w + 1];
        Word const bothNext = isLast ? 0 : aNext & b[w + 1];
        Word const fromLeft = (a[w] << 1U | aBefore >> 63U) & b[w];
        Word const fromRight = (a[w] >> 1U | aNext << 63U) & b[w];
        Word const both = a[w] & b[w];
        Word const common = above.columns(w) & below.columns(w);
        Word const outsideAbove = ~above.columns(w);

        // Within columns common to both strips the runs stay the same: their first contact is enough.
        Word const contacts = both | ((fromLeft | fromRight) & common);
        Word const linked = flood(common, contacts | (carry & common));
        Word const firstContacts = contacts & ~(linked << 1U | carry);
        // Beside its end, a run above touches at a corner; not where it has touched the same run below already.
        Word const afterEnds = fromLeft & outsideAbove & ~(both << 1U | bothBefore >> 63U);
        forEachBit(firstContacts | afterEnds, [&](unsigned int x) {
            link(above.rank(w, x) - static_cast<unsigned int>(afterEnds >> x & 1U), below.rank(w, x));
        });
        forEachBit(fromRight & outsideAbove & ~(both >> 1U | bothNext << 63U),
                   [&](unsigned int x) { link(above.rank(w, x), below.rank(w, x)); });

        carry = linked >> 63U;
        aBefore = a[w];
        bothBefore = both;
    }
}

} // namespace mox::segmentation
