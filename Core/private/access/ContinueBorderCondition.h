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

    void readRow(ImageModel const& image, T* begin, T* end, int x, int y, int z, int t, int s) const override;
};

} // namespace mox::access
