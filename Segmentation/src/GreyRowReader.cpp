#include "Segmentation/private/GreyRowReader.h"

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "Core/private/access/MirrorBorderCondition.h"
#include "Core/private/access/RowCaches.h"

namespace mox::segmentation {

namespace {

using access::Position;

/// A classification of voxels; of voxels of one byte by a table.
template <class T, class Classes, class Class>
class Classifier {
public:
    explicit Classifier(Classes const& classes)
        : classes_(classes)
    {
    }

    void row(T const* in, std::size_t count, Class* out)
    {
        if constexpr (sizeof(T) == 1) {
            fillTable();
        }
        for (std::size_t x = 0; x < count; ++x) {
            if constexpr (sizeof(T) == 1) {
                out[x] = table_[static_cast<std::size_t>(in[x] - std::numeric_limits<T>::min())];
            } else {
                out[x] = classes_(static_cast<double>(in[x]));
            }
        }
    }

private:
    /// Not before the first row: the parameters of classes that nothing is read in may make none.
    void fillTable()
    {
        using Limits = std::numeric_limits<T>;
        for (int v = Limits::min() + static_cast<int>(table_.size()); v <= Limits::max(); ++v) {
            table_.push_back(classes_(v));
        }
    }

    Classes classes_;
    std::vector<Class> table_;
};

template <class T>
class Reader final : public GreyRowReader {
public:
    Reader(ImageModel const& image, GreyLevels const& levels, HistogramBins const& bins)
        : view_(image, access::MirrorBorderCondition<T>::create())
        , cache_(view_)
        , levels_(levels)
        , bins_(bins)
    {
    }

    void readLevels(Position const& first, std::size_t count, std::uint16_t* levels) override
    {
        read(first, count, levels_, levels);
    }

    void readBins(Position const& first, std::size_t count, std::uint32_t* bins) override
    {
        read(first, count, bins_, bins);
    }

private:
    /// What lies between the sides of the image is read in place; only the rim goes through the border condition.
    template <class Class, class RowClassifier>
    void read(Position const& first, std::size_t count, RowClassifier& classifier, Class* out)
    {
        int64 const begin = first.x;
        int64 const end = begin + static_cast<int64>(count);
        int64 const left = std::clamp<int64>(0, begin, end);
        int64 const right = std::clamp<int64>(view_.sizes().columns, begin, end);
        for (auto const& [from, to] : {std::pair(begin, left), {left, right}, {right, end}}) {
            if (from < to) {
                Position position = first;
                position.x = static_cast<int>(from);
                auto const length = static_cast<unsigned int>(to - from);
                classifier.row(cache_.getRow(0, length, position).voxels(), length, out + (from - begin));
            }
        }
    }

    access::View<T> view_;
    access::RowCacheRead<access::View<T>> cache_;
    Classifier<T, GreyLevels, std::uint16_t> levels_;
    Classifier<T, HistogramBins, std::uint32_t> bins_;
};

} // namespace

std::unique_ptr<GreyRowReader> makeGreyRowReader(ImageModel const& image, GreyLevels const& levels,
                                                 HistogramBins const& bins)
{
    std::unique_ptr<GreyRowReader> reader;
    dispatch(RealVoxels(), image.getVoxelType(),
             [&]<class T>() { reader = std::make_unique<Reader<T>>(image, levels, bins); });
    return reader;
}

} // namespace mox::segmentation
