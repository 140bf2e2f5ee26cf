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
    return numOfVoxels(image) * helper::getSizeOf(image.getVoxelType());
}

} // namespace

CheckedCase::CheckedCase(Case const& row)
    : algorithm_(AlgoInfo::fromName(row.algorithm.c_str()).createInstance())
{
    for (unsigned int i = 0; i < algorithm_->getNumOfInputProperties(); ++i) {
        if (auto* const input = dynamic_cast<Property<ImageModel const*>*>(algorithm_->getInputProperty(i))) {
            inputs_.push_back(std::make_unique<memory::InMemoryImage>());
            *input = inputs_.back().get();
        }
    }
    for (unsigned int i = 0; i < algorithm_->getNumOfOutputProperties(); ++i) {
        if (auto* const output = dynamic_cast<Property<ImageModel*>*>(algorithm_->getOutputProperty(i))) {
            *output = &output_;
            hasOutputImage_ = true;
        }
    }
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
    numOfBytes_ = inputs_.size() * bytesOf(*inputs_.front()) + (hasOutputImage_ ? bytesOf(output_) : 0);
}

void CheckedCase::prepare(Case const& row, Size const& size)
{
    for (auto const& input : inputs_) {
        fillWithNoise(*input, row.inputType, size, row.levels);
    }
    output_.allocate(row.outputType, 1, 1, 1, 1, 1);
}

void CheckedCase::check(Case const& row)
{
    Size const crop{std::min(row.size.columns, 37U), std::min(row.size.rows, 23U), std::min(row.size.plans, 11U)};
    prepare(row, crop);
    run();
    if (results() != row.reference(voxelsOf(*inputs_.front()), crop)) {
        throw std::runtime_error(row.name() + ": the result is not that of the reference");
    }
}

/// The voxels of the output image, or else the numbers that the algorithm gives.
std::vector<double> CheckedCase::results()
{
    if (hasOutputImage_) {
        return voxelsOf(output_);
    }
    std::vector<double> numbers;
    for (unsigned int i = 0; i < algorithm_->getNumOfOutputProperties(); ++i) {
        numbers.push_back(dynamic_cast<Property<double> const&>(*algorithm_->getOutputProperty(i)));
    }
    return numbers;
}

} // namespace mox::benchmarks
