#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/reinterpret.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// Gives the output the interpretation of an input.
class RuleEnforceSameInterpretation final : public Rules<ImageModel*> {
public:
    explicit RuleEnforceSameInterpretation(Property<ImageModel const*> const& input)
        : input_(&input)
    {
    }

    void apply(PropertyValue<ImageModel*>& output) override
    {
        constexpr char const* source = "Core/private/Rules/RuleEnforceSameInterpretation";
        rules::requireValue(output.value, source);
        rules::requireValue(input_->get(), source);
        rules::reinterpret(*output.value, input_->get()->getInterpretation(), source);
    }

private:
    Property<ImageModel const*> const* input_;
};

} // namespace mox
