#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include "Core/private/access/BorderCondition.h"

namespace mox::access {

/// A voxel outside the image reads the nearest voxel of the image.
template <class T>
class ContinueBorderCondition final : public BorderCondition<T> {
public:
    static boost::shared_ptr<BorderCondition<T>> create() { return boost::make_shared<ContinueBorderCondition>(); }

    using BorderCondition<T>::readRow;
    void readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end, Position p) const override;
};

} // namespace mox::access
