#include "PointOperations/private/ArithmeticValueProcessingScalarGeneric.h"

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <algorithm>
#include <cstring>

namespace mox::point_operations {

ArithmeticValueProcessingScalarGeneric::ArithmeticValueProcessingScalarGeneric(filters::PointRow const& operation,
                                                                               VoxelTypes imageType,
                                                                               VoxelTypes outputType,
                                                                               VoxelTypes numberType, double number)
    : operation_(operation)
    , inputVoxelSize_(helper::getSizeOf(imageType))
    , outputVoxelSize_(helper::getSizeOf(outputType))
{
    dispatch(TypeVector<short, int, int64, float, double>(), numberType, [&]<class T>() {
        std::array<T, rowLength> row;
        row.fill(static_cast<T>(number)); // exact: the type was chosen for the number
        std::memcpy(numbers_.data(), row.data(), sizeof row);
    });
}

filters::PointRow ArithmeticValueProcessingScalarGeneric::row() const
{
    return {this, [](void const* kernel, void const* const* inputs, void* output, std::size_t count) {
                static_cast<ArithmeticValueProcessingScalarGeneric const*>(kernel)->apply(
                    static_cast<char const*>(inputs[0]), static_cast<char*>(output), count);
            }};
}

void ArithmeticValueProcessingScalarGeneric::apply(char const* in, char* out, std::size_t count) const
{
    for (std::size_t done = 0; done < count; done += rowLength) {
        void const* const inputs[] = {in + done * inputVoxelSize_, numbers_.data()};
        operation_(inputs, out + done * outputVoxelSize_, std::min(rowLength, count - done));
    }
}

} // namespace mox::point_operations
