#include "apps/moxel/Colours.h"

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "apps/moxel/Errors.h"
#include "apps/moxel/Interrupt.h"

namespace moxel {

namespace {

using Colour = std::array<unsigned char, 3>;

/// Turning the hue by the golden section each time keeps values that follow each other far apart; brightness changes
/// with a period of its own.
Colour colourOf(mox::uint64 value)
{
    if (value == 0) {
        return {0, 0, 0};
    }
    constexpr double goldenSection = 0.6180339887498949;
    double const turns = static_cast<double>(value % 1000003) * goldenSection;
    double const hue = 6 * (turns - std::floor(turns));
    double const brightness = 255 - 30 * static_cast<double>(value % 4);
    Colour colour{};
    for (std::size_t channel = 0; channel < colour.size(); ++channel) {
        double const distance = std::abs(std::remainder(hue - 2 * static_cast<double>(channel), 6));
        double const share = std::min(std::max(2 - distance, 0.0), 1.0);
        colour[channel] = static_cast<unsigned char>(brightness * (0.25 + 0.75 * share));
    }
    return colour;
}

template <class T>
void paint(mox::ImageModel const& image, mox::ImageModel& picture)
{
    unsigned int const columns = image.getSize(mox::COLUMNS);
    std::vector<T> row(columns);
    std::array<std::vector<unsigned char>, 3> channels;
    channels.fill(std::vector<unsigned char>(columns));
    for (unsigned int y = 0; y < image.getSize(mox::ROWS); ++y) {
        interrupt::check();
        image.readRowAt(columns, row.data(), 0, y, 0, 0, 0);
        for (unsigned int x = 0; x < columns; ++x) {
            Colour const colour = colourOf(static_cast<mox::uint64>(row[x]));
            for (unsigned int channel = 0; channel < 3; ++channel) {
                channels[channel][x] = colour[channel];
            }
        }
        for (unsigned int channel = 0; channel < 3; ++channel) {
            picture.writeRowAt(columns, channels[channel].data(), 0, y, 0, 0, channel);
        }
    }
}

} // namespace

void requireColourForm(mox::ImageModel const& image)
{
    if (!mox::dispatch(mox::IntegerVoxels(), image.getVoxelType(), []<class T>() {})) {
        throw FileError("there are no colours for voxels of type " +
                        std::string(mox::helper::getText(image.getVoxelType()).c_str()));
    }
    for (auto const dimension : {mox::PLANS, mox::TIME_SERIES, mox::SPECTRAL_SERIES}) {
        if (image.getSize(dimension) != 1) {
            throw FileError("a picture in colours has one plan, time step and channel");
        }
    }
}

std::unique_ptr<mox::memory::InMemoryImage> colourPicture(mox::ImageModel const& image)
{
    requireColourForm(image);
    auto picture = std::make_unique<mox::memory::InMemoryImage>();
    picture->allocate(mox::MOX_UINT8, image.getSize(mox::COLUMNS), image.getSize(mox::ROWS), 1, 1, 3);
    for (auto const dimension : {mox::COLUMNS, mox::ROWS}) {
        picture->setCalibrationStep(dimension, image.getCalibrationStep(dimension));
        picture->setCalibrationOrigin(dimension, image.getCalibrationOrigin(dimension));
    }
    picture->setUnit(image.getUnit());
    mox::dispatch(mox::IntegerVoxels(), image.getVoxelType(), [&]<class T>() { paint<T>(image, *picture); });
    return picture;
}

} // namespace moxel
