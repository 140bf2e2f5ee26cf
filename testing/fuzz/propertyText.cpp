// Sets properties of the library's classes from any text. A value that was taken from a text is the same when it is
// written and read again; of the others only numbers may change at a text that is refused.

#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Math/MathProperty.h>
#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

#include <charconv>
#include <optional>
#include <type_traits>

#include "testing/fuzz/DrawnProperty.h"
#include "testing/fuzz/require.h"

namespace {

using mox::fuzz::require;

template <class T>
void append(std::string& text, T const& value)
{
    if constexpr (std::is_same_v<T, bool>) {
        text += value ? "1 " : "0 ";
    } else if constexpr (std::is_arithmetic_v<T>) {
        char digits[32];
        text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr) += ' ';
    } else if constexpr (requires { value.dim(); }) {
        for (unsigned int i = 0; i < value.dim(); ++i) {
            append(text, value[i]);
        }
    } else {
        for (auto const& element : value) {
            append(text, element);
        }
    }
}

void append(std::string& text, mox::String const& value)
{
    text += value.c_str();
}

void append(std::string& text, mox::morphology::MorphologicalLut2D* value)
{
    for (unsigned int i = 0; i < value->size(); ++i) {
        text += (*value)[i] != 0 ? '1' : '0';
    }
}

/// The text that the property would read its value from. Nothing for one that is no `Property<T>`.
template <class T>
std::optional<std::string> textOf(mox::BaseProperty const& property)
{
    auto const* const typed = dynamic_cast<mox::Property<T> const*>(&property);
    if (typed == nullptr) {
        return {};
    }
    std::string text;
    append(text, typed->get());
    return text;
}

template <class... T>
struct Types {
    static std::optional<std::string> textOf(mox::BaseProperty const& property)
    {
        std::optional<std::string> text;
        static_cast<void>(((text = ::textOf<T>(property)) || ...));
        return text;
    }

    static bool hold(mox::BaseProperty const& property)
    {
        return (... || (dynamic_cast<mox::Property<T> const*>(&property) != nullptr));
    }
};

#define MOX_ITEM(T) , T
using MathVectors = Types<mox::math::Vector2<int> MOX_FOR_EACH_MATH_VECTOR(MOX_ITEM)>;
#undef MOX_ITEM
using Numbers = Types<bool, int, unsigned int, mox::int64, mox::uint64, double>;
using Others = Types<mox::String, mox::Vector<unsigned char>, mox::Vector<int>, mox::Vector<unsigned int>,
                     mox::Vector<mox::int64>, mox::Vector<mox::uint64>, mox::Vector<double>,
                     mox::Vector<mox::math::Vector2<int>>, mox::morphology::MorphologicalLut2D*>;

std::optional<std::string> textOf(mox::BaseProperty const& property)
{
    for (auto const& text : {Numbers::textOf(property), MathVectors::textOf(property), Others::textOf(property)}) {
        if (text) {
            return text;
        }
    }
    return {};
}

bool mayChangeWhenRefused(mox::BaseProperty const& property)
{
    bool const isEnumeration = dynamic_cast<mox::PropertyEnumeration const*>(&property) != nullptr;
    return !isEnumeration && (Numbers::hold(property) || MathVectors::hold(property));
}

void readAndWrite(mox::BaseProperty& property, std::string const& text)
{
    auto const before = textOf(property);
    mox::String echo;
    bool const isRead = property.read(text.c_str(), echo);
    require(echo == text.c_str());
    auto const after = textOf(property);
    if (!isRead) {
        require(after == before || mayChangeWhenRefused(property));
    } else if (after) {
        require(property.read(after->c_str(), echo) && textOf(property) == after);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size < mox::fuzz::DrawnProperty::leastSize) {
        return 0;
    }
    mox::fuzz::DrawnProperty const drawn(data, size);
    for (std::string const& text : drawn.texts()) {
        readAndWrite(drawn.property(), text);
    }
    return 0;
}
