#include "Segmentation/private/TextureFilter.h"

#include <Moxelcore/Core/Exception.h>

#include "Core/private/Helper/raise.h"
#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/ThreadStore.h"
#include "Segmentation/private/TextureSweep.h"

namespace mox::segmentation {

namespace {

/// What one thread works with.
struct Worker final : filters::ThreadStore::Item {
    Worker(TexturePlan const& plan, ImageModel const& image, std::unique_ptr<FeatureRowSink> rowSink)
        : sweep(plan, image)
        , sink(std::move(rowSink))
    {
    }

    TextureSweep sweep;
    std::unique_ptr<FeatureRowSink> sink;
};

class LeafSweep final : public filters::LeafWork {
public:
    LeafSweep(filters::Filter const& run, std::function<std::unique_ptr<Worker>()> makeWorker)
        : run_(run)
        , makeWorker_(std::move(makeWorker))
    {
    }

    void operator()(access::Block const& leaf) override
    {
        filters::Borrowed<Worker> const worker(store_, makeWorker_);
        worker->sweep.begin(leaf);
        access::Position first = access::detail::within(leaf, 0, 0, 0, 0, 0);
        auto const rows = static_cast<int>(leaf.getNumOfRows());
        for (int y = 0; y < rows && !run_.isStopped(); ++y, ++first.y) {
            worker->sweep.compute(y, 0, leaf.getNumOfColumns());
            worker->sink->write(first, leaf.getNumOfColumns(), worker->sweep.rows());
        }
    }

private:
    filters::Filter const& run_;
    std::function<std::unique_ptr<Worker>()> makeWorker_;
    filters::ThreadStore store_;
};

} // namespace

TextureFilter::TextureFilter(BaseAlgorithm* owner, TexturePlan const& plan, ImageModel const& image)
    : Filter(owner)
    , plan_(plan)
    , image_(image)
{
}

TextureFilter::~TextureFilter()
{
    detach();
}

void TextureFilter::run(access::Region const& region, MakeSink const& makeSink)
{
    announce(region.numOfVoxels());
    LeafSweep work(*this, [&] { return std::make_unique<Worker>(plan_, image_, makeSink()); });
    forEachSlice(Filter2dTag(), region,
                 [&](filters::Slice const& slice) { forEachLeaf(Filter2dTag(), region, slice, work); });
}

void resizeOutput(ImageModel& image, access::Sizes const& sizes, char const* source)
{
    if (access::Sizes::of(image) == sizes) {
        return;
    }
    access::allocate(image, image.getVoxelType(), sizes);
    if (access::Sizes::of(image) != sizes) {
        helper::raise<RuleException>(source, "Output image cannot be resized");
    }
}

} // namespace mox::segmentation
