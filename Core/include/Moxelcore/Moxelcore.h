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
#include <Moxelcore/Morphology/Ball3DMorphology.h>
#include <Moxelcore/Morphology/Disk2DMorphology.h>
#include <Moxelcore/Morphology/Disk3DMorphology.h>
#include <Moxelcore/Morphology/Line2DMorphology.h>
#include <Moxelcore/Morphology/Line3DMorphology.h>
#include <Moxelcore/Morphology/Neighborhood2DMorphology.h>
#include <Moxelcore/Morphology/Neighborhood3DMorphology.h>
#include <Moxelcore/PointOperations/Anamorphosis.h>
#include <Moxelcore/PointOperations/ArithmeticImageProcessing.h>
#include <Moxelcore/PointOperations/ArithmeticValueProcessing.h>
#include <Moxelcore/PointOperations/BitShift.h>
#include <Moxelcore/PointOperations/GradientMagnitude3D.h>
#include <Moxelcore/PointOperations/InvertImage.h>
#include <Moxelcore/PointOperations/LogicalImageProcessing.h>
#include <Moxelcore/PointOperations/LogicalNotProcessing.h>
#include <Moxelcore/PointOperations/LogicalValueProcessing.h>
#include <Moxelcore/PointOperations/MaskImageProcessing.h>
#include <Moxelcore/Segmentation/IntensityExtrema.h>
#include <Moxelcore/Segmentation/Threshold.h>
