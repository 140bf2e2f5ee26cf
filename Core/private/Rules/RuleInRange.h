#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"

namespace mox {

/// The value must lie in a closed range. A NaN does not.
template <class T>
class RuleInRange final : public Rules<T> {
public:
    RuleInRange(T low, T high)
        : low_(low)
        , high_(high)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        if (!(property.value >= low_ && property.value <= high_)) {
            helper::raise<RuleException>("Core/private/Rules/RuleInRange", "Parameter value must be in the range [",
                                         low_, "  ", high_, "]");
        }
    }

private:
    T low_;
    T high_;
};

} // namespace mox
