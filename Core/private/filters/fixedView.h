#pragma once

#include <boost/make_shared.hpp>

#include "Core/private/access/FixedBorderCondition.h"
#include "Core/private/filters/pointKernel.h"

namespace mox {

/// A view on an image that reads one value everywhere outside.
template <class T, class Arch, class Image>
boost::shared_ptr<ArchView<T, Arch>> fixedView(Image& image, T outside = T())
{
    return boost::make_shared<ArchView<T, Arch>>(image, access::FixedBorderCondition<T>::create(outside));
}

} // namespace mox
