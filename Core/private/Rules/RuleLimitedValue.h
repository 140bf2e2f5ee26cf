#pragma once

#include <array>
#include <cstddef>

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"

namespace mox {

/// The value must lie on one side of a limit, by `kind`: 0 at or above, 1 above, 2 at or below, 3 below. A NaN lies
/// on no side.
template <class T>
class RuleLimitedValue final : public Rules<T> {
public:
    RuleLimitedValue(T limit, int kind)
        : limit_(limit)
        , kind_(kind)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        constexpr char const* source = "Core/private/Rules/RuleAssertLimitedValue";
        if (kind_ < 0 || kind_ >= static_cast<int>(kinds.size())) {
            helper::raise<RuleException>(source, "The type of the rule is unknown.");
        }
        Kind const& kind = kinds[static_cast<std::size_t>(kind_)];
        if (!kind.holds(property.value, limit_)) {
            helper::raise<RuleException>(source, "Parameter value <", property.value, kind.text, limit_, ">.");
        }
    }

private:
    struct Kind {
        bool (*holds)(T value, T limit);
        char const* text;
    };

    static constexpr std::array<Kind, 4> kinds = {
        {{[](T value, T limit) { return value >= limit; }, "> must be greater or equal that <"},
         {[](T value, T limit) { return value > limit; }, "> must be greater that <"},
         {[](T value, T limit) { return value <= limit; }, "> must be lower or equal that <"},
         {[](T value, T limit) { return value < limit; }, "> must be lower that <"}}};

    T limit_;
    int kind_;
};

} // namespace mox
