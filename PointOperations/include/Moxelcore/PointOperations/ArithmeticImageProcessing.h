#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/Enum/ArithmeticOperatorType.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

namespace mox::point_operations {

/// An arithmetic operator on two images, voxel by voxel.
///
/// | property             | type                     | default          | |
/// |----------------------|--------------------------|------------------|-|
/// | "input1"             | `ImageModel const*`      | null             | any real voxel type, any sizes |
/// | "input2"             | `ImageModel const*`      | null             | any real voxel type |
/// | "arithmeticOperator" | `ArithmeticOperatorType` | `ARITHMETIC_ADD` | see below |
/// | "output"             | `ImageModel*`            | null             | |
///
/// The inputs have the same sizes and calibration, which the output takes. It is retyped before the run to the type to
/// which the inputs' types promote, and may be an input only when that is the input's own type. With a float64 input it
/// is float64, otherwise with a float32 input float32; of two integer types, rows for the first input and columns for
/// the second:
///
/// | add, subtract, divide | u8 | u16 | u32 | u64 | i8 | i16 | i32 | i64 |
/// |-----|-----|-----|-----|-----|-----|-----|-----|-----|
/// | u8  | i16 | i32 | i64 | i64 | i16 | i16 | i32 | i64 |
/// | u16 | i32 | i32 | i64 | i64 | i32 | i32 | i32 | i64 |
/// | u32 | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 |
/// | u64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 |
/// | i8  | i16 | i32 | i64 | i64 | i16 | i16 | i32 | i64 |
/// | i16 | i16 | i32 | i64 | i64 | i16 | i16 | i32 | i64 |
/// | i32 | i32 | i32 | i64 | i64 | i32 | i32 | i32 | i64 |
/// | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 |
///
/// | multiply | u8 | u16 | u32 | u64 | i8 | i16 | i32 | i64 |
/// |-----|-----|-----|-----|-----|-----|-----|-----|-----|
/// | u8  | u16 | i32 | u64 | u64 | i16 | i16 | i32 | i64 |
/// | u16 | i32 | i32 | u64 | u64 | i32 | i32 | i32 | i64 |
/// | u32 | u64 | u64 | u64 | u64 | i64 | i64 | i64 | i64 |
/// | u64 | u64 | u64 | u64 | u64 | i64 | i64 | i64 | i64 |
/// | i8  | i16 | i32 | i64 | i64 | i16 | i16 | i32 | i64 |
/// | i16 | i16 | i32 | i64 | i64 | i16 | i16 | i32 | i64 |
/// | i32 | i32 | i32 | i64 | i64 | i32 | i32 | i32 | i64 |
/// | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 |
///
/// | minimum | u8 | u16 | u32 | u64 | i8 | i16 | i32 | i64 |
/// |-----|-----|-----|-----|-----|-----|-----|-----|-----|
/// | u8  | u8  | u8  | u8  | u8  | i8  | i16 | i32 | i64 |
/// | u16 | u8  | u16 | u16 | u16 | i8  | i16 | i32 | i64 |
/// | u32 | u8  | u16 | u32 | u32 | i8  | i16 | i32 | i64 |
/// | u64 | u8  | u16 | u32 | u64 | i8  | i16 | i32 | i64 |
/// | i8  | i8  | i8  | i8  | i8  | i8  | i16 | i32 | i64 |
/// | i16 | i16 | i16 | i16 | i16 | i16 | i16 | i32 | i64 |
/// | i32 | i32 | i32 | i32 | i32 | i32 | i32 | i32 | i64 |
/// | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 | i64 |
///
/// | maximum | u8 | u16 | u32 | u64 | i8 | i16 | i32 | i64 |
/// |-----|-----|-----|-----|-----|-----|-----|-----|-----|
/// | u8  | u8  | u16 | u32 | u64 | u8  | u8  | i32 | i64 |
/// | u16 | u16 | u16 | u32 | u64 | u16 | u16 | u16 | i64 |
/// | u32 | u32 | u32 | u32 | u64 | u32 | u32 | u32 | u32 |
/// | u64 | u64 | u64 | u64 | u64 | u64 | u64 | u64 | u64 |
/// | i8  | u8  | u16 | u32 | u64 | i8  | i16 | i32 | i64 |
/// | i16 | u8  | u16 | u32 | u64 | i16 | i16 | i32 | i64 |
/// | i32 | i32 | u16 | u32 | u64 | i32 | i32 | i32 | i64 |
/// | i64 | i64 | i64 | u32 | u64 | i64 | i64 | i64 | i64 |
///
/// Voxels are computed in C++'s common type of the two: integers of less than 32 bits as int. What overflows it wraps,
/// as does what the output's type cannot hold; nothing is clamped. Two uint32 voxels are thus subtracted modulo 2^32
/// although the output is int64. A division by an integer 0 or by a float 0 of either sign gives 0; other integer
/// quotients are truncated towards 0, and the lowest value divided by -1 stays the lowest. Minimum and maximum compare
/// integers by value whatever their types; of floats they give the first voxel unless the second is less, or greater:
/// a NaN of the first stays, one of the second is passed over.
///
/// Throws `InvalidCall` for a number that is no operator, before anything else: "The provided arithmeticOperator is
/// unknow (value=7)". Throws `RuleException` for a null or complex input, inputs of different sizes or calibration, a
/// null output, one that cannot change, and one that is an input and must be retyped. After a refused run, the wish to
/// retype for that run's operator stays with the output for the life of the object; a later run with another operator
/// may fail for it, most visibly one in place.
class MOXELCORE_API ArithmeticImageProcessing final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(ArithmeticImageProcessing)

    Property<ImageModel const*> input1;
    Property<ImageModel const*> input2;
    PropertyEnumeration arithmeticOperator;
    Property<ImageModel*> output;

protected:
    void applyAllRules() override;
};

} // namespace mox::point_operations
