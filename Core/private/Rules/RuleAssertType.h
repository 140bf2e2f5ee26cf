#pragma once

#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/listedTexts.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// The image's voxel type must be one of a list.
template <class T>
class RuleAssertType final : public Rules<T> {
public:
    explicit RuleAssertType(std::vector<VoxelTypes> allowed)
        : allowed_(std::move(allowed))
    {
    }

    template <class... Voxel>
    explicit RuleAssertType(TypeVector<Voxel...> allowed)
        : allowed_(voxelTypesOf(allowed))
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        constexpr char const* source = "Core/private/Rules/RuleAssertType";
        rules::requireValue(property.value, source);
        VoxelTypes const current = property.value->getVoxelType();
        if (std::find(allowed_.begin(), allowed_.end(), current) == allowed_.end()) {
            helper::raise<RuleException>(
                source, "Voxel type must be one of the following types : ", rules::listedTexts(allowed_),
                ". Current voxel type is ", helper::getText(current));
        }
    }

private:
    std::vector<VoxelTypes> allowed_;
};

} // namespace mox
