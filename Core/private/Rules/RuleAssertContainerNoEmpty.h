#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"

namespace mox {

/// The `Vector` must hold something.
template <class T>
class RuleAssertContainerNoEmpty final : public Rules<T> {
public:
    void apply(PropertyValue<T>& property) override
    {
        if (property.value.empty()) {
            helper::raise<RuleException>("Core/private/Rules/RuleAssertContainerNoEmpty",
                                         "Parameter should not be empty.");
        }
    }
};

} // namespace mox
