#include <Moxelcore/Core/PropertyEnumeration.h>

#include "Core/private/Helper/raise.h"
#include "Core/private/TextForm.h"

namespace mox {

PropertyEnumeration::PropertyEnumeration() = default;
PropertyEnumeration::PropertyEnumeration(PropertyEnumeration const& other) = default;
PropertyEnumeration& PropertyEnumeration::operator=(PropertyEnumeration const& other) = default;
PropertyEnumeration::~PropertyEnumeration() = default;

bool PropertyEnumeration::read(String const& text, String& echo)
{
    echo = text;
    if (isLocked()) {
        return false;
    }
    EnumInfo const& info = getEnumInfo();
    if (info.exists(text)) {
        set(info.getEnum(text));
        return true;
    }
    int value = 0;
    if (!readText(text, value) || !info.exists(value)) {
        return false;
    }
    set(value);
    return true;
}

EnumInfo const& PropertyEnumeration::getEnumInfo() const
{
    if (info_ == nullptr) {
        helper::raise<RuntimeError>("Core/src/PropertyEnumeration",
                                    "no enumeration info associated with the EnumProperty");
    }
    return *info_;
}

} // namespace mox
