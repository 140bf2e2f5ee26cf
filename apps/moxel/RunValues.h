#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <string>
#include <vector>

#include "apps/moxel/PropertyBinding.h"
#include "apps/moxel/RunCommand.h"

namespace moxel {

/// A property that the command line gives, and what its options say of it.
struct RunValue {
    mox::BaseProperty* property;
    std::string text;
    BindingOptions options;
};

/// The dimension that pages may be: "plans", "time" or "spectral". Throws `UsageError`.
mox::ImageDimension parsePages(std::string const& text);

/// Matches the words of the command line with the algorithm's properties, in the order of the command line. Throws
/// `UsageError` for names that do not exist, come twice or cannot be given.
std::vector<RunValue> readRunValues(mox::BaseAlgorithm const& algorithm, RunOptions const& options);

} // namespace moxel
