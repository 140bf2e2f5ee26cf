#pragma once

#include <Moxelcore/Core/BaseProperty.h>

#include <memory>
#include <string>

#include "apps/moxel/PropertyBinding.h"

namespace moxel {

/// A classification model that is read from a file.
std::unique_ptr<PropertyBinding> bindInputModel(mox::BaseProperty& property, std::string const& path,
                                                BindingOptions const& options);

/// A classification model that is read from a file, changed, and written to the same file.
std::unique_ptr<PropertyBinding> bindChangedModel(mox::BaseProperty& property, std::string const& path,
                                                  BindingOptions const& options);

/// A classification model that the algorithm makes. The extension tells the form: ".xml", ".txt", else binary. Throws
/// `FileError` when there can be no such file, as does `bindChangedModel`.
std::unique_ptr<PropertyBinding> bindNewModel(mox::BaseProperty& property, std::string const& path,
                                              BindingOptions const& options);

} // namespace moxel
