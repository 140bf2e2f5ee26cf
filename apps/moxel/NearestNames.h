#pragma once

#include <string>
#include <vector>

namespace moxel {

/// The known names that a mistyped one may have meant, nearest first, at most three. Case does not count.
std::vector<std::string> nearestNames(std::string const& name, std::vector<std::string> const& known);

/// The words of an error: `no <kind> "<name>"`, and the nearest names when there are any.
std::string unknownName(std::string const& kind, std::string const& name, std::vector<std::string> const& known);

} // namespace moxel
