#include "testing/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> countdown = 0;
std::atomic<bool> hasFailed = false;
std::atomic<std::size_t> bytesAskedFor = 0;
std::atomic<long> live = 0;

void* allocate(std::size_t bytes, std::size_t alignment)
{
    bytesAskedFor += bytes;
    if (countdown > 0 && --countdown == 0) {
        hasFailed = true;
        throw std::bad_alloc();
    }
    std::size_t const rounded = (bytes + alignment - 1) / alignment * alignment;
    void* const memory = alignment > alignof(std::max_align_t) ? std::aligned_alloc(alignment, rounded)
                                                               : std::malloc(bytes > 0 ? bytes : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++live;
    return memory;
}

void release(void* memory)
{
    live -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

} // namespace

void* operator new(std::size_t bytes)
{
    return allocate(bytes, 1);
}

void* operator new(std::size_t bytes, std::align_val_t alignment)
{
    return allocate(bytes, static_cast<std::size_t>(alignment));
}

void* operator new(std::size_t bytes, std::nothrow_t const&) noexcept
{
    try {
        return allocate(bytes, 1);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    release(memory);
}

namespace mox::testing {

void Allocations::failAt(int k)
{
    hasFailed = false;
    countdown = k;
}

bool Allocations::stopFailing()
{
    countdown = 0;
    return hasFailed;
}

void Allocations::startCounting()
{
    bytesAskedFor = 0;
}

std::size_t Allocations::numOfBytes()
{
    return bytesAskedFor;
}

long Allocations::numOfLive()
{
    return live;
}

} // namespace mox::testing
