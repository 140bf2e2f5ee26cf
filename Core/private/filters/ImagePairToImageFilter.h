#pragma once

#include "Core/private/filters/ImagesToImageFilter.h"

namespace mox {

/// Two input images, voxel by voxel, and one output image.
template <class In1, class In2, class Out, class Arch, class Kernel, class Dimensions>
using ImagePairToImageFilter = ImagesToImageFilter<Kernel, Arch, Dimensions, Out, In1, In2>;

template <class In1, class In2, class Out, class Arch, class Kernel>
using ImagePairToImageFilter2d = ImagePairToImageFilter<In1, In2, Out, Arch, Kernel, Filter2dTag>;
template <class In1, class In2, class Out, class Arch, class Kernel>
using ImagePairToImageFilter3d = ImagePairToImageFilter<In1, In2, Out, Arch, Kernel, Filter3dTag>;

} // namespace mox
