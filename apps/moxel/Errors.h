#pragma once

#include <stdexcept>
#include <string>

namespace moxel {

/// Wrong words on the command line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file that cannot be read or written.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The user asked to stop.
class Cancelled : public std::runtime_error {
public:
    Cancelled()
        : std::runtime_error("cancelled")
    {
    }
};

inline std::string quoted(std::string const& text)
{
    return '"' + text + '"';
}

} // namespace moxel
