#pragma once

#include <Moxelcore/Core/BaseProperty.h>
#include <Moxelcore/Core/EnumInfo.h>

#include <memory>
#include <string>

#include "apps/moxel/Json.h"
#include "apps/moxel/PropertyBinding.h"

namespace moxel {

/// What the host can do with properties of one type. The table of kinds in PropertyKind.cpp is the one place that
/// knows types of properties; a new type is a new line there.
struct PropertyKind {
    using Binding = std::unique_ptr<PropertyBinding>;

    bool (*isKindOf)(mox::BaseProperty const&);
    std::string (*typeName)(mox::BaseProperty const&);
    /// Whether the text on the command line is the name of a file.
    bool isFile = false;
    /// Sets the property from a text; throws `UsageError`. The binding, if any, must live as long as the run. Null for
    /// a type that has no text.
    Binding (*bind)(mox::BaseProperty&, std::string const& text, BindingOptions const&) = nullptr;
    /// Gives a result the place that it needs. Null where it needs none.
    Binding (*prepareResult)(mox::BaseProperty&) = nullptr;
    /// The names that a text may hold. Null where there are none.
    EnumInfo const* (*enumerators)(mox::BaseProperty const&) = nullptr;
    /// The value in its two forms. Null for what is only ever in a file.
    std::string (*text)(mox::BaseProperty const&) = nullptr;
    Json (*json)(mox::BaseProperty const&) = nullptr;
};

/// A type that is not in the table has a kind that can do nothing.
PropertyKind const& kindOf(mox::BaseProperty const& property);

} // namespace moxel
