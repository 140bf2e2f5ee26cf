#pragma once

#include <Moxelcore/Core/Integers.h>

#include <libcpuid.h>

#include <string>

namespace mox::devices {

/// `sseLevel` of SSE 4.1.
constexpr int sse41 = 65;

/// What is known of the processor. Made once, on first use; a processor that cannot be identified is one without
/// vector units.
class Cpu {
public:
    static Cpu const& get();

    virtual ~Cpu() = default;

    std::string name = "CPU"; ///< brand string once identified
    uint64 totalMemory = 0;   ///< bytes of physical memory
    bool hasSSE = false;
    int sseLevel = 0; ///< 16 SSE, 32 SSE2, 48 SSE3, 49 SSSE3, 65 SSE4.1, 66 SSE4.2
    bool hasAVX = false;
    int avxLevel = 0; ///< 1 AVX, 2 AVX2
    // Cache sizes are in kilobytes, line sizes in bytes; 0 where unknown.
    int l1DataCache = 0;
    int l1InstructionCache = 0;
    int l2Cache = 0;
    int l3Cache = 0;
    int l1Associativity = 0;
    int l2Associativity = 0;
    int l3Associativity = 0;
    int l1CacheLine = 0;
    int l2CacheLine = 0;
    int l3CacheLine = 0;
    cpu_raw_data_t raw = {};
    cpu_id_t identified = {};

private:
    Cpu();
};

/// The levels that the feature flags of a record tell.
int sseLevelOf(cpu_id_t const& identified);
int avxLevelOf(cpu_id_t const& identified);

} // namespace mox::devices
