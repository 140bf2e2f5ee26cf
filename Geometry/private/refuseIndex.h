#pragma once

#include "Core/private/Helper/raise.h"

namespace mox::geometry {

[[noreturn]] inline void refuseIndex(helper::Site site, unsigned int index, unsigned int count)
{
    helper::raise<BadIndex>(site, "There is no parameter at index ", index, ", the number of entries is ", count);
}

} // namespace mox::geometry
