#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/EnumInfo.h>
#include <Moxelcore/Core/Property.h>

namespace mox {

/// An `int` parameter whose values have names.
class MOXELCORE_API PropertyEnumeration : public Property<int> {
public:
    PropertyEnumeration();
    PropertyEnumeration(PropertyEnumeration const& other);
    PropertyEnumeration& operator=(PropertyEnumeration const& other);
    ~PropertyEnumeration() override;

    using Property<int>::operator=;

    /// Takes a name or a number of the enumeration. Throws `RuntimeError` when the property has no table.
    /// `echo` receives the text also when the property is locked.
    bool read(String const& text, String& echo) override;

    /// Throws `RuntimeError` "no enumeration info associated with the EnumProperty" when the property has no table.
    EnumInfo const& getEnumInfo() const;

private:
    friend struct PropertyAccess;
    EnumInfo const* info_ = nullptr;
};

} // namespace mox
