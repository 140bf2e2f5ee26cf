#include <Moxelcore/Geometry/TransformationHandler.h>

#include "Core/private/PropertyDefinitions.h"

namespace mox {
namespace geometry {

template class Transformation<math::Vector2<double>>;
template class Transformation<math::Vector3<double>>;

template <class T>
TransformationHandler<T>::TransformationHandler() = default;

template <class T>
TransformationHandler<T>::~TransformationHandler()
{
    reset();
}

template <class T>
void TransformationHandler<T>::set(T* transformation)
{
    if (transformation != transformation_) {
        reset();
        transformation_ = transformation;
    }
}

template <class T>
T* TransformationHandler<T>::get() const
{
    return transformation_;
}

template <class T>
T* TransformationHandler<T>::takeOwnership()
{
    T* const transformation = transformation_;
    transformation_ = nullptr;
    return transformation;
}

template <class T>
void TransformationHandler<T>::reset()
{
    delete takeOwnership();
}

template class TransformationHandler<Transformation2D>;
template class TransformationHandler<Transformation3D>;

} // namespace geometry

template class Property<geometry::Transformation2DHandler*>;
template class Property<geometry::Transformation3DHandler*>;

} // namespace mox
