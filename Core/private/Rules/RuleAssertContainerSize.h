#pragma once

#include <cstddef>

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"

namespace mox {

/// The `Vector` must have a given size.
template <class T>
class RuleAssertContainerSize final : public Rules<T> {
public:
    explicit RuleAssertContainerSize(std::size_t size)
        : size_(size)
    {
    }

    void apply(PropertyValue<T>& property) override
    {
        if (property.value.size() != size_) {
            helper::raise<RuleException>("Core/private/Rules/RuleAssertContainerSize", "Parameter must have a size of ",
                                         size_, ". Current size is ", property.value.size());
        }
    }

private:
    std::size_t size_;
};

} // namespace mox
