#include "Core/private/Cpu.h"

#include <unistd.h>

#include <algorithm>
#include <initializer_list>
#include <iostream>

namespace mox::devices {

namespace {

struct FeatureLevel {
    cpu_feature_t feature;
    int level;
};

/// The level of the first feature that the processor has, 0 when it has none.
int firstLevel(cpu_id_t const& identified, std::initializer_list<FeatureLevel> levels)
{
    for (auto const& [feature, level] : levels) {
        if (identified.flags[feature] != 0) {
            return level;
        }
    }
    return 0;
}

void report(char const* failure)
{
    std::cerr << failure << "\nError: " << cpuid_error() << '\n';
}

uint64 physicalMemory()
{
    long const pages = sysconf(_SC_PHYS_PAGES);
    long const pageSize = sysconf(_SC_PAGE_SIZE);
    return pages > 0 && pageSize > 0 ? static_cast<uint64>(pages) * static_cast<uint64>(pageSize) : 0;
}

int knownOrZero(int figure)
{
    return std::max(figure, 0);
}

} // namespace

int sseLevelOf(cpu_id_t const& identified)
{
    return firstLevel(identified, {{CPU_FEATURE_SSE4_2, 66},
                                   {CPU_FEATURE_SSE4_1, sse41},
                                   {CPU_FEATURE_SSSE3, 49},
                                   {CPU_FEATURE_PNI, 48},
                                   {CPU_FEATURE_SSE2, 32},
                                   {CPU_FEATURE_SSE, 16}});
}

int avxLevelOf(cpu_id_t const& identified)
{
    return firstLevel(identified, {{CPU_FEATURE_AVX2, 2}, {CPU_FEATURE_AVX, 1}});
}

Cpu const& Cpu::get()
{
    static Cpu const* const cpu = new Cpu; // never freed: runners may ask for it until the process ends
    return *cpu;
}

Cpu::Cpu()
    : totalMemory(physicalMemory())
{
    if (cpuid_get_raw_data(&raw) < 0) {
        report("Sorry, cannot get the CPUID raw data.");
    }
    if (cpu_identify(&raw, &identified) < 0) {
        report("Sorrry, CPU identification failed.");
    }
    name = identified.brand_str;
    sseLevel = sseLevelOf(identified);
    hasSSE = sseLevel > 0;
    avxLevel = avxLevelOf(identified);
    hasAVX = avxLevel > 0;
    l1DataCache = knownOrZero(identified.l1_data_cache);
    l1InstructionCache = knownOrZero(identified.l1_instruction_cache);
    l2Cache = knownOrZero(identified.l2_cache);
    l3Cache = knownOrZero(identified.l3_cache);
    l1Associativity = knownOrZero(identified.l1_data_assoc);
    l2Associativity = knownOrZero(identified.l2_assoc);
    l3Associativity = knownOrZero(identified.l3_assoc);
    l1CacheLine = knownOrZero(identified.l1_data_cacheline);
    l2CacheLine = knownOrZero(identified.l2_cacheline);
    l3CacheLine = knownOrZero(identified.l3_cacheline);
}

} // namespace mox::devices
