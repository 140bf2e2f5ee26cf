#include "Core/private/VectorDefinitions.h"

namespace mox {

template class Vector<unsigned char>;
template class Vector<int>;
template class Vector<unsigned int>;
template class Vector<int64>;
template class Vector<uint64>;
template class Vector<double>;
template class Vector<segmentation::TextureFeatureTypes>;

} // namespace mox
