#include <algorithm>
#include <string>

#include "benchmarks/CheckedCase.h"
#include "benchmarks/classification.h"
#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

std::string const& valueOf(Case const& row, std::string const& property)
{
    return std::find_if(row.properties.begin(), row.properties.end(),
                        [&](auto const& p) { return p.first == property; })
        ->second;
}

/// Such as "texture, 13 features, radius 5, 16 levels".
std::string titleOf(Case const& row)
{
    std::string const& group = valueOf(row, "textureFeaturesGroup");
    double const levels = 256 / std::stod(valueOf(row, "binSizeCooccurrence"));
    return "texture, " + std::to_string(std::count(group.begin(), group.end(), ' ')) + " features, radius " +
           valueOf(row, "radius") + ", " + std::to_string(static_cast<int>(levels)) + " levels";
}

} // namespace

/// OpenCV has nothing of the kind.
void compareTextures()
{
    for (Case const& row : textureCases()) {
        CheckedCase checked(row);
        contest(titleOf(row), static_cast<double>(checked.numOfVoxels()), {{"Moxelcore", [&] { checked.run(); }}});
    }
    for (ClassificationCase const& row : classificationCases()) {
        contest(row.name, static_cast<double>(row.size.numOfVoxels()), {{"Moxelcore", row.prepare()}});
    }
}

} // namespace mox::benchmarks
