#include <Moxelcore/Math/MathProperty.h>

#include "Core/private/PropertyDefinitions.h"
#include "Core/private/VectorDefinitions.h"
#include "Math/private/VectorTextForm.h"

namespace mox {

#define MOX_INSTANTIATE(V)                                                                                             \
    template class Vector<V>;                                                                                          \
    template class Property<V>;                                                                                        \
    template class Property<Vector<V>*>;                                                                               \
    template class Property<Vector<V> const*>;
MOX_FOR_EACH_MATH_VECTOR(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

#define MOX_INSTANTIATE(M) template class Property<M>;
MOX_FOR_EACH_MATRIX(MOX_INSTANTIATE)
#undef MOX_INSTANTIATE

template class Property<Vector<math::Vector2<int>>>;

} // namespace mox
