#include "Core/private/filters/PointRow.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace mox::filters {

namespace {

class Stretches {
public:
    Stretches(PointRow const& kernel, Stretch const* inputs, std::size_t numOfInputs, void* output,
              std::size_t outputVoxelSize)
        : kernel_(kernel)
        , numOfInputs_(numOfInputs)
        , output_(output)
        , outputVoxelSize_(outputVoxelSize)
    {
        assert(numOfInputs <= maxNumOfInputs);
        std::copy_n(inputs, numOfInputs, inputs_.begin());
    }

    void apply(std::size_t count, Store store)
    {
        if (store == Store::streamed) {
            makeStreamed(output_, outputVoxelSize_, count,
                         [&](void* out, std::size_t number) { makeNext(out, number); });
        } else {
            makeNext(output_, count);
        }
    }

private:
    void makeNext(void* output, std::size_t count)
    {
        std::array<void const*, maxNumOfInputs> rows = {};
        for (std::size_t i = 0; i < numOfInputs_; ++i) {
            rows[i] = inputs_[i].voxels;
            inputs_[i].voxels = static_cast<char const*>(inputs_[i].voxels) + count * inputs_[i].voxelSize;
        }
        kernel_(rows.data(), output, count);
    }

    PointRow const& kernel_;
    std::array<Stretch, maxNumOfInputs> inputs_ = {};
    std::size_t numOfInputs_;
    void* output_;
    std::size_t outputVoxelSize_;
};

} // namespace

void applyToStretch(PointRow const& kernel, Stretch const* inputs, std::size_t numOfInputs, void* output,
                    std::size_t outputVoxelSize, std::size_t count, Store store)
{
    Stretches(kernel, inputs, numOfInputs, output, outputVoxelSize).apply(count, store);
}

} // namespace mox::filters
