#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/listedTexts.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// The image's interpretation must be one of a list.
template <class T>
class RuleAssertInterpretation final : public Rules<T> {
public:
    explicit RuleAssertInterpretation(std::vector<ImageInterpretation> allowed)
        : allowed_(std::move(allowed))
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        constexpr char const* source = "Core/private/Rules/RuleAssertInterpretation";
        rules::requireValue(property.value, source);
        ImageInterpretation const current = property.value->getInterpretation();
        if (std::find(allowed_.begin(), allowed_.end(), current) == allowed_.end()) {
            helper::raise<RuleException>(
                source, "Interpretation must be one of the following items : ", rules::listedTexts(allowed_),
                ". Current interpretation is ", helper::getText(current));
        }
    }

private:
    std::vector<ImageInterpretation> allowed_;
};

} // namespace mox
