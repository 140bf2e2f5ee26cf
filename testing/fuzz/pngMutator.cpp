// Mends the checksums of the chunks of most mutated files, which would all be refused for these.

#include <zlib.h>

#include <cstddef>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

constexpr std::size_t signature = 8;
constexpr std::size_t lengthAndType = 8;
constexpr std::size_t checksum = 4;

std::uint32_t numberAt(std::uint8_t const* bytes)
{
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U | bytes[3];
}

void mendChecksums(std::uint8_t* data, std::size_t size)
{
    for (std::size_t at = signature; at + lengthAndType + checksum <= size;) {
        std::size_t const length = numberAt(data + at);
        std::size_t const end = at + lengthAndType + length;
        if (end + checksum > size) {
            return;
        }
        auto const sum = crc32(0, data + at + 4, static_cast<uInt>(length + 4));
        for (unsigned int i = 0; i < checksum; ++i) {
            data[end + i] = static_cast<std::uint8_t>(sum >> (24U - 8U * i));
        }
        at = end + checksum;
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed)
{
    std::size_t const mutated = LLVMFuzzerMutate(data, size, maxSize);
    if (seed % 8 != 0) {
        mendChecksums(data, mutated);
    }
    return mutated;
}
