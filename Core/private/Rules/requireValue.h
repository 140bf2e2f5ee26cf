#pragma once

#include "Core/private/Helper/raise.h"

namespace mox::rules {

/// Fails with the text of a missing value.
template <class T>
void requireValue(T const& value, helper::Site site)
{
    if (value == T()) {
        helper::raise<RuleException>(site, "Parameter value cannot be null");
    }
}

} // namespace mox::rules
