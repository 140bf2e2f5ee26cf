#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"

namespace mox {

/// The value must be greater than 0. A NaN is not.
template <class T>
class RuleAssertPositiveOnly final : public Rules<T> {
public:
    void apply(PropertyValue<T>& property) override
    {
        if (!(property.value > T())) {
            helper::raise<RuleException>("Core/private/Rules/RuleAssertPositiveOnly",
                                         "Parameter value cannot be negative or null");
        }
    }
};

} // namespace mox
