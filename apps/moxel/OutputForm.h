#pragma once

namespace moxel {

/// What a command prints.
enum class OutputForm { text, json };

} // namespace moxel
