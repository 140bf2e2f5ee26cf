#pragma once

#include "Core/private/filters/ImagesToImageFilter.h"

namespace mox {

/// One input image, one output image.
template <class In, class Out, class Kernel, class Dimensions>
using ImageToImageFilter = ImagesToImageFilter<Kernel, Dimensions, Out, In>;

template <class In, class Out, class Kernel>
using ImageToImageFilter2d = ImageToImageFilter<In, Out, Kernel, Filter2dTag>;
template <class In, class Out, class Kernel>
using ImageToImageFilter3d = ImageToImageFilter<In, Out, Kernel, Filter3dTag>;

} // namespace mox
