#pragma once

#include <iosfwd>

namespace moxel {

/// How the program ends.
enum ExitCode : int { exitDone = 0, exitFailed = 1, exitUsage = 2, exitCancelled = 130 };

/// The whole program: carries out the command and tells errors. `arguments` begins with the program's name.
ExitCode runCommandLine(int count, char const* const* arguments, std::ostream& out, std::ostream& err);

} // namespace moxel
