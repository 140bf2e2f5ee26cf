#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "testing/fuzz/require.h"

namespace mox::fuzz {

/// A file without a place on a disk, for readers that ask for a path.
class MemoryFile {
public:
    MemoryFile(std::uint8_t const* data, std::size_t size)
        : descriptor_(::memfd_create("fuzz", 0))
    {
        require(::write(descriptor_, data, size) == static_cast<ssize_t>(size));
    }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;
    ~MemoryFile() { ::close(descriptor_); }

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;
};

} // namespace mox::fuzz
