#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/requireValue.h"

namespace mox {

/// The image must be as large as another along one dimension.
template <class T>
class RuleAssertDimensionImage final : public Rules<T> {
public:
    RuleAssertDimensionImage(ImageDimension dimension, Property<ImageModel const*> const& other)
        : dimension_(dimension)
        , other_(&other)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        constexpr char const* source = "Core/private/Rules/RuleAssertDimension";
        ImageModel const* const other = other_->get();
        rules::requireValue(other, source);
        rules::requireValue(property.value, source);
        unsigned int const wanted = other->getSize(dimension_);
        unsigned int const current = property.value->getSize(dimension_);
        if (current != wanted) {
            helper::raise<RuleException>(source, "Component ", static_cast<int>(dimension_), " must have a size of ",
                                         wanted, ". Current size is ", current);
        }
    }

private:
    ImageDimension dimension_;
    Property<ImageModel const*> const* other_;
};

} // namespace mox
