#include "Core/private/PropertyDefinitions.h"

#include <Moxelcore/Core/ImageModel.h>

namespace mox {

template class Property<bool>;
template class Property<int>;
template class Property<unsigned int>;
template class Property<int64>;
template class Property<uint64>;
template class Property<double>;
template class Property<String>;
template class Property<ImageModel*>;
template class Property<ImageModel const*>;
template class Property<Vector<unsigned char>>;
template class Property<Vector<int>>;
template class Property<Vector<unsigned int>>;
template class Property<Vector<int64>>;
template class Property<Vector<uint64>>;
template class Property<Vector<double>>;

} // namespace mox
