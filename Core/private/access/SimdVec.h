#pragma once

#include <cstddef>
#include <new>

namespace mox {

/// Architecture tags of kernels and rows, and the memory that they ask for.
class SimdVec {
public:
    struct arch_scalar_tag {};
    struct arch_128_tag {};

    /// Buffers that begin at a multiple of N bytes.
    template <class T, std::size_t N>
    struct AlignedAllocator {
        using value_type = T;

        template <class U>
        struct rebind {
            using other = AlignedAllocator<U, N>;
        };

        AlignedAllocator() = default;
        template <class U>
        AlignedAllocator(AlignedAllocator<U, N> const&) noexcept
        {
        }

        T* allocate(std::size_t count)
        {
            return static_cast<T*>(::operator new (count * sizeof(T), std::align_val_t{N}));
        }
        void deallocate(T* memory, std::size_t) noexcept { ::operator delete (memory, std::align_val_t{N}); }

        bool operator==(AlignedAllocator const&) const { return true; }
    };
};

} // namespace mox
