#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// The image must have the voxel type of another.
template <class T>
class RuleAssertSameType final : public Rules<T> {
public:
    explicit RuleAssertSameType(Property<ImageModel const*> const& other)
        : other_(&other)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        constexpr char const* source = "Core/private/Rules/RuleAssertSameType";
        ImageModel const* const other = other_->get();
        rules::requireValue(property.value, source);
        rules::requireValue(other, source);
        if (property.value->getVoxelType() != other->getVoxelType()) {
            helper::raise<RuleException>(source, "Images don't have the same type");
        }
    }

private:
    Property<ImageModel const*> const* other_;
};

} // namespace mox
