#include "Core/private/Serialization/MagicNumberObjectFile.h"

#include <Moxelcore/Core/Exception.h>

#include <algorithm>
#include <ostream>
#include <string>

#include "Core/private/Helper/raise.h"

namespace mox::serialization {

void MagicNumberObjectFile::write(std::ostream& out)
{
    out.write(magic.data(), static_cast<std::streamsize>(magic.size()));
}

void MagicNumberObjectFile::read(std::string_view& bytes)
{
    std::string found(bytes.substr(0, magic.size()));
    if (found != magic) {
        found.erase(std::remove(found.begin(), found.end(), '\0'), found.end()); // it would end the text
        helper::raise<SerializationException>("Core/private/Serialization/MagicNumberObjectFile",
                                              "Invalid magic number: <", found, ">");
    }
    bytes.remove_prefix(magic.size());
}

} // namespace mox::serialization
