#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <cstring>

namespace mox::benchmarks {

/// An image that gives no row pointers, as an application's own may: all goes through copies.
class CopyingImage final : public memory::InMemoryImage {
public:
    bool readRowAt(unsigned int count, void* buffer, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                   unsigned int s) const override
    {
        void const* row = nullptr;
        if (!InMemoryImage::getConstRowPointerAt(count, row, x, y, z, t, s)) {
            return false;
        }
        std::memcpy(buffer, row, std::size_t{count} * helper::getSizeOf(getVoxelType()));
        return true;
    }

    bool writeRowAt(unsigned int count, void const* buffer, unsigned int x, unsigned int y, unsigned int z,
                    unsigned int t, unsigned int s) override
    {
        void* row = nullptr;
        if (!InMemoryImage::getRowPointerAt(count, row, x, y, z, t, s)) {
            return false;
        }
        std::memcpy(row, buffer, std::size_t{count} * helper::getSizeOf(getVoxelType()));
        return true;
    }

    bool getRowPointerAt(unsigned int, void*&, unsigned int, unsigned int, unsigned int, unsigned int,
                         unsigned int) override
    {
        return false;
    }

    bool getConstRowPointerAt(unsigned int, void const*&, unsigned int, unsigned int, unsigned int, unsigned int,
                              unsigned int) const override
    {
        return false;
    }
};

} // namespace mox::benchmarks
