#include <Moxelcore/Segmentation/TextureFeatureExtraction2D.h>

#include <set>

#include "Core/private/Helper/raise.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/access/RowCaches.h"
#include "Core/private/filters/StableInput.h"
#include "Core/private/filters/fixedView.h"
#include "Core/private/runners.h"
#include "Segmentation/private/TextureFilter.h"
#include "Segmentation/private/declareTextureRecipe.h"

namespace mox::segmentation {

namespace {

constexpr char const* source = "Segmentation/private/TextureFeatureExtraction2DPrivate";

using FloatVoxels = TypeVector<float, double>;
using access::Position;
using access::Sizes;

/// Which group of planes of the output the features of a time and spectral index go to.
std::size_t groupOf(std::size_t timeSeries, std::size_t spectralSeries)
{
    return spectralSeries * (timeSeries + 1);
}

template <class Out>
class PlaneSink final : public FeatureRowSink {
public:
    explicit PlaneSink(access::View<Out> const& view)
        : cache_(view)
    {
    }

    void write(Position const& first, std::size_t count, std::vector<double const*> const& rows) override
    {
        std::size_t const base =
            groupOf(static_cast<std::size_t>(first.t), static_cast<std::size_t>(first.s)) * rows.size();
        for (std::size_t f = 0; f < rows.size(); ++f) {
            Position const position{first.x, first.y, first.z, static_cast<int>(base + f), 0};
            auto& row = cache_.getRow(0, static_cast<unsigned int>(count), position);
            Out* const out = row.voxels();
            for (std::size_t x = 0; x < count; ++x) {
                out[x] = static_cast<Out>(rows[f][x]);
            }
            cache_.flush(row);
        }
    }

private:
    access::RowCacheReadWrite<access::View<Out>> cache_;
};

template <class Out>
void clearUnwrittenPlanes(access::View<Out> const& view, Sizes const& input, std::size_t numOfFeatures)
{
    std::set<std::size_t> written;
    for (std::size_t t = 0; t < input.timeSeries; ++t) {
        for (std::size_t s = 0; s < input.spectralSeries; ++s) {
            written.insert(groupOf(t, s));
        }
    }
    access::RowCacheReadWrite<access::View<Out>> cache(view);
    for (unsigned int plane = 0; plane < view.sizes().timeSeries; ++plane) {
        if (written.contains(plane / numOfFeatures)) {
            continue;
        }
        for (unsigned int z = 0; z < input.plans; ++z) {
            for (unsigned int y = 0; y < input.rows; ++y) {
                Position const position{0, static_cast<int>(y), static_cast<int>(z), static_cast<int>(plane), 0};
                auto& row = cache.getRow(0, input.columns, position);
                std::fill_n(row.voxels(), input.columns, Out());
                cache.flush(row);
            }
        }
    }
}

Sizes outputSizes(Sizes const& input, std::size_t numOfFeatures)
{
    uint64 const series = uint64{input.timeSeries} * input.spectralSeries;
    if (series > access::mostElements / numOfFeatures) {
        helper::raise<InvalidCall>(source, "There are too many features for the time series of an image.");
    }
    return {input.columns, input.rows, input.plans, static_cast<unsigned int>(numOfFeatures * series), 1};
}

template <class Out>
void extract(TextureFeatureExtraction2D& algorithm)
{
    TextureRecipe const recipe = recipeOf(algorithm);
    TexturePlan const plan(recipe, allFeatures(recipe, source), source);
    ImageModel& output = *algorithm.output.get();
    filters::StableInput const input(*algorithm.input.get(), output);
    Sizes const sizes = Sizes::of(input.image());
    resizeOutput(output, outputSizes(sizes, plan.features.size()), source);
    auto const view = fixedView<Out, SimdVec::arch_scalar_tag>(output);
    clearUnwrittenPlanes(*view, sizes, plan.features.size());
    TextureFilter(&algorithm, plan, input.image()).run(sizes, [&] { return std::make_unique<PlaneSink<Out>>(*view); });
}

class ScalarTextureFeatureExtraction2DRunner final : public ScalarRunner<TextureFeatureExtraction2D> {
private:
    void execute(TextureFeatureExtraction2D& algorithm) const override
    {
        auto const extractInto = [&]<class Out>() { extract<Out>(algorithm); };
        if (isOneOf(RealVoxels(), algorithm.input.get()->getVoxelType())) {
            dispatch(FloatVoxels(), algorithm.output.get()->getVoxelType(), extractInto);
        }
    }

    template <class Types>
    static bool isOneOf(Types types, VoxelTypes type)
    {
        return dispatch(types, type, []<class T>() {});
    }
};

Registration<TextureFeatureExtraction2D, ScalarTextureFeatureExtraction2DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(TextureFeatureExtraction2D)

void TextureFeatureExtraction2D::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>());
    declareTextureRecipe(*this, [this](auto& property, auto const&... rest) { declareInput(property, rest...); });
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(FloatVoxels()));
}

AlgoBorderInfluence TextureFeatureExtraction2D::getAlgoBorderInfluence() const
{
    return {radius, radius, 0, 0, 0};
}

} // namespace mox::segmentation
