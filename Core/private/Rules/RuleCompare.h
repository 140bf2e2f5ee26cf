#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"

namespace mox {

namespace detail {

struct GreaterOrEqualThan {
    static constexpr char const* text = "greater or equal than";

    template <class T>
    bool operator()(T const& value, T const& other) const
    {
        return value >= other;
    }
};

} // namespace detail

template <class PropertyType, class Compare>
class RuleCompare;

/// The value must compare with that of another property.
template <class T, class Compare>
class RuleCompare<Property<T>, Compare> final : public Rules<T> {
public:
    explicit RuleCompare(Property<T> const& other)
        : other_(&other)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        if (!Compare()(property.value, other_->get())) {
            helper::raise<RuleException>("Core/private/Rules/RuleCompare", "Parameter value (", property.value,
                                         ") must be ", Compare::text, " the value of the property ", other_->getName(),
                                         " (", other_->get(), ")");
        }
    }

private:
    Property<T> const* other_;
};

} // namespace mox
