#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/promoteOutput.h"
#include "Core/private/Rules/requireValue.h"
#include "Core/private/Rules/typePromotion.h"

namespace mox {

/// Gives the output the voxel type to which an image and a number promote.
class RuleEnforceTypePromotionImageValue final : public Rules<ImageModel*> {
public:
    RuleEnforceTypePromotionImageValue(Property<ImageModel const*> const& image, Property<double> const& value,
                                       int kind)
        : image_(&image)
        , value_(&value)
        , kind_(kind)
    {
    }

    void apply(PropertyValue<ImageModel*>& output) override
    {
        constexpr char const* source = "Core/private/Rules/RuleEnforceTypePromotionImageValue";
        ImageModel const* const image = image_->get();
        rules::requireValue(image, source);
        rules::requireValue(output.value, source);
        rules::promoteOutput(*output.value, {image}, kind_, image->getVoxelType(), rules::typeOfNumber(value_->get()),
                             source);
    }

private:
    Property<ImageModel const*> const* image_;
    Property<double> const* value_;
    int kind_;
};

} // namespace mox
