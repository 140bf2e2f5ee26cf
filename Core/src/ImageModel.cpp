#include <Moxelcore/Core/ImageModel.h>

namespace mox {

ImageModel::~ImageModel() = default;

} // namespace mox
