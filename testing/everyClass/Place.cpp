#include "testing/everyClass/Place.h"

#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Geometry/TransformationHandler.h>
#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

#include <random>
#include <stdexcept>

#include "testing/everyClass/bytes.h"
#include "testing/everyClass/imagePlaces.h"
#include "testing/everyClass/modelPlaces.h"
#include "testing/everyClass/visitValue.h"

namespace mox::testing {

namespace {

/// Two lists of landmarks of a seed differ by a shift, some noise and two wrong pairs.
template <class Point>
class Landmarks final : public Place {
public:
    Landmarks(Property<Vector<Point> const*>& property, bool isFirst, TaskForm const& form)
    {
        std::mt19937 random(form.seed);
        for (unsigned int i = 0; i < numOfPoints; ++i) {
            Point point;
            for (unsigned int d = 0; d < point.dim(); ++d) {
                double const noise = static_cast<double>(random() % 100) * 0.001;
                bool const isWrong = i % 8 == 3;
                point[d] = static_cast<double>(random() % 1000) + (isFirst ? 0.0 : noise + (isWrong ? 90.0 : 7.0));
            }
            points_.push_back(point);
        }
        property = &points_;
    }

private:
    static constexpr unsigned int numOfPoints = 32;
    Vector<Point> points_;
};

class NumberResult final : public Place {
public:
    explicit NumberResult(Property<double>& property)
        : property_(property)
    {
    }

    void soil(unsigned char pattern) override { property_ = -1e9 - pattern; }
    void appendTo(Bytes& bytes) const override { appendValue(bytes, property_.get()); }

private:
    Property<double>& property_;
};

template <class T>
class TransformationResult final : public Place {
public:
    explicit TransformationResult(Property<geometry::TransformationHandler<T>*>& property) { property = &handler_; }

    void soil(unsigned char) override { handler_.reset(); }

    void appendTo(Bytes& bytes) const override
    {
        if (handler_.get() == nullptr) {
            return;
        }
        appendValue(bytes, handler_.get()->getNumOfParameter());
        for (unsigned int i = 0; i < handler_.get()->getNumOfParameter(); ++i) {
            appendValue(bytes, handler_.get()->getParam(i));
        }
    }

private:
    geometry::TransformationHandler<T> handler_;
};

std::unique_ptr<Place> placeOfInput(BaseProperty& property, Entry const& entry, TaskForm const& form)
{
    std::string const name = property.getName().c_str();
    std::unique_ptr<Place> place;
    visitAs<ImageModel const*>(property, [&](auto& typed) { place = placeOf(typed, entry.imageOf(name), form); });
    visitLandmarks(property, [&]<class Point>(Property<Vector<Point> const*>& typed) {
        place = std::make_unique<Landmarks<Point>>(typed, name == "data", form);
    });
    visitAs<classification::TextureClassificationModel const*>(property, [&](auto& typed) { place = placeOf(typed); });
    return place;
}

std::unique_ptr<Place> placeOfOutput(BaseProperty& property, Entry const& entry)
{
    using classification::TextureClassificationModel;
    using geometry::TransformationHandler;
    std::unique_ptr<Place> place;
    visitAs<ImageModel*>(property,
                         [&](auto& typed) { place = placeOf(typed, entry.imageOf(property.getName().c_str())); });
    visitAs<TextureClassificationModel*, TextureClassificationModel**>(property,
                                                                       [&](auto& typed) { place = placeOf(typed); });
    visitAs<double>(property, [&](auto& typed) { place = std::make_unique<NumberResult>(typed); });
    visitAs<geometry::Transformation2DHandler*, geometry::Transformation3DHandler*>(
        property, [&]<class T>(Property<TransformationHandler<T>*>& typed) {
            place = std::make_unique<TransformationResult<T>>(typed);
        });
    return place;
}

bool holdsItsValue(BaseProperty& property)
{
    return visitValue(property, [](auto const&) {}) ||
           visitAs<morphology::MorphologicalLut2D*, morphology::MorphologicalLut3D*>(property, [](auto const&) {});
}

} // namespace

std::unique_ptr<Place> makePlace(BaseProperty& property, bool isOutput, Entry const& entry, TaskForm const& form)
{
    auto place = isOutput ? placeOfOutput(property, entry) : placeOfInput(property, entry, form);
    if (place == nullptr && (isOutput || !holdsItsValue(property))) {
        throw std::logic_error(entry.className + " has a property of unknown type: " + property.getName().c_str());
    }
    return place;
}

} // namespace mox::testing
