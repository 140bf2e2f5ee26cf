#include <Moxelcore/Classification/TextureTraining2D.h>

#include <algorithm>

#include "Classification/private/modelInUse.h"
#include "Core/private/Rules/RuleAssertInterpretation.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertSameSize.h"
#include "Core/private/access/RowCaches.h"
#include "Core/private/declare.h"
#include "Core/private/filters/Filter.h"
#include "Core/private/filters/fixedView.h"
#include "Core/private/runners.h"
#include "Segmentation/private/TextureSweep.h"

namespace mox::classification {

namespace {

constexpr char const* source = "Classification/private/TextureTraining2DPrivate";

using access::Position;
using access::Sizes;

/// Rows of a mask as labels.
class LabelReader {
public:
    virtual ~LabelReader() = default;
    /// False when a label is not one of 0 to the number of classes.
    virtual bool read(Position const& first, unsigned int count, unsigned int numOfClasses, unsigned int* labels) = 0;
};

template <class T>
class TypedLabelReader final : public LabelReader {
public:
    explicit TypedLabelReader(ImageModel const& mask)
        : view_(fixedView<T, SimdVec::arch_scalar_tag>(mask))
        , cache_(*view_)
    {
    }

    bool read(Position const& first, unsigned int count, unsigned int numOfClasses, unsigned int* labels) override
    {
        T const* const voxels = cache_.getRow(0, count, first).voxels();
        bool areValid = true;
        for (unsigned int x = 0; x < count; ++x) {
            areValid &= voxels[x] >= T() && static_cast<uint64>(voxels[x]) <= numOfClasses;
            labels[x] = static_cast<unsigned int>(voxels[x]);
        }
        return areValid;
    }

private:
    boost::shared_ptr<access::View<T>> view_;
    access::RowCacheRead<access::View<T>> cache_;
};

/// The run of a training, in the thread that calls it.
class Training final : public filters::Filter {
public:
    Training(TextureTraining2D& algorithm, LabelReader& labels)
        : Filter(&algorithm)
        , model_(ModelAccess::get(*algorithm.classificationModel.get()))
        , classifier_(classifierOf(model_, source))
        , plan_(model_, segmentation::allFeatures(model_, source), source)
        , image_(*algorithm.input.get())
        , sizes_(Sizes::of(image_))
        , finalizes_(algorithm.finalizeTraining)
        , reader_(labels)
        , labels_(sizes_.columns)
        , sample_(static_cast<Eigen::Index>(plan_.features.size()))
    {
    }
    ~Training() override { detach(); }

    void run()
    {
        announce(sizes_.numOfVoxels());
        forEachRow([this](Position const& first) { requireLabels(first); });
        if (!sizes_.empty()) {
            segmentation::TextureSweep sweep(plan_, image_);
            forEachRow([&](Position const& first) { trainRow(sweep, first); });
        }
        if (finalizes_ && !isStopped()) {
            classifier_.finalize();
        }
    }

private:
    template <class Work>
    void forEachRow(Work&& work)
    {
        auto const end = [](unsigned int size) { return static_cast<int>(size); };
        Position p;
        for (p.s = 0; p.s < end(sizes_.spectralSeries); ++p.s) {
            for (p.t = 0; p.t < end(sizes_.timeSeries); ++p.t) {
                for (p.z = 0; p.z < end(sizes_.plans); ++p.z) {
                    for (p.y = 0; p.y < end(sizes_.rows) && !isStopped(); ++p.y) {
                        work(p);
                    }
                }
            }
        }
    }

    void requireLabels(Position const& first)
    {
        if (!reader_.read(first, sizes_.columns, model_.numOfClasses, labels_.data())) {
            helper::raise<BadIndex>(source, "index must be less than ", model_.numOfClasses);
        }
    }

    void trainRow(segmentation::TextureSweep& sweep, Position const& first)
    {
        if (first.y == 0) {
            sweep.begin(planeOf(first));
        }
        requireLabels(first);
        incrementProgress(sizes_.columns);
        auto const isLabelled = [](unsigned int label) { return label != 0; };
        auto const begin = std::find_if(labels_.begin(), labels_.end(), isLabelled);
        if (begin == labels_.end()) {
            return;
        }
        auto const end = std::find_if(labels_.rbegin(), labels_.rend(), isLabelled).base();
        sweep.compute(first.y, static_cast<std::size_t>(begin - labels_.begin()),
                      static_cast<std::size_t>(end - begin));
        for (auto label = begin; label != end; ++label) {
            if (*label != 0) {
                learn(sweep.rows(), static_cast<std::size_t>(label - begin), static_cast<int>(*label - 1));
            }
        }
    }

    void learn(std::vector<double const*> const& rows, std::size_t x, int classIndex)
    {
        for (std::size_t f = 0; f < rows.size(); ++f) {
            sample_[static_cast<Eigen::Index>(f)] = rows[f][x];
        }
        classifier_.update(sample_, classIndex);
    }

    access::Region planeOf(Position const& p) const
    {
        auto const one = [](int index) {
            return access::Region::Range{static_cast<unsigned int>(index), static_cast<unsigned int>(index) + 1};
        };
        return {{0, sizes_.rows}, {0, sizes_.columns}, one(p.z), one(p.t), one(p.s)};
    }

    TextureClassificationModelPrivate& model_;
    LDAClassifier& classifier_;
    segmentation::TexturePlan plan_;
    ImageModel const& image_;
    Sizes sizes_;
    bool finalizes_;
    LabelReader& reader_;
    std::vector<unsigned int> labels_;
    LDAClassifier::Sample sample_;
};

class ScalarTextureTraining2DRunner final : public ScalarRunner<TextureTraining2D> {
private:
    void execute(TextureTraining2D& algorithm) const override
    {
        if (!dispatch(RealVoxels(), algorithm.input.get()->getVoxelType(), []<class T>() {})) {
            return;
        }
        ImageModel const& mask = *algorithm.mask.get();
        dispatch(IntegerVoxels(), mask.getVoxelType(), [&]<class T>() {
            TypedLabelReader<T> labels(mask);
            Training(algorithm, labels).run();
        });
    }
};

Registration<TextureTraining2D, ScalarTextureTraining2DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(TextureTraining2D)

void TextureTraining2D::init()
{
    std::vector<ImageInterpretation> const labels = {INTERPRETATION_BINARY, INTERPRETATION_LABEL};
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>());
    declareInput(mask, "mask", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertInterpretation>(labels),
                 rule<RuleAssertSameSize>(input));
    declareInput(finalizeTraining, "finalizeTraining", true);
    declareOutput(classificationModel, "classificationModel", nullptr, rule<RuleAssertNotNull>());
}

AlgoBorderInfluence TextureTraining2D::getAlgoBorderInfluence() const
{
    return borderInfluenceOf(classificationModel);
}

} // namespace mox::classification
