#include "apps/moxel/Enumerators.h"

#include <charconv>

#include "apps/moxel/Errors.h"
#include "apps/moxel/NearestNames.h"
#include "apps/moxel/NumberText.h"

namespace moxel {

std::vector<std::string> enumeratorNames(EnumInfo const& info)
{
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(info.size()));
    for (int i = 0; i < info.size(); ++i) {
        names.emplace_back(info.getNameByIndex(i).c_str());
    }
    return names;
}

int parseEnumerator(EnumInfo const& info, std::string const& text)
{
    if (info.exists(mox::String(text.c_str()))) {
        return info.getEnum(text.c_str());
    }
    int value = 0;
    char const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc() && stop == end && info.exists(value)) {
        return value;
    }
    throw UsageError(unknownName(std::string(info.getEnumName().c_str()), text, enumeratorNames(info)));
}

std::string enumeratorText(EnumInfo const& info, int value)
{
    return info.exists(value) ? info.getName(value).c_str() : numberText(value);
}

} // namespace moxel
