#include "apps/moxel/PropertyKind.h"

#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Math/MathProperty.h>
#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

#include <algorithm>
#include <cctype>
#include <type_traits>
#include <vector>

#include "apps/moxel/Enumerators.h"
#include "apps/moxel/ImageBinding.h"
#include "apps/moxel/ModelBinding.h"
#include "apps/moxel/PointsFile.h"
#include "apps/moxel/TransformationBinding.h"
#include "apps/moxel/ValueForm.h"

namespace moxel {

namespace {

using mox::BaseProperty;

template <class P>
bool isA(BaseProperty const& property)
{
    return dynamic_cast<P const*>(&property) != nullptr;
}

template <class P>
P& as(BaseProperty& property)
{
    return dynamic_cast<P&>(property);
}

template <class P>
P const& as(BaseProperty const& property)
{
    return dynamic_cast<P const&>(property);
}

template <class T>
PropertyKind value()
{
    using Form = ValueForm<T>;
    using P = mox::Property<T>;
    PropertyKind kind = {.isKindOf = isA<P>, .typeName = [](BaseProperty const&) { return Form::name(); }};
    kind.text = [](BaseProperty const& property) { return Form::text(as<P>(property).get()); };
    kind.json = [](BaseProperty const& property) { return Form::json(as<P>(property).get()); };
    if constexpr (requires(std::string const& text) { Form::parse(text); }) {
        kind.bind = [](BaseProperty& property, std::string const& text, BindingOptions const&) {
            as<P>(property).set(Form::parse(text));
            return PropertyKind::Binding();
        };
    }
    return kind;
}

/// A value that lives outside the property, perhaps in a file.
template <class T>
struct HeldValue final : PropertyBinding {
    T value;
    std::string path;

    void load() override
    {
        if (!path.empty()) {
            value = readPoints<std::remove_cvref_t<decltype(value[0])>>(path);
        }
    }
};

/// `Pointer` leads to a list of points, const or not.
template <class Pointer>
PropertyKind pointer()
{
    using T = std::remove_cv_t<std::remove_pointer_t<Pointer>>;
    using Form = ValueForm<T>;
    using P = mox::Property<Pointer>;
    PropertyKind kind = {.isKindOf = isA<P>, .typeName = [](BaseProperty const&) { return Form::name(); }};
    kind.bind = [](BaseProperty& property, std::string const& text, BindingOptions const&) -> PropertyKind::Binding {
        auto held = std::make_unique<HeldValue<T>>();
        if (namesPointsFile(text)) {
            held->path = text;
        } else {
            held->value = Form::parse(text);
        }
        as<P>(property).set(&held->value);
        return held;
    };
    kind.prepareResult = [](BaseProperty& property) -> PropertyKind::Binding {
        auto held = std::make_unique<HeldValue<T>>();
        as<P>(property).set(&held->value);
        return held;
    };
    kind.text = [](BaseProperty const& property) {
        auto const* const held = as<P>(property).get();
        return held != nullptr ? Form::text(*held) : "none";
    };
    kind.json = [](BaseProperty const& property) {
        auto const* const held = as<P>(property).get();
        return held != nullptr ? Form::json(*held) : Json();
    };
    return kind;
}

PropertyKind enumeration()
{
    using P = mox::PropertyEnumeration;
    PropertyKind kind = {.isKindOf = isA<P>, .typeName = [](BaseProperty const& property) {
                             return std::string(as<P>(property).getEnumInfo().getEnumName().c_str());
                         }};
    kind.enumerators = [](BaseProperty const& property) { return &as<P>(property).getEnumInfo(); };
    kind.bind = [](BaseProperty& property, std::string const& text, BindingOptions const&) {
        P& enumerated = as<P>(property);
        enumerated.set(parseEnumerator(enumerated.getEnumInfo(), text));
        return PropertyKind::Binding();
    };
    kind.text = [](BaseProperty const& property) {
        P const& enumerated = as<P>(property);
        return enumeratorText(enumerated.getEnumInfo(), enumerated.get());
    };
    kind.json = [](BaseProperty const& property) {
        P const& enumerated = as<P>(property);
        return Json(enumeratorText(enumerated.getEnumInfo(), enumerated.get()));
    };
    return kind;
}

/// A table, in the form that its property reads.
template <class P>
PropertyKind lookUpTable()
{
    PropertyKind kind = {.isKindOf = isA<P>,
                         .typeName = [](BaseProperty const&) { return std::string("look-up table"); }};
    kind.bind = [](BaseProperty& property, std::string const& text, BindingOptions const&) {
        mox::String echo;
        if (!property.read(text.c_str(), echo)) {
            throw UsageError("the text is no look-up table");
        }
        return PropertyKind::Binding();
    };
    kind.text = [](BaseProperty const& property) {
        auto const* const table = as<P>(property).get();
        unsigned int const size = table != nullptr ? table->size() : 0;
        return size == 0 ? "empty" : std::to_string(size) + " entries";
    };
    kind.json = [](BaseProperty const& property) { return Json(lookUpTable<P>().text(property)); };
    return kind;
}

template <class T>
PropertyKind image(decltype(PropertyKind::bind) bind)
{
    return {.isKindOf = isA<mox::Property<T>>,
            .typeName = [](BaseProperty const&) { return std::string("image"); },
            .isFile = true,
            .bind = bind};
}

template <class T>
PropertyKind model(decltype(PropertyKind::bind) bind)
{
    return {.isKindOf = isA<mox::Property<T>>,
            .typeName = [](BaseProperty const&) { return std::string("classification model"); },
            .isFile = true,
            .bind = bind};
}

PropertyKind transformation()
{
    return {.isKindOf = holdsTransformation,
            .typeName = [](BaseProperty const&) { return std::string("transformation"); },
            .isFile = true,
            .bind = bindTransformation,
            .prepareResult = prepareTransformation,
            .text = transformationText,
            .json = transformationJson};
}

/// Whole numbers, texture features by name too.
PropertyKind integers()
{
    using P = mox::Property<mox::Vector<int>>;
    using Feature = mox::segmentation::TextureFeatureTypes;
    PropertyKind kind = value<mox::Vector<int>>();
    kind.enumerators = [](BaseProperty const&) { return &mox::getEnumInfo<Feature>(); };
    kind.bind = [](BaseProperty& property, std::string const& text, BindingOptions const&) {
        mox::Vector<int> numbers;
        for (std::string const& part : text.empty() ? std::vector<std::string>() : split(text, ',')) {
            bool const isName = !part.empty() && std::isalpha(static_cast<unsigned char>(part.front())) != 0;
            numbers.push_back(isName ? ValueForm<Feature>::parse(part) : ValueForm<int>::parse(part));
        }
        as<P>(property).set(numbers);
        return PropertyKind::Binding();
    };
    return kind;
}

std::vector<PropertyKind> makeKinds()
{
    return {enumeration(), // before the integer that it is
            value<bool>(),
            value<int>(),
            value<unsigned int>(),
            value<mox::int64>(),
            value<mox::uint64>(),
            value<double>(),
            value<mox::String>(),
            lookUpTable<mox::morphology::PropertyMorphologicalLut2D>(),
            lookUpTable<mox::morphology::PropertyMorphologicalLut3D>(),
            image<mox::ImageModel const*>(bindInputImage),
            image<mox::ImageModel*>(bindOutputImage),
            model<mox::classification::TextureClassificationModel const*>(bindInputModel),
            model<mox::classification::TextureClassificationModel*>(bindChangedModel),
            model<mox::classification::TextureClassificationModel**>(bindNewModel),
            transformation(),
            value<mox::Vector<unsigned char>>(),
            integers(),
            value<mox::Vector<unsigned int>>(),
            value<mox::Vector<mox::int64>>(),
            value<mox::Vector<mox::uint64>>(),
            value<mox::Vector<double>>(),
            value<mox::Vector<mox::math::Vector2<int>>>(),
#define MOX_KINDS(V) value<V>(), pointer<mox::Vector<V>*>(), pointer<mox::Vector<V> const*>(),
            MOX_FOR_EACH_MATH_VECTOR(MOX_KINDS)
#undef MOX_KINDS
#define MOX_KINDS(M) value<M>(),
                MOX_FOR_EACH_MATRIX(MOX_KINDS)
#undef MOX_KINDS
    };
}

} // namespace

PropertyKind const& kindOf(mox::BaseProperty const& property)
{
    static std::vector<PropertyKind> const kinds = makeKinds();
    static PropertyKind const unknown = {.isKindOf = [](BaseProperty const&) { return true; },
                                         .typeName = [](BaseProperty const&) { return std::string("unknown"); }};
    auto const found =
        std::find_if(kinds.begin(), kinds.end(), [&](PropertyKind const& kind) { return kind.isKindOf(property); });
    return found != kinds.end() ? *found : unknown;
}

} // namespace moxel
