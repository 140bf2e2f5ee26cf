#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/MatchingActionTypes.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

namespace mox::morphology {

/// `ApplyMorphologicalLut2D` in space: looks up the pattern of each voxel and its 26 neighbours.
///
/// | property | type | default | |
/// |---|---|---|-|
/// | "input" | `ImageModel const*` | null | any real voxel type, any sizes |
/// | "morphologicalLut" | `MorphologicalLut3D*` | empty table | must have entries |
/// | "matchingFlag" | `MatchingActionTypes` | SET_ONE | what is done to a hit |
/// | "noMatchingFlag" | `MatchingActionTypes` | SET_ZERO | what is done to any other voxel |
/// | "output" | `ImageModel*` | null | gets the input's shape, voxel type and interpretation; may be the input |
///
/// Throws `RuleException` for a null or complex input, an empty table ("The lut property must have a minimal size of
/// 134217728. This current size is 0"), an action that is none, and a null or fixed output.
class MOXELCORE_API ApplyMorphologicalLut3D final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(ApplyMorphologicalLut3D)

    Property<ImageModel const*> input;
    PropertyMorphologicalLut3D morphologicalLut;
    PropertyEnumeration matchingFlag;
    PropertyEnumeration noMatchingFlag;
    Property<ImageModel*> output;
};

} // namespace mox::morphology
