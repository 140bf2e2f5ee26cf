#include "Segmentation/private/LabelNumbering.h"

#include <numeric>

#include "Segmentation/private/unite.h"

namespace mox::segmentation {

LabelNumbering::LabelNumbering(Bands const& bands)
    : bands_(bands)
{
    std::size_t numOfNodes = 0;
    for (auto const& band : bands) {
        firstNodes_.push_back(numOfNodes);
        numOfNodes += band.rim().size();
        numOfLabels_ += band.numOfComponents();
    }
    parents_.resize(numOfNodes);
    std::iota(parents_.begin(), parents_.end(), uint64{0});
    for (std::size_t lower = 1; lower < bands.size(); ++lower) {
        linkSeam(lower);
    }
    number();
}

/// Each pair of trees that is joined leaves one label less.
void LabelNumbering::linkSeam(std::size_t lower)
{
    LabelBand const& above = bands_[lower - 1];
    LabelBand const& below = bands_[lower];
    above.buildStrip(above.lastStrip(), stripAbove_);
    below.buildStrip(0, strip_);
    std::size_t const firstAbove = firstNodes_[lower - 1];
    std::size_t const firstBelow = firstNodes_[lower];
    forEachContact(above.row(above.numOfRows() - 1), stripAbove_, below.row(0), strip_, above.numOfWords(),
                   [&](LabelBand::Number a, LabelBand::Number b) {
                       uint64 const upperNode = firstAbove + above.lastRuns()[a];
                       uint64 const lowerNode = firstBelow + below.runs()[b]; // in the first row, and so in the rim
                       numOfLabels_ -= unite(parents_.data(), upperNode, lowerNode) ? 1 : 0;
                   });
}

void LabelNumbering::number()
{
    nodeLabels_.resize(parents_.size());
    uint64 next = 1;
    for (std::size_t band = 0; band < bands_.size(); ++band) {
        firstLabels_.push_back(next);
        uint64 numOfLinked = 0; // components of the band so far that belong to an earlier one
        auto const& rim = bands_[band].rim();
        for (std::size_t i = 0; i < rim.size(); ++i) {
            std::size_t const node = firstNodes_[band] + i;
            // The parent of a linked node comes before it.
            nodeLabels_[node] = isRoot(node) ? next + rim[i] - numOfLinked : nodeLabels_[parents_[node]];
            numOfLinked += isRoot(node) ? 0 : 1;
        }
        next += bands_[band].numOfComponents() - numOfLinked;
    }
}

} // namespace mox::segmentation
