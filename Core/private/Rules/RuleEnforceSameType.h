#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/requireValue.h"
#include "Core/private/Rules/retype.h"

namespace mox {

/// Gives the output the voxel type of an input.
class RuleEnforceSameType final : public Rules<ImageModel*> {
public:
    explicit RuleEnforceSameType(Property<ImageModel const*> const& input)
        : input_(&input)
    {
    }

    void apply(PropertyValue<ImageModel*>& output) override
    {
        constexpr char const* source = "Core/private/Rules/RuleEnforceSameType";
        rules::requireValue(output.value, source);
        rules::requireValue(input_->get(), source);
        rules::retype(*output.value, input_->get()->getVoxelType(), source);
    }

private:
    Property<ImageModel const*> const* input_;
};

} // namespace mox
