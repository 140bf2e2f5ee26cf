#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Classification/private/TextureClassificationModelPrivate.h"

/// The content of model files.
namespace mox::classification::modelFile {

/// The same whatever locale the application has chosen. The model must have a classifier.
std::string compose(TextureClassificationModelPrivate const& model, WriteMode mode);

/// The path tells the form. Throws `SerializationException` and `boost::archive::archive_exception`.
std::unique_ptr<TextureClassificationModelPrivate> parse(String const& path, std::string_view bytes);

} // namespace mox::classification::modelFile
