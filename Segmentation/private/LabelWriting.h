#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/LeafWork.h"
#include "Core/private/filters/ThreadStore.h"
#include "Segmentation/private/LabelNumbering.h"
#include "Segmentation/private/LabelRowWriter.h"

namespace mox::segmentation {

/// Writes the labels of each leaf, which is a band.
template <class Out>
class LabelWriting final : public filters::LeafWork {
public:
    LabelWriting(LabelNumbering const& numbering, LabelNumbering::Bands const& bands, access::View<Out> const& output)
        : numbering_(numbering)
        , bands_(bands)
        , output_(output)
        , stores_(output.sizes().numOfVoxels() * sizeof(Out) > cacheBytes ? Stores::streaming : Stores::ordinary)
    {
    }

    void operator()(access::Block const& leaf) override
    {
        filters::Borrowed<Scratch> const scratch(store_, [this] { return std::make_unique<Scratch>(output_); });
        auto const isAbove = [](auto const& band, unsigned int row) { return band.beginRow() < row; };
        auto const band = std::lower_bound(bands_.begin(), bands_.end(), leaf.getBeginRow(), isAbove);
        numbering_.labelsOf(static_cast<std::size_t>(band - bands_.begin()), scratch->labels);
        writeBand(*band, leaf, *scratch);
        _mm_sfence(); // streamed voxels are to be seen by whoever waits for this leaf
    }

private:
    struct Scratch final : filters::ThreadStore::Item {
        explicit Scratch(access::View<Out> const& view)
            : rows(view)
        {
        }

        access::RowCacheReadWrite<access::View<Out>> rows;
        std::vector<Out> labels;
        LabelRowWriter<Out> writer;
    };

    static constexpr uint64 cacheBytes = uint64{8} << 20U;

    void writeBand(LabelBand const& band, access::Block const& leaf, Scratch& scratch) const
    {
        unsigned int const columns = leaf.getNumOfColumns();
        auto const* runs = band.runs();
        for (unsigned int y = 0; y < band.numOfRows(); y += 2) {
            auto const rowAt = [&](unsigned int row) {
                return &scratch.rows.getRow(row % 2, columns, leaf, 0, static_cast<int>(row), 0, 0, 0);
            };
            auto* const upper = rowAt(y);
            auto* const lower = y + 1 < band.numOfRows() ? rowAt(y + 1) : nullptr;
            runs += scratch.writer.write(band.numOfWords(), columns,
                                         {band.row(y), lower != nullptr ? band.row(y + 1) : nullptr},
                                         {upper->voxels(), lower != nullptr ? lower->voxels() : nullptr}, stores_,
                                         [&](unsigned int run) { return scratch.labels[runs[run]]; });
            scratch.rows.flush(*upper);
            if (lower != nullptr) {
                scratch.rows.flush(*lower);
            }
        }
    }

    LabelNumbering const& numbering_;
    LabelNumbering::Bands const& bands_;
    access::View<Out> const& output_;
    Stores stores_;
    filters::ThreadStore store_;
};

} // namespace mox::segmentation
