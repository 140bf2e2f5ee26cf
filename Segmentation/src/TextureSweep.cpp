#include "Segmentation/private/TextureSweep.h"

#include <algorithm>
#include <cmath>

#include "Core/private/access/RowCaches.h"

namespace mox::segmentation {

using Across = TextureFeature::Across;

TextureSweep::TextureSweep(TexturePlan const& plan, ImageModel const& image)
    : plan_(plan)
    , reader_(makeGreyRowReader(image, plan.levels, plan.bins))
    , across_(plan.features.size())
    , rows_(plan.features.size())
{
    for (DirectionPlan const& direction : plan.directions) {
        directions_.push_back(direction.isWanted() ? makeCooccurrenceSweep(plan, direction) : nullptr);
    }
    if (plan.usesHistogram()) {
        histogram_ = makeHistogramSweep(plan);
    }
}

void TextureSweep::begin(access::Block const& block)
{
    origin_ = access::detail::within(block, -plan_.radius, 0, 0, 0, 0);
    width_ = std::size_t{block.getNumOfColumns()} + 2 * static_cast<std::size_t>(plan_.radius);
    int const rows = 2 * plan_.radius + 1;
    levels_.reset(rows, plan_.usesCooccurrence() ? width_ : 0);
    bins_.reset(rows, histogram_ ? width_ : 0);
    for (auto const& direction : directions_) {
        if (direction) {
            direction->begin(width_);
        }
    }
    if (histogram_) {
        histogram_->begin(width_);
    }
}

template <class Class, class Read>
void TextureSweep::readRows(RowRing<Class>& ring, int y, Read&& read)
{
    for (int row = y - plan_.radius; row <= y + plan_.radius; ++row) {
        if (!ring.holds(row)) {
            access::Position position = origin_;
            position.y += row;
            read(position, ring.claim(row));
        }
    }
}

void TextureSweep::compute(int y, std::size_t first, std::size_t count)
{
    if (plan_.usesCooccurrence()) {
        readRows(levels_, y, [&](auto const& position, auto* out) { reader_->readLevels(position, width_, out); });
    }
    if (histogram_) {
        readRows(bins_, y, [&](auto const& position, auto* out) { reader_->readBins(position, width_, out); });
        histogram_->compute(bins_, y, first, count);
    }
    for (auto const& direction : directions_) {
        if (direction) {
            direction->compute(levels_, y, first, count);
        }
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        TextureFeature const& feature = plan_.features[i];
        if (!feature.isCooccurrence()) {
            rows_[i] = histogram_->row(feature.type);
        } else if (feature.across() == Across::oneDirection) {
            rows_[i] = directions_[feature.direction]->row(feature.measure());
        } else {
            across_[i].resize(count);
            computeAcross(feature, count, across_[i].data());
            rows_[i] = across_[i].data();
        }
    }
}

void TextureSweep::computeAcross(TextureFeature const& feature, std::size_t count, double* out)
{
    std::vector<double const*>& values = acrossValues_;
    values.clear();
    for (auto const& direction : directions_) {
        values.push_back(direction->row(feature.measure()));
    }
    auto const n = static_cast<double>(values.size());
    auto const fill = [&](auto&& combine) {
        for (std::size_t x = 0; x < count; ++x) {
            out[x] = combine(x);
        }
    };
    auto const sum = [&](std::size_t x) {
        double total = 0;
        for (double const* value : values) {
            total += value[x];
        }
        return total;
    };
    switch (feature.across()) {
    case Across::mean:
        std::fill(out, out + count, 0.0);
        for (double const* value : values) {
            for (std::size_t x = 0; x < count; ++x) {
                out[x] += value[x];
            }
        }
        return fill([&](std::size_t x) { return out[x] / n; });
    case Across::stddev:
        return fill([&](std::size_t x) {
            double squares = 0;
            for (double const* value : values) {
                squares += value[x] * value[x];
            }
            double const rest = squares - sum(x) * sum(x) / n;
            return rest >= 0 ? std::sqrt(rest / n) : 0.0;
        });
    default:
        return fill([&](std::size_t x) {
            double least = values[0][x];
            double most = values[0][x];
            for (double const* value : values) {
                least = std::min(least, value[x]);
                most = std::max(most, value[x]);
            }
            return most - least;
        });
    }
}

} // namespace mox::segmentation
