#pragma once

#include <boost/core/demangle.hpp>

#include <typeinfo>

#include "Core/private/Helper/raise.h"

namespace mox::helper {

/// Casts an object to a class derived from its static type, or throws `UnexpectedError`.
template <class To, class From>
To& safe_cast(From& object)
{
    if (auto* cast = dynamic_cast<To*>(&object)) {
        return *cast;
    }
    raise<UnexpectedError>({"Core/private/Helper/safe_cast", 18}, "bad cast when casting ",
                           boost::core::demangle(typeid(From).name()), " into ",
                           boost::core::demangle(typeid(To).name()));
}

} // namespace mox::helper
