#pragma once

#include <boost/shared_ptr.hpp>

#include <utility>

#include "Core/private/filters/PointFilter.h"
#include "Core/private/filters/pointKernel.h"

namespace mox {

/// Carries a point kernel from a typed runner to the last voxel: up to three input images and one output image, all
/// of the same sizes; the output may be one of the inputs. An input of one spectral channel serves all channels of
/// the output. The kernel's `row` takes a pointer per input, the output's pointer and the number of voxels.
template <class Kernel, class Arch, class Dimensions, class Out, class... In>
class ImagesToImageFilter : public filters::PointFilter {
public:
    ImagesToImageFilter(BaseAlgorithm* owner, Kernel const& kernel)
        : PointFilter(owner, filters::pointRow<Kernel, Out, In...>(kernel))
    {
    }

    void setInput(boost::shared_ptr<ArchView<In, Arch>>... views)
    {
        inputs_.clear();
        (inputs_.push_back(std::make_unique<filters::TypedPointInput<ArchView<In, Arch>>>(std::move(views))), ...);
    }

    void setOutput(boost::shared_ptr<ArchView<Out, Arch>> view)
    {
        output_ = std::make_unique<filters::TypedPointOutput<ArchView<Out, Arch>>>(std::move(view));
    }

    void run() { PointFilter::run(Dimensions()); }
};

} // namespace mox
