#pragma once

#include <numeric>
#include <type_traits>
#include <vector>

#include "Segmentation/private/LabelBand.h"

namespace mox::segmentation {

/// Joins the components of bands across their seams, and numbers what results from 1 in the order of first voxels.
class LabelNumbering {
public:
    using Bands = std::vector<LabelBand>;

    /// The bands of an image, from top to bottom.
    explicit LabelNumbering(Bands const& bands);

    uint64 numOfLabels() const { return numOfLabels_; }

    /// The labels of a band's components, in their order.
    template <class Out>
    void labelsOf(std::size_t band, std::vector<Out>& labels) const
    {
        auto const& rim = bands_[band].rim();
        labels.resize(bands_[band].numOfComponents());
        Out* const out = labels.data();
        auto next = static_cast<std::make_unsigned_t<Out>>(firstLabels_[band]);
        std::size_t begin = 0;
        auto const numberUpTo = [&](std::size_t end) {
            std::iota(out + begin, out + end, next);
            next = static_cast<decltype(next)>(next + (end - begin));
            begin = end;
        };
        for (std::size_t i = 0; i < rim.size(); ++i) {
            numberUpTo(rim[i]);
            std::size_t const node = firstNodes_[band] + i;
            out[begin++] = static_cast<Out>(nodeLabels_[node]);
            next = static_cast<decltype(next)>(next + (isRoot(node) ? 1 : 0));
        }
        numberUpTo(labels.size());
    }

private:
    bool isRoot(std::size_t node) const { return parents_[node] == node; }
    void linkSeam(std::size_t lower);
    void number();

    Bands const& bands_;
    /// The rims of all bands are the nodes of one forest; only those components can touch another band.
    std::vector<std::size_t> firstNodes_;
    std::vector<uint64> parents_;
    std::vector<uint64> nodeLabels_;
    std::vector<uint64> firstLabels_;
    uint64 numOfLabels_ = 0;
    RowStrip strip_;
    RowStrip stripAbove_;
};

} // namespace mox::segmentation
