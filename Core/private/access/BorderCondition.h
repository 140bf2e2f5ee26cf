#pragma once

#include "Core/private/access/Position.h"
#include "Core/private/access/Sizes.h"

namespace mox::access {

/// Answers reads of rows that may lie partly or wholly outside an image. Has no state that changes: one object
/// serves all threads.
template <class T>
class BorderCondition {
public:
    virtual ~BorderCondition() = default;

    /// Fills [begin, end) with the row that starts at column x of (y, z, t, s). Coordinates may lie anywhere, but
    /// for s, which no condition extends: an s outside throws `UnexpectedError`. So does a row that the image fails
    /// to read. Of an image without voxels, the fixed condition gives its value and the others 0.
    void readRow(ImageModel const& image, T* begin, T* end, int x, int y, int z, int t, int s) const
    {
        readRow(image, Sizes::of(image), begin, end, {x, y, z, t, s});
    }

    /// The same for a caller who knows the sizes and reads many rows.
    virtual void readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end, Position p) const = 0;

    /// The value of every voxel outside, for a condition that knows one whatever the image; else null.
    virtual T const* constant() const { return nullptr; }
};

} // namespace mox::access
