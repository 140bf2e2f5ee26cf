#include <string_view>

#include "benchmarks/Cases.h"
#include "testing/references/morphology.h"
#include "testing/references/morphologyElements.h"

namespace mox::benchmarks {

namespace {

using testing::Extremum;

struct Chain {
    char const* name;
    std::vector<Extremum> extrema;
};

std::vector<Chain> chains()
{
    return {{"Erosion", {Extremum::minimum}},
            {"Dilation", {Extremum::maximum}},
            {"Opening", {Extremum::minimum, Extremum::maximum}},
            {"Closing", {Extremum::maximum, Extremum::minimum}}};
}

/// The element that the properties of a family make, those that are not named at their defaults.
struct ElementOfFamily {
    std::string_view family;
    std::vector<std::pair<std::string, std::string>> properties;
    std::vector<testing::ReferenceStep> steps;

    bool isInPlane() const { return family.ends_with("2D"); }
};

std::vector<ElementOfFamily> elements()
{
    using namespace testing;
    return {
        {"2D", {}, {{squareOf9(), 3}}},
        {"2D", {{"nbIter", "1"}}, {{squareOf9(), 1}}},
        {"2D", {{"nbIter", "1"}, {"neighborhood2D", "MOX_NEIGHBORHOOD2D_4"}}, {{cross4(), 1}}},
        {"3D", {}, {{cubeOf27(), 3}}},
        {"3D", {{"nbIter", "1"}, {"neighborhood3D", "MOX_NEIGHBORHOOD3D_18"}}, {{edged18(), 1}}},
        {"3D", {{"nbIter", "1"}, {"neighborhood3D", "MOX_NEIGHBORHOOD3D_6"}}, {{cross6(), 1}}},
        {"Disk2D", {}, {{squareOf9(), 1}, {cross4(), 2}}},
        {"Disk2D", {{"elementSize", "10"}, {"precision", "MOX_ALGO_PRECISE"}}, {{listed(diskReference(10)), 1}}},
        {"Line2D", {}, {{listed(lineReference2D(10, 3)), 1}}},
        {"Line2D", {{"orientationAngle", "30"}, {"elementSize", "21"}}, {{listed(lineReference2D(30, 21)), 1}}},
        {"Ball3D", {}, {{cross6(), 1}, {cubeOf27(), 2}}},
        {"Ball3D", {{"precision", "MOX_ALGO_PRECISE"}}, {{listed(ballReference(3)), 1}}},
        {"Disk3D", {}, {{listed(tiltedDiskReference(0, 0, 3)), 1}}},
        {"Disk3D",
         {{"thetaAngle", "30"}, {"phiAngle", "60"}, {"elementSize", "5"}},
         {{listed(tiltedDiskReference(30, 60, 5)), 1}}},
        {"Line3D", {}, {{listed(lineReference3D(0, 0, 3)), 1}}},
        {"Line3D",
         {{"thetaAngle", "30"}, {"phiAngle", "60"}, {"elementSize", "21"}},
         {{listed(lineReference3D(30, 60, 21)), 1}}},
    };
}

std::vector<testing::ReferenceStep> mirrored(std::vector<testing::ReferenceStep> steps)
{
    for (testing::ReferenceStep& step : steps) {
        step.element = testing::mirrored(step.element);
    }
    return steps;
}

/// The first operation with the element, the second with its reflection: for a symmetric one there is no difference.
Reference referenceOf(Chain const& chain, ElementOfFamily const& element)
{
    return [extrema = chain.extrema, steps = element.steps](std::vector<double> const& voxels, Size const& size) {
        access::Sizes const sizes{size.columns, size.rows, size.plans, 1, 1};
        std::vector<double> result = testing::extremumReference(voxels, sizes, steps, extrema.front());
        if (extrema.size() > 1) {
            result = testing::extremumReference(result, sizes, mirrored(steps), extrema.back());
        }
        return result;
    };
}

std::vector<Size> sizesFor(ElementOfFamily const& element)
{
    if (element.isInPlane()) {
        return {{512, 512, 1}, {4096, 4096, 1}};
    }
    return {{64, 64, 64}, {256, 256, 256}};
}

} // namespace

std::vector<Case> morphologyCases()
{
    std::vector<Case> cases;
    for (ElementOfFamily const& element : elements()) {
        for (Chain const& chain : chains()) {
            std::string const algorithm = chain.name + std::string(element.family);
            Reference const reference = referenceOf(chain, element);
            for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16, MOX_FLOAT32}) {
                for (Size const& size : sizesFor(element)) {
                    for (OptimLevelType const level : {OptimLevelType::SCALAR, OptimLevelType::VEC_SSE}) {
                        cases.push_back({algorithm, type, type, size, element.properties, reference, level});
                    }
                }
            }
        }
    }
    return cases;
}

} // namespace mox::benchmarks
