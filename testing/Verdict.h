#pragma once

#include <Moxelcore/Core/Exception.h>

#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "Core/private/PropertyValue.h"
#include "testing/lineless.h"

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
    constexpr std::string_view head = "Rule exception :\n#1 Error : ";
    constexpr std::string_view middle = " \n    (at \"";
    constexpr std::string_view tail = "\", line N) \n";
    std::string const text = lineless(exception.what());
    auto const split = text.find(middle);
    if (!text.starts_with(head) || split == std::string::npos || !text.ends_with(tail)) {
        return {text, ""};
    }
    auto const file = split + middle.size();
    return {text.substr(head.size(), split - head.size()), text.substr(file, text.size() - tail.size() - file)};
}

template <class T>
Verdict verdict(Rules<T>& rule, std::type_identity_t<T> const& value)
{
    PropertyValue<T> property;
    property.value = value;
    try {
        rule.apply(property);
    } catch (RuleException const& exception) {
        return verdictOf(exception);
    }
    return passes;
}

} // namespace mox::testing
