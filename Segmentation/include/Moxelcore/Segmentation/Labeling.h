#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

namespace mox::segmentation {

/// Gives every connected component of a plane a label of its own.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, one plan, time step and spectral channel |
/// | "output" | `ImageModel*` | null | any integer type, which bounds the number of labels; a fresh image is uint8 |
///
/// A voxel belongs to a component when it is not 0 (a NaN does, -0.0 does not). Components are connected by their
/// sides and corners: a voxel has 8 neighbours. They are numbered 1, 2, ... in the order in which a scan by rows meets
/// them first; the other voxels get 0. The result does not depend on the number of threads.
///
/// The output takes the input's sizes and calibration and is interpreted as label image. It may be the input itself
/// when that has an integer type.
///
/// Components are counted before anything is written: more than the output's type can tell apart throw `RuntimeError`,
/// and the output's voxels stay. Throws `RuleException` for a null or complex input, one with several plans, time
/// steps or channels, and for a null, floating or fixed output.
///
/// Runs of columns in strips of two rows are joined by union-find, within bands of rows in parallel and then between
/// them. Takes 1/8 byte per voxel, 4 bytes per run of a strip, and more for those at the edge of a band: at worst, for
/// dots that do not touch, 1.7 bytes per voxel in all. An image no higher than a few bands, of 64 rows, takes more.
class MOXELCORE_API Labeling final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(Labeling)

    Property<ImageModel const*> input;
    Property<ImageModel*> output;
};

} // namespace mox::segmentation
