#pragma once

#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

#include <memory>
#include <string>

#include "apps/moxel/PropertyBinding.h"

namespace moxel {

/// An image that is read from a file.
std::unique_ptr<PropertyBinding> bindInputImage(mox::BaseProperty& property, std::string const& path,
                                                BindingOptions const& options);

/// An image that is written to a file. Throws `UsageError` or `FileError` when there can be no such file.
std::unique_ptr<PropertyBinding> bindOutputImage(mox::BaseProperty& property, std::string const& path,
                                                 BindingOptions const& options);

} // namespace moxel
