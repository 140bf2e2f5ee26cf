#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/reinterpret.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// Gives the output a fixed interpretation.
class RuleSetInterpretation final : public Rules<ImageModel*> {
public:
    explicit RuleSetInterpretation(ImageInterpretation interpretation)
        : interpretation_(interpretation)
    {
    }

    void apply(PropertyValue<ImageModel*>& output) override
    {
        constexpr char const* source = "Core/private/Rules/RuleSetInterpretation";
        rules::requireValue(output.value, source);
        rules::reinterpret(*output.value, interpretation_, source);
    }

private:
    ImageInterpretation interpretation_;
};

} // namespace mox
