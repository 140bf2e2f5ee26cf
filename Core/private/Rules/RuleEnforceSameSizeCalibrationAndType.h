#pragma once

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/reshape.h"

namespace mox {

/// Gives the output the sizes, the calibration and the voxel type of an input.
class RuleEnforceSameSizeCalibrationAndType final : public Rules<ImageModel*> {
public:
    explicit RuleEnforceSameSizeCalibrationAndType(Property<ImageModel const*> const& input)
        : input_(&input)
    {
    }

    void apply(PropertyValue<ImageModel*>& output) override
    {
        constexpr char const* source = "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType";
        ImageModel const* const input = input_->get();
        if (output.value == nullptr || input == nullptr) {
            helper::raise<RuleException>(source, "Parameter value cannot be NULL.");
        }
        if (!rules::reshape(*output.value, input->getVoxelType(), *input)) {
            helper::raise<RuleException>(source, "Image cannot be resized and retyped.");
        }
    }

private:
    Property<ImageModel const*> const* input_;
};

} // namespace mox
