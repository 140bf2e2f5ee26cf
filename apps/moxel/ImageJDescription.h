#pragma once

#include <Moxelcore/Core/ImageModel.h>

#include <string>

#include "apps/moxel/TiffDescription.h"

// The `key=value` lines that ImageJ keeps in a TIFF, by which ImageJ and other programs know the dimensions. Keys that
// begin with `moxel.` hold exactly what ImageJ's own keys and the resolution tags cannot:
//
//     moxel.interpretation=label
//     moxel.step=0.625,0.625,2.5,0,0          by dimension: columns, rows, plans, time series, spectral series
//     moxel.origin=0,0,-12.5,0,0
//     moxel.description=text, see EscapedText.h

namespace moxel {

TiffDescription parseImageJDescription(std::string const& tag);

std::string composeImageJDescription(mox::ImageModel const& image);

} // namespace moxel
