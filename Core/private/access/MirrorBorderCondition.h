#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include "Core/private/access/BorderCondition.h"

namespace mox::access {

/// The image is reflected at each face, the edge voxel repeated: ... 1, 0, 0, 1, ..., m - 1, m - 1, m - 2, ...
template <class T>
class MirrorBorderCondition final : public BorderCondition<T> {
public:
    static boost::shared_ptr<BorderCondition<T>> create() { return boost::make_shared<MirrorBorderCondition>(); }

    using BorderCondition<T>::readRow;
    void readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end, Position p) const override;
};

} // namespace mox::access
