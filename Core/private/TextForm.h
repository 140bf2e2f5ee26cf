#pragma once

#include <Moxelcore/Core/String.h>
#include <Moxelcore/Core/Vector.h>

#include <istream>
#include <iterator>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <type_traits>

namespace mox {

/// How a value is read from a stream; types without a specialisation have no text form.
template <class T>
struct TextForm {
    static constexpr bool exists = false;
};

template <class T>
concept HasTextForm = TextForm<T>::exists;

template <class T>
concept Arithmetic = std::is_arithmetic_v<T>;

template <Arithmetic T>
struct TextForm<T> {
    static constexpr bool exists = true;
    static void read(std::istream& in, T& value) { in >> value; }
};

/// A number, not a character.
template <>
struct TextForm<unsigned char> {
    static constexpr bool exists = true;
    static void read(std::istream& in, unsigned char& value)
    {
        int number = 0;
        in >> number;
        if (number < 0 || number > std::numeric_limits<unsigned char>::max()) {
            in.setstate(std::ios::failbit);
            return;
        }
        value = static_cast<unsigned char>(number);
    }
};

template <>
struct TextForm<String> {
    static constexpr bool exists = true;
    static void read(std::istream& in, String& value)
    {
        value = std::string(std::istreambuf_iterator<char>(in), {}).c_str();
    }
};

template <HasTextForm T>
struct TextForm<Vector<T>> {
    static constexpr bool exists = true;
    static void read(std::istream& in, Vector<T>& value)
    {
        Vector<T> elements;
        while (!atEnd(in)) {
            T element = T();
            TextForm<T>::read(in, element);
            if (in.fail()) {
                return;
            }
            elements.push_back(element);
        }
        value = elements;
    }

private:
    static bool atEnd(std::istream& in) { return in.eof() || (in >> std::ws).eof(); }
};

/// False when the text cannot be read as a T; the value may have changed then, as streams have it.
template <class T>
bool readText(String const& text, T& value)
{
    if constexpr (HasTextForm<T>) {
        std::istringstream in(text.c_str());
        in.imbue(std::locale::classic());
        TextForm<T>::read(in, value);
        return !in.fail();
    }
    return false;
}

} // namespace mox
