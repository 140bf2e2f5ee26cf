#include "benchmarks/Cases.h"
#include "testing/references/shapeMatching.h"

namespace mox::benchmarks {

namespace {

/// The image is its own template, and both of its gradients, and the mask.
std::vector<double> shapeMatchingReference(std::vector<double> const& voxels, Size const& size)
{
    testing::Plane const plane{static_cast<int>(size.columns), static_cast<int>(size.rows), voxels};
    testing::Matching const matching{plane, plane, plane, plane, plane, 4, false, {1.0}, {0, 90, 180, 270, 360}};
    testing::MatchingResult const result = matchReference(matching);
    return {result.tx, result.ty, result.scale, result.rotation};
}

} // namespace

std::vector<Case> registrationCases()
{
    std::vector<std::pair<std::string, std::string>> const properties = {
        {"rotationStep", "90"}, {"scaleBegin", "1"}, {"scaleEnd", "1"}};
    return {{"ShapeBasedMatching2D", MOX_FLOAT64, MOX_UINT8, {256, 256, 1}, properties, shapeMatchingReference}};
}

} // namespace mox::benchmarks
