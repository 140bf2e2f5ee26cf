#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <boost/shared_ptr.hpp>

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "apps/moxel/OutputForm.h"
#include "apps/moxel/TiffWriter.h"

namespace moxel {

/// The words of the command line; those in lists are of the form `name=value`.
struct RunOptions {
    std::vector<std::string> values = {};
    std::vector<std::string> voxelTypes = {};
    std::vector<std::string> interpretations = {};
    std::vector<std::string> pages = {};
    std::vector<std::string> coloured = {}; ///< names of properties alone
    std::string level = "auto";
    std::optional<unsigned int> threads = {};
    int extraMemory = 0;
    Compression compression = Compression::deflate;
    OutputForm form = OutputForm::text;
};

/// Reads the inputs, runs the algorithm, writes the output files and prints the other results. The files take their
/// names after all of them are complete. Throws `UsageError`, `FileError`, `Cancelled` and what the library throws.
void runAlgorithm(boost::shared_ptr<mox::BaseAlgorithm> const& algorithm, RunOptions const& options, std::ostream& out);

} // namespace moxel
