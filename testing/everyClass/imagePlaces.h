#pragma once

#include <Moxelcore/Core/InMemoryImage.h>
#include <Moxelcore/Core/Property.h>

#include <memory>

#include "testing/everyClass/Place.h"

namespace mox::testing {

/// Gives the image sizes and voxels as entry and form tell.
void fill(memory::InMemoryImage& image, ImageEntry const& entry, TaskForm const& form);

std::unique_ptr<Place> placeOf(Property<ImageModel const*>& property, ImageEntry const& entry, TaskForm const& form);
std::unique_ptr<Place> placeOf(Property<ImageModel*>& property, ImageEntry const& entry);

/// The sizes, the type, the interpretation and the voxels.
void append(Bytes& bytes, ImageModel const& image);

/// Calls a function with the coordinates y, z, t, s of every row.
template <class Function>
void forEachRow(ImageModel const& image, Function const& function)
{
    for (unsigned int s = 0; s < image.getSize(SPECTRAL_SERIES); ++s) {
        for (unsigned int t = 0; t < image.getSize(TIME_SERIES); ++t) {
            for (unsigned int z = 0; z < image.getSize(PLANS); ++z) {
                for (unsigned int y = 0; y < image.getSize(ROWS); ++y) {
                    function(y, z, t, s);
                }
            }
        }
    }
}

} // namespace mox::testing
