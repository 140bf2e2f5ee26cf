#pragma once

#include "Core/private/filters/ImagesToImageFilter.h"

namespace mox {

/// One input image, one output image.
template <class In, class Out, class Arch, class Kernel, class Dimensions, class Reduction = FilterWithoutReductionTag>
using ImageToImageFilter = ImagesToImageFilter<Kernel, Arch, Dimensions, Out, In>;

template <class In, class Out, class Arch, class Kernel>
using ImageToImageFilter2d = ImageToImageFilter<In, Out, Arch, Kernel, Filter2dTag>;
template <class In, class Out, class Arch, class Kernel>
using ImageToImageFilter3d = ImageToImageFilter<In, Out, Arch, Kernel, Filter3dTag>;

} // namespace mox
