#include <Moxelcore/Miscellaneous/BorderConditionExtrapole.h>

#include <Moxelcore/Core/AbstractPrivateImplementation.h>

#include <algorithm>
#include <cmath>

#include "Core/private/Helper/saturate.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/access/ContinueBorderCondition.h"
#include "Core/private/access/DirectionalMirrorBorderCondition.h"
#include "Core/private/access/FixedBorderCondition.h"
#include "Core/private/access/MirrorBorderCondition.h"
#include "Core/private/access/RowCaches.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "Miscellaneous/private/RuleEnforceDerivedSize.h"

namespace mox::miscellaneous {

namespace {

/// None when an image cannot be so large.
std::optional<unsigned int> zoomed(unsigned int size, double zoom)
{
    double const product = std::ceil(size * zoom);
    if (!(product > 0)) {
        return 0U;
    }
    if (product > access::mostElements) {
        return std::nullopt;
    }
    return static_cast<unsigned int>(product);
}

std::optional<access::Sizes> zoomed(ImageModel const& input, double zoom)
{
    access::Sizes sizes = access::Sizes::of(input);
    auto const columns = zoomed(sizes.columns, zoom);
    auto const rows = zoomed(sizes.rows, zoom);
    if (!columns || !rows) {
        return std::nullopt;
    }
    sizes.columns = *columns;
    sizes.rows = *rows;
    return sizes;
}

/// The condition must be known before the output is touched.
class RuleKnownBorderCondition final : public Rules<int> {
public:
    void apply(PropertyValue<int>& property) override
    {
        if (!getEnumInfo<BorderConditionType>().exists(property.value)) {
            helper::raise<InvalidCall>("Miscellaneous/src/BorderConditionExtrapole",
                                       "The provided bctype is unknow (value=", property.value, ")");
        }
    }
};

template <class T>
boost::shared_ptr<access::BorderCondition<T>> borderOf(BorderConditionExtrapole const& algorithm)
{
    switch (algorithm.bctype) {
    case BorderConditionType::MIRROR:
        return access::MirrorBorderCondition<T>::create();
    case BorderConditionType::CONTINUE:
        return access::ContinueBorderCondition<T>::create();
    case BorderConditionType::DIRECTIONAL_MIRROR:
        return access::DirectionalMirrorBorderCondition<T>::create(0);
    default:
        return access::FixedBorderCondition<T>::create(helper::saturate<T>(algorithm.value));
    }
}

/// Goes through the output row by row.
template <class T>
class BorderConditionExtrapolePrivate final : public algorithms::AbstractPrivateImplementation {
public:
    explicit BorderConditionExtrapolePrivate(BorderConditionExtrapole& algorithm)
        : AbstractPrivateImplementation(&algorithm, AttachLater())
        , input_(*algorithm.input.get(), borderOf<T>(algorithm))
        , output_(*algorithm.output.get(), access::FixedBorderCondition<T>::create())
        , inputRows_(input_)
        , outputRows_(output_)
        , zoom_(algorithm.zoomFactor)
    {
    }

    ~BorderConditionExtrapolePrivate() override { detach(); }

    bool cancelExecution() override { return AbstractPrivateImplementation::cancelExecution(); }

    void run()
    {
        access::Sizes const sizes = output_.sizes();
        attach();
        setMaxProgress(sizes.numOfVoxels());
        if (sizes.empty()) {
            return;
        }
        access::Position const begin{firstOf(input_.sizes().columns), firstOf(input_.sizes().rows)};
        for (unsigned int s = 0; s < sizes.spectralSeries; ++s) {
            for (unsigned int t = 0; t < sizes.timeSeries; ++t) {
                for (unsigned int plan = 0; plan < sizes.plans; ++plan) {
                    runPlan(sizes, begin, {0, 0, static_cast<int>(plan), static_cast<int>(t), static_cast<int>(s)});
                }
            }
        }
    }

private:
    int firstOf(unsigned int size) const { return static_cast<int>((1 - zoom_) * 0.5 * size); }

    void runPlan(access::Sizes const& sizes, access::Position const& begin, access::Position target)
    {
        access::Position source = target;
        source.x = begin.x;
        for (; target.y < static_cast<int>(sizes.rows) && !isExecutionCancelled(); ++target.y) {
            source.y = begin.y + target.y;
            T const* const in = inputRows_.getRow(0, sizes.columns, source).voxels();
            auto& out = outputRows_.getRow(0, sizes.columns, target);
            std::copy_n(in, sizes.columns, out.voxels());
            outputRows_.flush(out);
            incrementProgress(sizes.columns);
        }
    }

    access::View<T> input_;
    access::View<T> output_;
    access::RowCacheRead<access::View<T>> inputRows_;
    access::RowCacheReadWrite<access::View<T>> outputRows_;
    double zoom_;
};

struct BorderConditionExtrapoleScalarDispatcher {
    template <class T>
    static void run(BorderConditionExtrapole& algorithm)
    {
        BorderConditionExtrapolePrivate<T>(algorithm).run();
    }
};

using ScalarBorderCondExtrapoleRunner =
    ScalarOneTypeRunner<BorderConditionExtrapole, BorderConditionExtrapoleScalarDispatcher, RealVoxels>;
Registration<BorderConditionExtrapole, ScalarBorderCondExtrapoleRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(BorderConditionExtrapole)

void BorderConditionExtrapole::init()
{
    auto const zoomedOut = [this](ImageModel const& image, ImageModel const& target) -> std::optional<access::Sizes> {
        bool const isInPlace = &image == &target;
        return isInPlace && zoomFactor != 1 ? std::nullopt : zoomed(image, zoomFactor);
    };
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(bctype, "bctype", BorderConditionType::FIXED, hasNamesOf<BorderConditionType>(),
                 rule<RuleKnownBorderCondition>());
    declareInput(value, "value", 0.0);
    declareInput(zoomFactor, "zoomFactor", 0.0);
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(), rule<RuleEnforceDerivedSize>(input, zoomedOut));
}

AlgoBorderInfluence BorderConditionExtrapole::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::miscellaneous
