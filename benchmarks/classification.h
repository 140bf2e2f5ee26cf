#pragma once

#include <functional>
#include <string>
#include <vector>

#include "benchmarks/Cases.h"

namespace mox::benchmarks {

/// Training and classification by a trained model, which the table of cases has no form for.
struct ClassificationCase {
    std::string name;
    Size size;
    std::function<std::function<void()>()> prepare; ///< gives what is timed; throws when its result is wrong
};

std::vector<ClassificationCase> classificationCases();

} // namespace mox::benchmarks
