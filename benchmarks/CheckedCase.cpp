#include "benchmarks/CheckedCase.h"

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/Property.h>

#include <algorithm>
#include <stdexcept>

#include "benchmarks/Images.h"

namespace mox::benchmarks {

CheckedCase::CheckedCase(Case const& row)
    : algorithm_(AlgoInfo::fromName(row.algorithm.c_str()).createInstance())
{
    dynamic_cast<Property<ImageModel const*>&>(*algorithm_->getPropertyfromName("input")) = &input_;
    dynamic_cast<Property<ImageModel*>&>(*algorithm_->getPropertyfromName("output")) = &output_;
    for (auto const& [name, text] : row.properties) {
        String echo;
        if (!algorithm_->getPropertyfromName(name.c_str())->read(text.c_str(), echo)) {
            throw std::runtime_error(row.name() + ": cannot set " + name);
        }
    }
    if (row.level.has_value()) {
        algorithm_->setAutoCpuDispatch(false);
        algorithm_->setOptimLevel(*row.level);
    }
    check(row);
    prepare(row, row.size);
    run(); // the output has its size from here on
    numOfVoxels_ = row.size.numOfVoxels();
    numOfBytes_ = numOfVoxels_ * (helper::getSizeOf(input_.getVoxelType()) + helper::getSizeOf(output_.getVoxelType()));
}

void CheckedCase::prepare(Case const& row, Size const& size)
{
    fillWithNoise(input_, row.inputType, size);
    output_.allocate(row.outputType, 1, 1, 1, 1, 1);
}

void CheckedCase::check(Case const& row)
{
    Size const crop{std::min(row.size.columns, 37U), std::min(row.size.rows, 23U), std::min(row.size.plans, 11U)};
    prepare(row, crop);
    run();
    if (voxelsOf(output_) != row.reference(voxelsOf(input_), crop)) {
        throw std::runtime_error(row.name() + ": the result is not that of the reference");
    }
}

} // namespace mox::benchmarks
