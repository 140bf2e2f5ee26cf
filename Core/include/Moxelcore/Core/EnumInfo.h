#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/String.h>

/// Names and values of an enumeration at run time, read from a definition such as "SCALAR = 0 , VEC_SSE".
/// Immutable once built; a copy is a table of its own.
class MOXELCORE_API EnumInfo {
public:
    /// Names are separated by commas. A name without "=" gets the value before it plus 1, the first one 1; the
    /// largest is followed by the smallest. A value that is no number counts as absent without the step of 1.
    EnumInfo(char const* definition, char const* enumName);
    EnumInfo(EnumInfo const& other);
    EnumInfo& operator=(EnumInfo const& other);
    ~EnumInfo();

    /// Number of entries.
    int size() const;

    bool exists(mox::String const& name) const;
    bool exists(int value) const;

    /// Throws `std::out_of_range` with the text "invalid map<K, T> key" for an unknown name.
    int getEnum(mox::String const& name) const;
    /// Throws `std::out_of_range` with the text "invalid map<K, T> key" for an unknown value.
    mox::String getName(int value) const;

    /// Entry `index` in order of declaration. The index is not checked.
    int getEnumByIndex(int index) const;
    mox::String getNameByIndex(int index) const;

    /// The enumeration's own name.
    mox::String getEnumName() const;

private:
    struct Table;
    Table* table_;
};

namespace mox {

/// The table of an enumeration of the library, built on first use. Each header of `Core/Enum` declares its own.
template <class Enumeration>
EnumInfo const& getEnumInfo();

} // namespace mox
