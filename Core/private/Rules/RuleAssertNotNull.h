#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// The value must not be 0.
template <class T>
class RuleAssertNotNull final : public Rules<T> {
public:
    void apply(PropertyValue<T>& property) override
    {
        rules::requireValue(property.value, "Core/private/Rules/RuleAssertNotNull");
    }
};

} // namespace mox
