#pragma once

/// All that an application may include. The splittable blocks and the profiler, which need oneTBB's headers, are
/// left out: include <Moxelcore/Core/access/Profiler.h> for them.

#include <Moxelcore/Core/AbstractPrivateImplementation.h>
#include <Moxelcore/Core/AlgoBorderInfluence.h>
#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/AlgoPrecisionType.h>
#include <Moxelcore/Core/Enum/ArithmeticOperatorType.h>
#include <Moxelcore/Core/Enum/BinaryLogicalOperatorType.h>
#include <Moxelcore/Core/Enum/BorderConditionType.h>
#include <Moxelcore/Core/Enum/DecimationOp.h>
#include <Moxelcore/Core/Enum/GradientMagnitudeOutputType.h>
#include <Moxelcore/Core/Enum/MatchingActionTypes.h>
#include <Moxelcore/Core/Enum/MeasuresIndex.h>
#include <Moxelcore/Core/Enum/Neighborhood2DType.h>
#include <Moxelcore/Core/Enum/Neighborhood3DType.h>
#include <Moxelcore/Core/Enum/SIMILARITY_MEASURE.h>
#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>
#include <Moxelcore/Core/Enum/TransformationType.h>
#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Core/InMemoryImage.h>
#include <Moxelcore/Core/InteractionInterface.h>
#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Core/Runnable.h>
#include <Moxelcore/Core/VoxelTypeDispatch.h>
#include <Moxelcore/Math/MathProperty.h>
#include <Moxelcore/Miscellaneous/BorderConditionExtrapole.h>
#include <Moxelcore/Miscellaneous/Decimate2D.h>
#include <Moxelcore/Morphology/ApplyMorphologicalLut2D.h>
#include <Moxelcore/Morphology/ApplyMorphologicalLut3D.h>
#include <Moxelcore/Morphology/Ball3DMorphology.h>
#include <Moxelcore/Morphology/Disk2DMorphology.h>
#include <Moxelcore/Morphology/Disk3DMorphology.h>
#include <Moxelcore/Morphology/Line2DMorphology.h>
#include <Moxelcore/Morphology/Line3DMorphology.h>
#include <Moxelcore/Morphology/Neighborhood2DMorphology.h>
#include <Moxelcore/Morphology/Neighborhood3DMorphology.h>
#include <Moxelcore/Segmentation/Labeling.h>
#include <Moxelcore/Segmentation/Threshold.h>
