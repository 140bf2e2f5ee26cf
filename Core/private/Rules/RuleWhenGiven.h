#pragma once

#include "Core/private/PropertyValue.h"

namespace mox {

/// Another rule, for a pointer that may be null.
template <class T, class Rule>
class RuleWhenGiven final : public Rules<T> {
public:
    template <class... Argument>
    explicit RuleWhenGiven(Argument const&... arguments)
        : rule_(arguments...)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        if (property.value != nullptr) {
            rule_.apply(property);
        }
    }

private:
    Rule rule_;
};

} // namespace mox
