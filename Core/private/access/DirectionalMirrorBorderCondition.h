#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include "Core/private/access/BorderCondition.h"

namespace mox::access {

/// The plane is reflected along one direction. A plan, time or spectral index outside throws `UnexpectedError`.
///
/// A point outside is mirrored at the line of that direction through the corner that it lies behind, or, where no
/// such line applies, along the direction at the side that it has left, until it lies inside. Images of one row or
/// column would turn some points round for ever: after 64 reflections the point is moved to the nearest voxel.
template <class T>
class DirectionalMirrorBorderCondition final : public BorderCondition<T> {
public:
    /// The angle is in radians.
    explicit DirectionalMirrorBorderCondition(double angle);

    static boost::shared_ptr<BorderCondition<T>> create(double angle)
    {
        return boost::make_shared<DirectionalMirrorBorderCondition>(angle);
    }

    using BorderCondition<T>::readRow;
    void readRow(ImageModel const& image, Sizes const& sizes, T* begin, T* end, Position p) const override;

private:
    double directionX_; // never negative
    double directionY_;
    double slope_;
};

} // namespace mox::access
