#pragma once

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <cassert>

#include "Core/private/filters/PointFilter.h"

namespace mox {

/// Carries a point kernel from a typed runner to the last voxel: up to three input images and one output image. The
/// kernel's `row` takes a pointer per input, the output's pointer and the number of voxels. The kernel must outlive
/// the filter.
template <class Kernel, class Dimensions, class Out, class... In>
class ImagesToImageFilter : private filters::PointFilter {
public:
    ImagesToImageFilter(BaseAlgorithm* owner, Kernel const& kernel)
        : PointFilter(owner, filters::pointRow<Kernel, Out, In...>(kernel))
    {
    }

    /// An image per input.
    template <class... Image>
    void setInput(Image const&... images)
    {
        static_assert(sizeof...(Image) == sizeof...(In));
        assert(((images.getVoxelType() == voxelTypeOf<In>)&&...));
        (addInput(images), ...);
    }

    void setOutput(ImageModel& image)
    {
        assert(image.getVoxelType() == voxelTypeOf<Out>);
        PointFilter::setOutput(image);
    }

    void run() { PointFilter::run(Dimensions()); }

    using PointFilter::getProgress;
    using PointFilter::isExecutionCancelled;
};

} // namespace mox
