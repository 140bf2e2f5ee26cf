#pragma once

#include <Moxelcore/Core/BaseProperty.h>

#include <memory>
#include <string>

#include "apps/moxel/Json.h"
#include "apps/moxel/PropertyBinding.h"

namespace moxel {

// Properties that hold a `geometry::Transformation2DHandler*` or its counterpart in space.

bool holdsTransformation(mox::BaseProperty const& property);

/// A transformation that is written to a file as JSON. Throws `FileError` when there can be no such file.
std::unique_ptr<PropertyBinding> bindTransformation(mox::BaseProperty& property, std::string const& path,
                                                    BindingOptions const& options);

/// The place for a transformation, unless it has one.
std::unique_ptr<PropertyBinding> prepareTransformation(mox::BaseProperty& property);

/// The class and its parameters: `AffineTransformation2D 1,2,1,0,0,1`; "none" without a transformation.
std::string transformationText(mox::BaseProperty const& property);

/// An object of the class, the parameters, and the matrix of those that are one; null without a transformation.
Json transformationJson(mox::BaseProperty const& property);

} // namespace moxel
