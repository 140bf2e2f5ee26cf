#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/String.h>

namespace mox::classification {

struct TextureClassificationModelPrivate;

/// The forms of a model file.
enum WriteMode : int { WRITE_MODE_BINARY = 0, WRITE_MODE_TEXT = 1, WRITE_MODE_XML = 2 };

/// A texture classifier and the recipe of the features that it was trained on. Made by
/// `CreateTextureClassification2D`, trained by `TextureTraining2D`, used by `ApplyClassification`, kept in a file.
/// Copies are deep.
class MOXELCORE_API TextureClassificationModel {
public:
    /// Without a classifier.
    TextureClassificationModel();
    TextureClassificationModel(TextureClassificationModel const& other);
    TextureClassificationModel& operator=(TextureClassificationModel const& other);
    virtual ~TextureClassificationModel();

    /// Becomes the model of a file. The extension tells the form: ".xml" and ".txt", in small or capital letters,
    /// else binary, whatever the content.
    ///
    /// Throws `SerializationException` for a file that is absent, cannot be opened, is larger than 1 GiB or holds no
    /// model, and `boost::archive::archive_exception` for damaged ones. The model is unchanged then. No content
    /// makes it read out of bounds, take memory out of proportion to the file, or never end.
    void read(String const& path);

    /// An extension is not added: for a file that `read` understands, that of the path must be the mode's.
    ///
    /// Throws `SerializationException` without a classifier, for a file that exists unless `overwrite`, for one that
    /// cannot be opened or written, and for an unknown mode. An old file is lost only where writing fails.
    void write(String const& path, WriteMode const& mode, bool overwrite) const;

    /// The recipe, line by line. Throws `InvalidCall` without a classifier.
    String getInfo() const;

private:
    friend struct ModelAccess;
    TextureClassificationModelPrivate* private_;
};

} // namespace mox::classification

namespace mox {

extern template class MOXELCORE_API Property<classification::TextureClassificationModel**>;
extern template class MOXELCORE_API Property<classification::TextureClassificationModel*>;
extern template class MOXELCORE_API Property<classification::TextureClassificationModel const*>;

} // namespace mox
