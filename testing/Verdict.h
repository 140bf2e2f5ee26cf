#pragma once

#include <Moxelcore/Core/Exception.h>

#include <ostream>
#include <regex>
#include <string>
#include <type_traits>

#include "Core/private/PropertyValue.h"

namespace mox::testing {

/// What a rule says of a value: the message and the file that its exception shows, both empty when it passes.
struct Verdict {
    std::string message;
    std::string file;

    bool operator==(Verdict const&) const = default;

    friend std::ostream& operator<<(std::ostream& out, Verdict const& verdict)
    {
        return out << '"' << verdict.message << "\" from \"" << verdict.file << '"';
    }
};

inline Verdict const passes;

/// The parts of a text with one level; a text of any other form is the message as a whole.
inline Verdict verdictOf(RuleException const& exception)
{
    String const text = exception.what();
    static std::regex const form(
        R"form(Rule exception :\n#1 Error : ([^\n]*) \n    \(at "([^\n]*)", line [1-9]\d*\) \n)form");
    std::cmatch parts;
    if (!std::regex_match(text.c_str(), parts, form)) {
        return {text.c_str(), ""};
    }
    return {parts[1], parts[2]};
}

template <class T>
Verdict verdict(Rules<T>& rule, PropertyValue<T>& property)
{
    try {
        rule.apply(property);
    } catch (RuleException const& exception) {
        return verdictOf(exception);
    }
    return passes;
}

template <class T>
Verdict verdict(Rules<T>& rule, std::type_identity_t<T> const& value)
{
    PropertyValue<T> property;
    property.value = value;
    return verdict(rule, property);
}

} // namespace mox::testing
