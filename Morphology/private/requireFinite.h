#pragma once

#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Core/Property.h>

#include <cmath>

#include "Core/private/Helper/raise.h"

namespace mox::morphology {

/// Throws `InvalidCall` for an angle that is not finite.
inline void requireFinite(Property<double> const& angle, char const* source)
{
    if (!std::isfinite(angle.get())) {
        helper::raise<InvalidCall>(source, angle.getName().c_str(), " must be a finite number of degrees");
    }
}

} // namespace mox::morphology
