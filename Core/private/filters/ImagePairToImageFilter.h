#pragma once

#include "Core/private/filters/ImagesToImageFilter.h"

namespace mox {

/// Two input images, voxel by voxel, and one output image.
template <class In1, class In2, class Out, class Kernel, class Dimensions>
using ImagePairToImageFilter = ImagesToImageFilter<Kernel, Dimensions, Out, In1, In2>;

template <class In1, class In2, class Out, class Kernel>
using ImagePairToImageFilter2d = ImagePairToImageFilter<In1, In2, Out, Kernel, Filter2dTag>;
template <class In1, class In2, class Out, class Kernel>
using ImagePairToImageFilter3d = ImagePairToImageFilter<In1, In2, Out, Kernel, Filter3dTag>;

} // namespace mox
