#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include "Core/private/access/BorderCondition.h"

namespace mox::access {

/// Every voxel outside the image reads one value.
template <class T>
class FixedBorderCondition final : public BorderCondition<T> {
public:
    explicit FixedBorderCondition(T value)
        : value_(value)
    {
    }

    static boost::shared_ptr<BorderCondition<T>> create(T value = T())
    {
        return boost::make_shared<FixedBorderCondition>(value);
    }

    void readRow(ImageModel const& image, T* begin, T* end, int x, int y, int z, int t, int s) const override;

private:
    T value_;
};

} // namespace mox::access
