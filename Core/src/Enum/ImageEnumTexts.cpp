#include <Moxelcore/Core/Enum/ImageDimension.h>
#include <Moxelcore/Core/Enum/ImageInterpretation.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <array>
#include <cstddef>

namespace mox::helper {

namespace {

struct VoxelTypeRow {
    char const* text;
    unsigned int bytes;
};

constexpr std::array<VoxelTypeRow, 12> voxelTypeRows = {{{"uint8", 1},
                                                         {"uint16", 2},
                                                         {"uint32", 4},
                                                         {"uint64", 8},
                                                         {"int8", 1},
                                                         {"int16", 2},
                                                         {"int32", 4},
                                                         {"int64", 8},
                                                         {"float32", 4},
                                                         {"float64", 8},
                                                         {"complex float32", 8},
                                                         {"complex float64", 16}}};

constexpr std::array<char const*, 5> dimensionTexts = {"columns", "rows", "plans", "time series", "spectral series"};

constexpr std::array<char const*, 3> interpretationTexts = {"binary", "label", "value"};

template <class Row, std::size_t N>
Row const* find(std::array<Row, N> const& rows, int value)
{
    return value >= 0 && value < static_cast<int>(N) ? &rows[static_cast<std::size_t>(value)] : nullptr;
}

} // namespace

unsigned int getSizeOf(VoxelTypes const& voxelType)
{
    auto const* row = find(voxelTypeRows, voxelType);
    return row != nullptr ? row->bytes : 0;
}

String getText(VoxelTypes const& voxelType)
{
    auto const* row = find(voxelTypeRows, voxelType);
    return row != nullptr ? row->text : "";
}

String getText(ImageDimension const& dimension)
{
    auto const* text = find(dimensionTexts, dimension);
    return text != nullptr ? *text : "";
}

String getText(ImageInterpretation const& interpretation)
{
    auto const* text = find(interpretationTexts, interpretation);
    return text != nullptr ? *text : "";
}

} // namespace mox::helper
