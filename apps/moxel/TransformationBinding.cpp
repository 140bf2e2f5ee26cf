#include "apps/moxel/TransformationBinding.h"

#include <Moxelcore/Moxelcore.h>

#include <fstream>
#include <optional>

#include "apps/moxel/NumberText.h"
#include "apps/moxel/ResultFile.h"

namespace moxel {

namespace {

namespace geometry = mox::geometry;
using geometry::MatrixTransformation;
using geometry::Transformation2D;
using geometry::Transformation3D;

template <class Base>
struct NamedClass {
    char const* name;
    bool (*isClassOf)(Base const&);
};

template <class T, class Base>
bool isA(Base const& transformation)
{
    return dynamic_cast<T const*>(&transformation) != nullptr;
}

NamedClass<Transformation2D> const classes2D[] = {
    {"Translation2D", isA<geometry::Translation2D>},
    {"RigidTransformation2D", isA<geometry::RigidTransformation2D>},
    {"AffineTransformation2D", isA<geometry::AffineTransformation2D>},
    {"ProjectiveTransformation2D", isA<geometry::ProjectiveTransformation2D>},
    {"PolynomialOrder2Transformation2D", isA<geometry::PolynomialOrder2Transformation2D>},
    {"PolynomialOrder3Transformation2D", isA<geometry::PolynomialOrder3Transformation2D>}};
NamedClass<Transformation3D> const classes3D[] = {{"Translation3D", isA<geometry::Translation3D>},
                                                  {"RigidTransformation3D", isA<geometry::RigidTransformation3D>},
                                                  {"AffineTransformation3D", isA<geometry::AffineTransformation3D>}};

template <class Base, std::size_t count>
std::string nameIn(NamedClass<Base> const (&classes)[count], Base const& transformation)
{
    for (auto const& [name, isClassOf] : classes) {
        if (isClassOf(transformation)) {
            return name;
        }
    }
    return "transformation";
}

std::string nameOf(Transformation2D const& transformation)
{
    return nameIn(classes2D, transformation);
}

std::string nameOf(Transformation3D const& transformation)
{
    return nameIn(classes3D, transformation);
}

/// Row by row, with the last one.
template <unsigned int D>
Json matrixOf(MatrixTransformation<D> const& transformation)
{
    Json matrix = Json::array();
    auto const element = [&](unsigned int row, unsigned int column) {
        bool const isLastRow = row == D;
        if (isLastRow && (column == D || D == 3)) {
            return column == D ? 1.0 : 0.0;
        }
        // Not `getParam` of the class: where a rigid transformation has angles, the matrix has elements.
        unsigned int const index = column == D ? row : D + row * D + column;
        return transformation.MatrixTransformation<D>::getParam(index);
    };
    for (unsigned int row = 0; row <= D; ++row) {
        matrix.push_back(Json::array());
        for (unsigned int column = 0; column <= D; ++column) {
            matrix.back().push_back(element(row, column));
        }
    }
    return matrix;
}

template <class T>
std::vector<double> parametersOf(T const& transformation)
{
    std::vector<double> parameters;
    // Three translations and three angles, whatever the number that the class tells.
    unsigned int const count =
        isA<geometry::RigidTransformation3D>(transformation) ? 6 : transformation.getNumOfParameter();
    for (unsigned int i = 0; i < count; ++i) {
        parameters.push_back(transformation.getParam(i));
    }
    return parameters;
}

template <class T>
Json jsonOf(T const& transformation)
{
    Json json = {{"class", nameOf(transformation)}, {"parameters", parametersOf(transformation)}};
    constexpr unsigned int dimension = std::is_same_v<T, Transformation2D> ? 2 : 3;
    if (auto const* const matrix = dynamic_cast<MatrixTransformation<dimension> const*>(&transformation)) {
        json["matrix"] = matrixOf(*matrix);
    }
    return json;
}

template <class T>
using Holder = mox::Property<geometry::TransformationHandler<T>*>;

template <class T>
class HeldTransformation final : public PropertyBinding {
public:
    explicit HeldTransformation(Holder<T>& property) { property.set(&handler_); }
    HeldTransformation(Holder<T>& property, std::string const& path)
        : file_(path)
    {
        property.set(&handler_);
    }

    void store() override
    {
        if (file_) {
            file_->store([this](std::filesystem::path const& path) {
                std::ofstream out(path);
                out << textOf(jsonOf(*handler_.get())) << '\n';
                if (!out.flush()) {
                    throw FileError("it cannot be written");
                }
            });
        }
    }

    void publish() override
    {
        if (file_) {
            file_->publish();
        }
    }

private:
    geometry::TransformationHandler<T> handler_;
    std::optional<ResultFile> file_;
};

/// Calls `work` with the property as what it is.
template <class Property, class Work>
auto withHolder(Property& property, Work const& work)
{
    using In2D =
        std::conditional_t<std::is_const_v<Property>, Holder<Transformation2D> const, Holder<Transformation2D>>;
    using In3D =
        std::conditional_t<std::is_const_v<Property>, Holder<Transformation3D> const, Holder<Transformation3D>>;
    if (auto* const in2D = dynamic_cast<In2D*>(&property)) {
        return work(*in2D);
    }
    return work(dynamic_cast<In3D&>(property));
}

template <class T>
T const* held(Holder<T> const& property)
{
    return property.get() != nullptr ? property.get()->get() : nullptr;
}

template <class T>
std::unique_ptr<PropertyBinding> bind(Holder<T>& property, std::string const& path)
{
    return std::make_unique<HeldTransformation<T>>(property, path);
}

template <class T>
std::unique_ptr<PropertyBinding> prepare(Holder<T>& property)
{
    return property.get() == nullptr ? std::make_unique<HeldTransformation<T>>(property) : nullptr;
}

} // namespace

bool holdsTransformation(mox::BaseProperty const& property)
{
    return dynamic_cast<Holder<Transformation2D> const*>(&property) != nullptr ||
           dynamic_cast<Holder<Transformation3D> const*>(&property) != nullptr;
}

std::unique_ptr<PropertyBinding> bindTransformation(mox::BaseProperty& property, std::string const& path,
                                                    BindingOptions const&)
{
    return withHolder(property, [&](auto& holder) { return bind(holder, path); });
}

std::unique_ptr<PropertyBinding> prepareTransformation(mox::BaseProperty& property)
{
    return withHolder(property, [](auto& holder) { return prepare(holder); });
}

std::string transformationText(mox::BaseProperty const& property)
{
    return withHolder(property, [](auto const& holder) -> std::string {
        auto const* const transformation = held(holder);
        if (transformation == nullptr) {
            return "none";
        }
        std::string text = nameOf(*transformation);
        char separator = ' ';
        for (double const parameter : parametersOf(*transformation)) {
            text += separator + numberText(parameter);
            separator = ',';
        }
        return text;
    });
}

Json transformationJson(mox::BaseProperty const& property)
{
    return withHolder(property, [](auto const& holder) {
        auto const* const transformation = held(holder);
        return transformation != nullptr ? jsonOf(*transformation) : Json();
    });
}

} // namespace moxel
