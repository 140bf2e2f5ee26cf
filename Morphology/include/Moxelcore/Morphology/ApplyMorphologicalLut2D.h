#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/MatchingActionTypes.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

namespace mox::morphology {

/// Looks up the binary pattern of each voxel and its 8 neighbours in a table, does one thing to the voxels that are
/// hits and another to those that are not, and repeats that until no voxel changes.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes |
/// | "morphologicalLut" | `MorphologicalLut2D*` | empty table | must have entries |
/// | "matchingFlag" | `MatchingActionTypes` | SET_ONE | what is done to a hit |
/// | "noMatchingFlag" | `MatchingActionTypes` | SET_ZERO | what is done to any other voxel |
/// | "output" | `ImageModel*` | null | gets the input's shape, voxel type and interpretation; may be the input |
///
/// | action       | gives |
/// |--------------|-------|
/// | SET_ZERO     | 0 |
/// | SET_ONE      | 1 |
/// | SET_CHANGE   | 1 for a voxel that is 0, 0 for any other |
/// | SET_UNCHANGE | the voxel as it is |
///
/// A voxel counts as set when it is not 0; outside of the image all voxels are 0. Each plan is an image of its own. A
/// pass reads the image as the pass before has left it. Passes end when one changes no voxel of all plans and series.
/// A table may go to and fro for ever: when a pass gives the image of two passes before, the result is that of the
/// pass before; and there are no more passes than the image has voxels. To apply a table once, choose the actions so
/// that a second pass finds nothing to change.
///
/// Progress goes back when one more pass turns out to be needed. The output is written when all is computed; a
/// cancelled run leaves its voxels alone. Takes memory for two images beside its own.
///
/// Throws `RuleException` for a null or complex input, an empty table ("The lut property must have a minimal size of
/// 512. This current size is 0"), an action that is none, and a null or fixed output.
class MOXELCORE_API ApplyMorphologicalLut2D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(ApplyMorphologicalLut2D)

    Property<ImageModel const*> input;
    PropertyMorphologicalLut2D morphologicalLut;
    PropertyEnumeration matchingFlag;
    PropertyEnumeration noMatchingFlag;
    Property<ImageModel*> output;
};

} // namespace mox::morphology
