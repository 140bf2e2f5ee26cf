#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/requireValue.h"
#include "Core/private/Rules/reshape.h"

namespace mox {

/// Gives the output the sizes and the calibration of an input.
class RuleEnforceSameSizeAndCalibration final : public Rules<ImageModel*> {
public:
    explicit RuleEnforceSameSizeAndCalibration(Property<ImageModel const*> const& input)
        : input_(&input)
    {
    }

    void apply(PropertyValue<ImageModel*>& output) override
    {
        constexpr char const* source = "Core/private/Rules/RuleEnforceSameSizeAndCalibration";
        rules::requireValue(output.value, source);
        rules::requireValue(input_->get(), source);
        if (!rules::reshape(*output.value, output.value->getVoxelType(), *input_->get())) {
            helper::raise<RuleException>(source, "Image cannot be resized");
        }
    }

private:
    Property<ImageModel const*> const* input_;
};

} // namespace mox
