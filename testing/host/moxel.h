#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "apps/moxel/CommandLine.h"

namespace moxel::testing {

/// Runs the host with the words, which it must carry out; what it prints is the result.
inline std::string moxel(std::vector<std::string> words)
{
    words.insert(words.begin(), "moxel");
    std::vector<char const*> arguments;
    for (std::string const& word : words) {
        arguments.push_back(word.c_str());
    }
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(runCommandLine(static_cast<int>(arguments.size()), arguments.data(), out, err), 0) << err.str();
    return out.str();
}

} // namespace moxel::testing
