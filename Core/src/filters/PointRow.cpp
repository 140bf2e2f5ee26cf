#include "Core/private/filters/PointRow.h"

#include <emmintrin.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>

#include "Core/private/Cpu.h"

namespace mox::filters {

namespace {

constexpr std::size_t alignment = sizeof(__m128i);

/// Small enough to stay in the fastest cache beside the input.
constexpr std::size_t bufferSize = 4096;

/// A processor that does not tell its cache is taken to have as much.
constexpr std::size_t usualCacheSize = std::size_t{32} << 20U;

class Stretches {
public:
    Stretches(PointRow const& kernel, Stretch const* inputs, std::size_t numOfInputs, void* output,
              std::size_t outputVoxelSize)
        : kernel_(kernel)
        , numOfInputs_(numOfInputs)
        , output_(static_cast<char*>(output))
        , outputVoxelSize_(outputVoxelSize)
    {
        assert(numOfInputs <= maxNumOfInputs);
        std::copy_n(inputs, numOfInputs, inputs_.begin());
    }

    void apply(std::size_t count)
    {
        applyTo(output_, count);
        output_ += count * outputVoxelSize_;
    }

    void applyStreamed(std::size_t count)
    {
        std::size_t const misaligned = reinterpret_cast<std::uintptr_t>(output_) % alignment;
        std::size_t const head = std::min(count, (alignment - misaligned) % alignment / outputVoxelSize_);
        apply(head);
        std::size_t rest = count - head;
        for (std::size_t const chunk = bufferSize / outputVoxelSize_; rest >= chunk; rest -= chunk) {
            alignas(alignment) char buffer[bufferSize];
            applyTo(buffer, chunk);
            stream(buffer);
        }
        apply(rest);
        _mm_sfence();
    }

private:
    void applyTo(void* output, std::size_t count)
    {
        std::array<void const*, maxNumOfInputs> rows = {};
        for (std::size_t i = 0; i < numOfInputs_; ++i) {
            rows[i] = inputs_[i].voxels;
            inputs_[i].voxels = static_cast<char const*>(inputs_[i].voxels) + count * inputs_[i].voxelSize;
        }
        kernel_(rows.data(), output, count);
    }

    void stream(char const* buffer)
    {
        for (std::size_t i = 0; i < bufferSize; i += alignment) {
            _mm_stream_si128(reinterpret_cast<__m128i*>(output_ + i),
                             _mm_load_si128(reinterpret_cast<__m128i const*>(buffer + i)));
        }
        output_ += bufferSize;
    }

    PointRow const& kernel_;
    std::array<Stretch, maxNumOfInputs> inputs_ = {};
    std::size_t numOfInputs_;
    char* output_;
    std::size_t outputVoxelSize_;
};

} // namespace

Store storeFor(std::size_t numOfBytes)
{
    auto const told = static_cast<std::size_t>(devices::Cpu::get().l3Cache) << 10U;
    return numOfBytes > (told > 0 ? told : usualCacheSize) ? Store::streamed : Store::cached;
}

void applyToStretch(PointRow const& kernel, Stretch const* inputs, std::size_t numOfInputs, void* output,
                    std::size_t outputVoxelSize, std::size_t count, Store store)
{
    Stretches stretches(kernel, inputs, numOfInputs, output, outputVoxelSize);
    if (store == Store::streamed) {
        stretches.applyStreamed(count);
    } else {
        stretches.apply(count);
    }
}

} // namespace mox::filters
