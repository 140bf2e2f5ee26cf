#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/requireValue.h"
#include "Core/private/Rules/reshape.h"
#include "Core/private/access/Sizes.h"

namespace mox::miscellaneous {

/// Gives the output the voxel type and the calibration of an input, and sizes that are derived from it. An output that
/// has them keeps its memory; one that is the input must have them.
class RuleEnforceDerivedSize final : public Rules<ImageModel*> {
public:
    /// The sizes of the output; none when there can be no such output.
    using Derivation = std::function<std::optional<access::Sizes>(ImageModel const& input, ImageModel const& output)>;

    RuleEnforceDerivedSize(Property<ImageModel const*> const& input, Derivation sizesOf)
        : input_(&input)
        , sizesOf_(std::move(sizesOf))
    {
    }

    void apply(PropertyValue<ImageModel*>& property) override
    {
        constexpr char const* source = "Miscellaneous/private/RuleEnforceDerivedSize";
        rules::requireValue(property.value, source);
        rules::requireValue(input_->get(), source);
        ImageModel const& input = *input_->get();
        ImageModel& output = *property.value;
        auto const sizes = sizesOf_(input, output);
        if (!sizes || !takesShape(output, input, *sizes)) {
            helper::raise<RuleException>(source, "Image cannot be resized");
        }
    }

private:
    static bool takesShape(ImageModel& output, ImageModel const& input, access::Sizes const& sizes)
    {
        return &output == &input ? access::Sizes::of(input) == sizes
                                 : rules::reshape(output, input.getVoxelType(), sizes, input);
    }

    Property<ImageModel const*> const* input_;
    Derivation sizesOf_;
};

} // namespace mox::miscellaneous
