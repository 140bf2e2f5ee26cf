#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// The image must have a given size along one dimension.
template <class T>
class RuleAssertDimension final : public Rules<T> {
public:
    RuleAssertDimension(ImageDimension dimension, unsigned int size)
        : dimension_(dimension)
        , size_(size)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        constexpr char const* source = "Core/private/Rules/RuleAssertDimension";
        rules::requireValue(property.value, source);
        unsigned int const current = property.value->getSize(dimension_);
        if (current != size_) {
            helper::raise<RuleException>(source, "component ", static_cast<int>(dimension_), " must have a size of ",
                                         size_, ". Current size is ", current);
        }
    }

private:
    ImageDimension dimension_;
    unsigned int size_;
};

} // namespace mox
