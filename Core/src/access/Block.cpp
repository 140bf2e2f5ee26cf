#include <Moxelcore/Core/access/Block.h>

namespace mox::access {

Block::~Block() = default;

GrainedRange GrainedRange::splitOff()
{
    unsigned int const middle = begin + (end - begin) / 2;
    GrainedRange const upper{end, middle, grain};
    end = middle;
    return upper;
}

} // namespace mox::access
