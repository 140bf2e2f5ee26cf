#include <algorithm>
#include <cmath>
#include <numeric>

#include "benchmarks/Cases.h"

namespace mox::benchmarks {

namespace {

constexpr Size sizes[] = {{512, 512, 1}, {4096, 4096, 1}, {512, 512, 512}};

using Voxels = std::vector<double>;

/// A reference that makes each voxel of the voxel at its place.
template <double (*make)(double)>
Voxels eachVoxel(Voxels const& voxels, Size const&)
{
    Voxels results(voxels.size());
    std::transform(voxels.begin(), voxels.end(), results.begin(), make);
    return results;
}

double sum(double v)
{
    return v + v;
}
double difference(double)
{
    return 0;
}
double product(double v)
{
    return v * v;
}
double quotient(double v)
{
    return v == 0 ? 0 : 1;
}
double same(double v)
{
    return v;
}
double half(double v)
{
    return std::trunc(v / 2);
}
double lowestBits(double v)
{
    return std::fmod(v, 16);
}
double squareTable(double v)
{
    return std::fmod(v * v, 256);
}
double threeVoxels(double v)
{
    return std::sqrt(3 * v * v);
}

Voxels extrema(Voxels const& voxels, Size const&)
{
    auto const [low, high] = std::minmax_element(voxels.begin(), voxels.end());
    return {*low, *high, std::accumulate(voxels.begin(), voxels.end(), 0.0) / static_cast<double>(voxels.size())};
}

template <VoxelTypes type>
Voxels inverted(Voxels const& voxels, Size const&)
{
    double const largest = std::ldexp(1.0, static_cast<int>(8 * helper::getSizeOf(type))) - 1;
    Voxels results(voxels.size());
    std::transform(voxels.begin(), voxels.end(), results.begin(), [largest](double v) { return largest - v; });
    return results;
}

template <VoxelTypes type>
Voxels shifted(Voxels const& voxels, Size const&)
{
    double const size = std::ldexp(1.0, static_cast<int>(8 * helper::getSizeOf(type)));
    Voxels results(voxels.size());
    std::transform(voxels.begin(), voxels.end(), results.begin(), [size](double v) { return std::fmod(2 * v, size); });
    return results;
}

/// Entries of the squares modulo 256, which every voxel type holds.
std::string lut()
{
    std::string text;
    for (int i = 0; i < 256; ++i) {
        text += std::to_string(i * i % 256) + ' ';
    }
    return text;
}

struct Row {
    char const* algorithm;
    VoxelTypes type;
    std::vector<std::pair<std::string, std::string>> properties;
    Reference reference;
};

std::vector<Row> rows()
{
    auto const op = [](char const* name) {
        return std::vector<std::pair<std::string, std::string>>{{"arithmeticOperator", name}};
    };
    auto const logic = [](char const* name) {
        return std::vector<std::pair<std::string, std::string>>{{"logicalOperator", name}};
    };
    char const* const images = "ArithmeticImageProcessing";
    char const* const values = "ArithmeticValueProcessing";
    std::vector<Row> result = {
        {images, MOX_UINT8, op("ARITHMETIC_ADD"), eachVoxel<sum>},
        {images, MOX_UINT8, op("ARITHMETIC_SUBTRACT"), eachVoxel<difference>},
        {images, MOX_UINT8, op("ARITHMETIC_DIVIDE"), eachVoxel<quotient>},
        {images, MOX_UINT16, op("ARITHMETIC_MULTIPLY"), eachVoxel<product>},
        {images, MOX_UINT16, op("ARITHMETIC_DIVIDE"), eachVoxel<quotient>},
        {images, MOX_INT32, op("ARITHMETIC_DIVIDE"), eachVoxel<quotient>},
        {images, MOX_FLOAT32, op("ARITHMETIC_MULTIPLY"), eachVoxel<product>},
        {images, MOX_FLOAT32, op("ARITHMETIC_DIVIDE"), eachVoxel<quotient>},
        {images, MOX_FLOAT32, op("ARITHMETIC_MINIMUM"), eachVoxel<same>},
        {images, MOX_UINT8, op("ARITHMETIC_MAXIMUM"), eachVoxel<same>},
        {values, MOX_UINT8, {{"inputValue", "2"}, {"arithmeticOperator", "ARITHMETIC_DIVIDE"}}, eachVoxel<half>},
        {values, MOX_FLOAT32, {{"inputValue", "0"}, {"arithmeticOperator", "ARITHMETIC_ADD"}}, eachVoxel<same>},
        {"LogicalNotProcessing", MOX_UINT8, {}, inverted<MOX_UINT8>},
        {"InvertImage", MOX_UINT8, {}, inverted<MOX_UINT8>},
        {"InvertImage", MOX_UINT16, {}, inverted<MOX_UINT16>},
        {"BitShift", MOX_UINT8, {}, shifted<MOX_UINT8>},
        {"BitShift", MOX_UINT16, {}, shifted<MOX_UINT16>},
        {"GradientMagnitude3D", MOX_FLOAT64, {}, eachVoxel<threeVoxels>},
        {"GradientMagnitude3D", MOX_FLOAT32, {{"outputMode", "1"}}, eachVoxel<same>},
    };
    for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16}) {
        result.push_back({"LogicalImageProcessing", type, logic("LOGICAL_AND"), eachVoxel<same>});
        result.push_back({"LogicalValueProcessing",
                          type,
                          {{"inputValue", "15"}, {"logicalOperator", "LOGICAL_AND"}},
                          eachVoxel<lowestBits>});
        result.push_back({"MaskImageProcessing", type, {}, eachVoxel<same>});
    }
    for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16, MOX_FLOAT32}) {
        result.push_back({"Anamorphosis", type, {{"lut", lut()}}, eachVoxel<squareTable>});
    }
    for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16, MOX_INT32, MOX_FLOAT32}) {
        result.push_back({"IntensityExtrema", type, {}, extrema});
    }
    return result;
}

} // namespace

std::vector<Case> pointOperationsCases()
{
    std::vector<Case> cases;
    for (Row const& row : rows()) {
        for (Size const& size : sizes) {
            cases.push_back({row.algorithm, row.type, row.type, size, row.properties, row.reference});
        }
    }
    return cases;
}

} // namespace mox::benchmarks
