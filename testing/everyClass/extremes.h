#pragma once

#include <functional>
#include <string>
#include <vector>

#include "testing/everyClass/Task.h"

namespace mox::testing {

/// One number of a task, in a property or a list of landmarks, set to an end of what its type can hold.
struct Extreme {
    std::string name;
    std::function<void()> set;
    std::function<void()> restore;
};

/// All of a task, for as long as it lives: each number as 0, -1, lowest, largest and, of floating types, NaN, infinite
/// and denormal; each list empty too.
std::vector<Extreme> extremesOf(Task const& task);

} // namespace mox::testing
