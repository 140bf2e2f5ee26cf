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

    using BorderCondition<T>::readRow;
    void readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end, Position p) const override;
    T const* constant() const override { return &value_; }

private:
    T value_;
};

} // namespace mox::access
