// Builds a table from any definition, the first line, and sets a property of it from any text, the other lines.

#include <Moxelcore/Core/EnumInfo.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "Core/private/PropertyValue.h"
#include "testing/fuzz/require.h"

namespace {

using mox::fuzz::require;

void requireOrder(EnumInfo const& info)
{
    for (int i = 0; i < info.size(); ++i) {
        mox::String const name = info.getNameByIndex(i);
        int const value = info.getEnumByIndex(i);
        require(info.exists(name) && info.exists(value));
        require(info.exists(info.getEnum(name)) && info.exists(info.getName(value)));
    }
}

void readLine(mox::PropertyEnumeration& property, std::string const& line)
{
    EnumInfo const& info = property.getEnumInfo();
    int const before = property.get();
    mox::String echo;
    if (!property.read(line.c_str(), echo)) {
        require(property.get() == before && !info.exists(line.c_str()));
        return;
    }
    int const value = property.get();
    require(info.exists(value));
    require(!info.exists(line.c_str()) || info.getEnum(line.c_str()) == value);
    require(property.read(std::to_string(value).c_str(), echo));
    require(property.get() == value || info.exists(echo)); // a number may be the name of another value
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::istringstream lines(std::string(reinterpret_cast<char const*>(data), size));
    std::string line;
    std::getline(lines, line);
    EnumInfo const info(line.c_str(), "Fuzzed");
    requireOrder(info);
    mox::PropertyEnumeration property;
    mox::PropertyAccess::setEnumInfo(property, info);
    while (std::getline(lines, line)) {
        readLine(property, line);
    }
    return 0;
}
