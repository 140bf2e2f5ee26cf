#pragma once

#include <Moxelcore/Core/EnumInfo.h>
#include <Moxelcore/Core/String.h>
#include <Moxelcore/Core/Vector.h>
#include <Moxelcore/Math/Matrix2.h>
#include <Moxelcore/Math/Matrix3.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include "apps/moxel/Enumerators.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/Json.h"
#include "apps/moxel/NumberText.h"

// How values of properties are written on the command line, in results and in JSON. A form has `name`, `text` and
// `json`, and `parse`, which throws `UsageError`, unless the type is only ever a result.

namespace moxel {

inline std::vector<std::string> split(std::string const& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find(separator, begin)) != std::string::npos; begin = end + 1) {
        parts.push_back(text.substr(begin, end - begin));
    }
    parts.push_back(text.substr(begin));
    return parts;
}

template <class T>
struct ValueForm;

template <class T>
    requires std::is_arithmetic_v<T>
struct ValueForm<T> {
    static std::string name() { return numberName<T>(); }
    static T parse(std::string const& text) { return parseNumber<T>(text); }
    static std::string text(T value) { return numberText(value); }
    static Json json(T value) { return value; }
};

template <>
struct ValueForm<mox::String> {
    static std::string name() { return "text"; }
    static mox::String parse(std::string const& text) { return text.c_str(); }
    static std::string text(mox::String const& value) { return value.c_str(); }
    static Json json(mox::String const& value) { return value.c_str(); }
};

/// By name or number.
template <class T>
    requires std::is_enum_v<T>
struct ValueForm<T> {
    static std::string name() { return info().getEnumName().c_str(); }
    static T parse(std::string const& text) { return static_cast<T>(parseEnumerator(info(), text)); }
    static std::string text(T value) { return enumeratorText(info(), value); }
    static Json json(T value) { return text(value); }

private:
    static EnumInfo const& info() { return mox::getEnumInfo<T>(); }
};

/// Elements separated by commas.
template <class T>
struct ValueForm<mox::Vector<T>> {
    static std::string name() { return "list of " + ValueForm<T>::name(); }

    static mox::Vector<T> parse(std::string const& text)
    {
        mox::Vector<T> elements;
        if (text.empty()) {
            return elements;
        }
        for (std::string const& part : split(text, ',')) {
            elements.push_back(ValueForm<T>::parse(part));
        }
        return elements;
    }

    static std::string text(mox::Vector<T> const& value)
    {
        std::string result;
        for (T const& element : value) {
            result += (&element == value.begin() ? "" : ",") + ValueForm<T>::text(element);
        }
        return result;
    }

    static Json json(mox::Vector<T> const& value)
    {
        Json result = Json::array();
        for (T const& element : value) {
            result.push_back(ValueForm<T>::json(element));
        }
        return result;
    }
};

/// The vectors of 2, 3 and 4 components: components separated by colons.
template <class V>
    requires requires(V const& vector)
    {
        vector.squaredLength();
    }
struct ValueForm<V> {
    using Component = std::remove_cvref_t<decltype(V()[0])>;

    static std::string name() { return "vector of " + std::to_string(V().dim()) + ' ' + ValueForm<Component>::name(); }

    static V parse(std::string const& text)
    {
        V vector;
        auto const parts = split(text, ':');
        if (parts.size() != vector.dim()) {
            throw UsageError(quoted(text) + " is no " + name() + " with colons between them");
        }
        for (unsigned int i = 0; i < vector.dim(); ++i) {
            vector[i] = ValueForm<Component>::parse(parts[i]);
        }
        return vector;
    }

    static std::string text(V const& value)
    {
        std::string result = ValueForm<Component>::text(value[0]);
        for (unsigned int i = 1; i < value.dim(); ++i) {
            result += ':' + ValueForm<Component>::text(value[i]);
        }
        return result;
    }

    static Json json(V const& value)
    {
        Json result = Json::array();
        for (unsigned int i = 0; i < value.dim(); ++i) {
            result.push_back(ValueForm<Component>::json(value[i]));
        }
        return result;
    }
};

/// Rows separated by commas, components by colons. Only ever a result: the library reads no matrix from a text.
template <class M, class T, unsigned int N>
struct MatrixForm {
    static std::string name()
    {
        std::string const size = std::to_string(N);
        return size + " x " + size + " matrix of " + ValueForm<T>::name();
    }

    static std::string text(M const& value)
    {
        std::string result;
        for (unsigned int i = 0; i < N * N; ++i) {
            char const* separator = i == 0 ? "" : i % N == 0 ? "," : ":";
            result += separator + ValueForm<T>::text(value(i / N, i % N));
        }
        return result;
    }

    static Json json(M const& value)
    {
        Json result(N, Json::array());
        for (unsigned int i = 0; i < N * N; ++i) {
            result[i / N].push_back(ValueForm<T>::json(value(i / N, i % N)));
        }
        return result;
    }
};

template <class T>
struct ValueForm<mox::math::Matrix2<T>> : MatrixForm<mox::math::Matrix2<T>, T, 2> {
};

template <class T>
struct ValueForm<mox::math::Matrix3<T>> : MatrixForm<mox::math::Matrix3<T>, T, 3> {
};

} // namespace moxel
