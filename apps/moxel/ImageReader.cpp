#include "apps/moxel/ImageReader.h"

#include <new>
#include <stdexcept>

#include "apps/moxel/Errors.h"
#include "apps/moxel/FileLimits.h"

namespace moxel {

void ImageHeader::applyTo(mox::ImageModel& image) const
{
    auto const bytes = product({sizes[0], sizes[1], sizes[2], sizes[3], sizes[4], mox::helper::getSizeOf(voxelType)});
    if (!bytes || *bytes > physicalMemory()) {
        throw FileError("the image does not fit in the memory of this machine");
    }
    try {
        image.allocate(voxelType, sizes[0], sizes[1], sizes[2], sizes[3], sizes[4]);
    } catch (std::bad_alloc const&) {
        throw FileError("there is not enough memory for the image");
    }
    for (std::size_t i = 0; i < numOfDimensions; ++i) {
        auto const dimension = static_cast<mox::ImageDimension>(i);
        image.setCalibrationStep(dimension, step[i]);
        image.setCalibrationOrigin(dimension, origin[i]);
    }
    image.setUnit(unit.c_str());
    image.setDescription(description.c_str());
    image.setInterpretation(interpretation);
}

void* rowOf(mox::ImageModel& image, unsigned int row, PagePosition const& position)
{
    void* pointer = nullptr;
    if (!image.getRowPointerAt(image.getSize(mox::COLUMNS), pointer, 0, row, position.plan, position.time,
                               position.channel)) {
        throw std::logic_error("a page of a file lies outside its image");
    }
    return pointer;
}

} // namespace moxel
