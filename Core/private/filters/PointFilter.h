#pragma once

#include <memory>
#include <vector>

#include "Core/private/filters/Filter.h"
#include "Core/private/filters/PointRow.h"

namespace mox::filters {

/// Images without their voxel type: a virtual call per row, none per voxel.
class PointInput;
class PointOutput;

/// Carries a point kernel over images of the same sizes. Compiled once for all voxel types and kernels: the typed
/// filters are shells over it. The output may be one of the inputs. An input of one spectral channel serves all
/// channels of the output.
class PointFilter : public Filter {
public:
    PointFilter(BaseAlgorithm* owner, PointRow const& kernel);
    ~PointFilter() override;

    /// The images are of the kernel's voxel types, which are real, and are added in the order of its inputs.
    void addInput(ImageModel const& image);
    void setOutput(ImageModel& image);

    void run(Filter2dTag dimensions);
    void run(Filter3dTag dimensions);

private:
    template <class Dimensions>
    void runOver(Dimensions dimensions);
    Store store() const;

    PointRow kernel_;
    std::vector<std::unique_ptr<PointInput>> inputs_;
    std::unique_ptr<PointOutput> output_;
};

} // namespace mox::filters
