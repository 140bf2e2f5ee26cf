#pragma once

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/imageComparison.h"
#include "Core/private/Rules/requireValue.h"
#include "Core/private/access/Sizes.h"

namespace mox {

/// The image must have the sizes and the calibration of another.
template <class T>
class RuleAssertSameSize final : public Rules<T> {
public:
    explicit RuleAssertSameSize(Property<ImageModel const*> const& other)
        : other_(&other)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        constexpr char const* source = "Core/private/Rules/RuleAssertSameSize";
        ImageModel const* const other = other_->get();
        rules::requireValue(property.value, source);
        rules::requireValue(other, source);
        if (access::Sizes::of(*property.value) != access::Sizes::of(*other)) {
            helper::raise<RuleException>(source, "Images don't have the same size");
        }
        if (!rules::haveSameCalibration(*property.value, *other)) {
            helper::raise<RuleException>(source, "Images don't have the same calibration");
        }
    }

private:
    Property<ImageModel const*> const* other_;
};

} // namespace mox
