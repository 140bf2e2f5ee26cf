#pragma once

#include <iosfwd>
#include <string_view>

namespace mox::serialization {

/// The four bytes that binary files begin with.
class MagicNumberObjectFile {
public:
    static constexpr std::string_view magic = "MOXO";

    static void write(std::ostream& out);
    /// Takes the magic number off the front of the bytes. Throws `SerializationException` when it is another.
    static void read(std::string_view& bytes);
};

} // namespace mox::serialization
