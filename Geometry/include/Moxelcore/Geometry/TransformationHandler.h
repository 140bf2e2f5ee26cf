#pragma once

#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Geometry/Transformation.h>

namespace mox {
namespace geometry {

/// Owns one transformation, or none: the place that a registration puts its result into.
template <class T>
class MOXELCORE_API TransformationHandler {
public:
    TransformationHandler();
    TransformationHandler(TransformationHandler const&) = delete;
    TransformationHandler& operator=(TransformationHandler const&) = delete;
    ~TransformationHandler();

    /// Takes ownership of an object made by `new`, and releases the one that it had.
    void set(T* transformation);
    T* get() const;
    /// Gives up ownership.
    T* takeOwnership();
    void reset();

private:
    T* transformation_ = nullptr;
};

using Transformation2DHandler = TransformationHandler<Transformation2D>;
using Transformation3DHandler = TransformationHandler<Transformation3D>;

extern template class MOXELCORE_API TransformationHandler<Transformation2D>;
extern template class MOXELCORE_API TransformationHandler<Transformation3D>;

} // namespace geometry

extern template class MOXELCORE_API Property<geometry::Transformation2DHandler*>;
extern template class MOXELCORE_API Property<geometry::Transformation3DHandler*>;

} // namespace mox
