#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Core/private/access/Position.h"
#include "Core/private/access/Region.h"
#include "Core/private/filters/Filter.h"
#include "Segmentation/private/TexturePlan.h"

namespace mox::segmentation {

/// What becomes of the features of a row. One object per thread.
class FeatureRowSink {
public:
    virtual ~FeatureRowSink() = default;
    virtual void write(access::Position const& first, std::size_t count, std::vector<double const*> const& rows) = 0;
};

/// Sweeps texture features over the planes of a region of an image, the rows of a plane in parallel. The time index is
/// the outermost, then the spectral index.
class TextureFilter final : public filters::Filter {
public:
    using MakeSink = std::function<std::unique_ptr<FeatureRowSink>()>;

    /// All must outlive the filter.
    TextureFilter(BaseAlgorithm* owner, TexturePlan const& plan, ImageModel const& image);
    ~TextureFilter() override;

    void run(access::Region const& region, MakeSink const& makeSink);

private:
    TexturePlan const& plan_;
    ImageModel const& image_;
};

/// Gives an image these sizes unless it has them. Throws `RuleException` when it does not take them.
void resizeOutput(ImageModel& image, access::Sizes const& sizes, char const* source);

} // namespace mox::segmentation
