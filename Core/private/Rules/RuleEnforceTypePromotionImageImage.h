#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/promoteOutput.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// Gives the output the voxel type to which two images promote.
class RuleEnforceTypePromotionImageImage final : public Rules<ImageModel*> {
public:
    RuleEnforceTypePromotionImageImage(Property<ImageModel const*> const& first,
                                       Property<ImageModel const*> const& second, int kind)
        : first_(&first)
        , second_(&second)
        , kind_(kind)
    {
    }

    void apply(PropertyValue<ImageModel*>& output) override
    {
        constexpr char const* source = "Core/private/Rules/RuleEnforceTypePromotionImageImage";
        ImageModel const* const first = first_->get();
        ImageModel const* const second = second_->get();
        rules::requireValue(first, source);
        rules::requireValue(second, source);
        rules::requireValue(output.value, source);
        rules::promoteOutput(*output.value, {first, second}, kind_, first->getVoxelType(), second->getVoxelType(),
                             source);
    }

private:
    Property<ImageModel const*> const* first_;
    Property<ImageModel const*> const* second_;
    int kind_;
};

} // namespace mox
