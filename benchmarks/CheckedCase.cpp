#include "benchmarks/CheckedCase.h"

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/Property.h>

#include <algorithm>
#include <stdexcept>

#include "benchmarks/Images.h"

namespace mox::benchmarks {

namespace {

std::size_t bytesOf(ImageModel const& image)
{
    return std::size_t{image.getSize(COLUMNS)} * image.getSize(ROWS) * image.getSize(PLANS) *
           helper::getSizeOf(image.getVoxelType());
}

} // namespace

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
    check(row);
    prepare(row, row.size);
    run(); // the output has its size from here on
    numOfVoxels_ = row.size.numOfVoxels();
    numOfBytes_ = bytesOf(input_) + bytesOf(output_);
}

void CheckedCase::prepare(Case const& row, Size const& size)
{
    fillWithNoise(input_, row.inputType, size, row.levels);
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
