#pragma once

#include <Moxelcore/Core/EnumInfo.h>

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"

namespace mox {

/// The value must be one of an enumeration. The table must outlive the rule.
class RuleIsAnEnumOfType final : public Rules<int> {
public:
    explicit RuleIsAnEnumOfType(EnumInfo const& info)
        : info_(&info)
    {
    }

    void apply(PropertyValue<int>& property) override
    {
        if (!info_->exists(property.value)) {
            helper::raise<RuleException>("Core/private/Rules/RuleIsAnEnumOfType", "The enumeration value is not valid");
        }
    }

private:
    EnumInfo const* info_;
};

} // namespace mox
