#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/BorderConditionType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::miscellaneous {

/// Shows what a filter reads outside of an image: the image extended beyond its edges by a border condition, zoomed
/// out about its centre.
///
/// | property     | type                  | default | |
/// |--------------|-----------------------|---------|-|
/// | "input"      | `ImageModel const*`   | null    | any real voxel type, any sizes |
/// | "bctype"     | `BorderConditionType` | FIXED   | how the image is extended |
/// | "value"      | `double`              | 0.0     | what FIXED reads outside |
/// | "zoomFactor" | `double`              | 0.0     | size of the output, in sizes of the input |
/// | "output"     | `ImageModel*`         | null    | gets the input's voxel type and calibration |
///
/// With a zoom factor Z, n columns or rows become ceil(n Z), computed in double: above 1 the output shows a margin
/// around the image, with 1 the image itself, below 1 its central part. The output begins at column
/// (1 - Z) 0.5 columns of the input, truncated towards zero, so that an odd margin is one voxel wider at the end; rows
/// likewise. A Z of 0, below 0 or NaN gives an output without voxels. The other sizes are kept.
///
/// | "bctype" | a voxel outside reads |
/// |---|-|
/// | FIXED | "value" in the input's voxel type: for integers truncated, held within the type's limits, NaN as 0 |
/// | MIRROR | the image reflected at each face, the edge voxel repeated |
/// | CONTINUE | the nearest voxel of the image |
/// | DIRECTIONAL_MIRROR | the plane reflected along the direction of the rows, see below |
///
/// DIRECTIONAL_MIRROR repeats the edge voxel at the sides, but not the edge row above and below. Where reflections do
/// not lead into the image, as with a single row, it reads the nearest voxel.
///
/// Starts no parallel loop. Throws `RuleException` for a null or complex input and a null output,
/// "Image cannot be resized" for an output that does not take its sizes, for one of more than 2^30 columns or rows
/// and for one that is the input, unless Z is 1; `InvalidCall` for another "bctype".
class MOXELCORE_API BorderConditionExtrapole final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(BorderConditionExtrapole)

    Property<ImageModel const*> input;
    PropertyEnumeration bctype;
    Property<double> value;
    Property<double> zoomFactor;
    Property<ImageModel*> output;
};

} // namespace mox::miscellaneous
