#include "Core/private/Cpu.h"

#include <unistd.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>
#include <vector>

namespace mox::devices {

namespace {

cpu_id_t processorWith(std::initializer_list<cpu_feature_t> features)
{
    cpu_id_t identified = {};
    for (cpu_feature_t const feature : features) {
        identified.flags[feature] = 1;
    }
    return identified;
}

using Levels = std::vector<std::pair<cpu_feature_t, int>>;

Levels const sseLevels = {{CPU_FEATURE_SSE4_2, 66}, {CPU_FEATURE_SSE4_1, 65}, {CPU_FEATURE_SSSE3, 49},
                          {CPU_FEATURE_PNI, 48},    {CPU_FEATURE_SSE2, 32},   {CPU_FEATURE_SSE, 16}};
Levels const avxLevels = {{CPU_FEATURE_AVX2, 2}, {CPU_FEATURE_AVX, 1}};

TEST(CpuLevels, areZeroWithoutFeatures)
{
    EXPECT_EQ(sseLevelOf(processorWith({})), 0);
    EXPECT_EQ(avxLevelOf(processorWith({})), 0);
}

TEST(CpuLevels, followEachFeatureAlone)
{
    for (auto const& [feature, level] : sseLevels) {
        EXPECT_EQ(sseLevelOf(processorWith({feature})), level);
        EXPECT_EQ(avxLevelOf(processorWith({feature})), 0);
    }
    for (auto const& [feature, level] : avxLevels) {
        EXPECT_EQ(avxLevelOf(processorWith({feature})), level);
        EXPECT_EQ(sseLevelOf(processorWith({feature})), 0);
    }
}

/// Adds the features from the least to the best: each in turn decides.
void expectTheBestToDecide(Levels const& levels, int (*levelOf)(cpu_id_t const&))
{
    cpu_id_t identified = {};
    for (auto feature = levels.rbegin(); feature != levels.rend(); ++feature) {
        identified.flags[feature->first] = 1;
        EXPECT_EQ(levelOf(identified), feature->second);
    }
}

TEST(CpuLevels, followTheBestFeature)
{
    expectTheBestToDecide(sseLevels, &sseLevelOf);
    expectTheBestToDecide(avxLevels, &avxLevelOf);
}

TEST(CpuLevels, doNotFollowOtherFeatures)
{
    cpu_id_t const other = processorWith({CPU_FEATURE_MMX, CPU_FEATURE_SSE4A, CPU_FEATURE_FMA3, CPU_FEATURE_AVX512F});
    EXPECT_EQ(sseLevelOf(other), 0);
    EXPECT_EQ(avxLevelOf(other), 0);
}

TEST(Cpu, isMadeOnce)
{
    EXPECT_EQ(&Cpu::get(), &Cpu::get());
}

TEST(Cpu, hasTheLevelsOfItsRecord)
{
    Cpu const& cpu = Cpu::get();
    EXPECT_EQ(cpu.sseLevel, sseLevelOf(cpu.identified));
    EXPECT_EQ(cpu.avxLevel, avxLevelOf(cpu.identified));
    EXPECT_EQ(cpu.hasSSE, cpu.sseLevel > 0);
    EXPECT_EQ(cpu.hasAVX, cpu.avxLevel > 0);
}

TEST(Cpu, isNamedAsItsRecordTells)
{
    EXPECT_EQ(Cpu::get().name, Cpu::get().identified.brand_str);
}

TEST(Cpu, knowsThePhysicalMemory)
{
    Cpu const& cpu = Cpu::get();
    EXPECT_GT(cpu.totalMemory, 0U);
    EXPECT_EQ(cpu.totalMemory,
              static_cast<uint64>(sysconf(_SC_PHYS_PAGES)) * static_cast<uint64>(sysconf(_SC_PAGESIZE)));
}

TEST(Cpu, hasNoNegativeFigures)
{
    Cpu const& cpu = Cpu::get();
    for (int const figure :
         {cpu.l1DataCache, cpu.l1InstructionCache, cpu.l2Cache, cpu.l3Cache, cpu.l1Associativity, cpu.l2Associativity,
          cpu.l3Associativity, cpu.l1CacheLine, cpu.l2CacheLine, cpu.l3CacheLine}) {
        EXPECT_GE(figure, 0);
    }
}

TEST(Cpu, agreesWithTheCompilersView)
{
#if defined(__x86_64__)
    EXPECT_GE(Cpu::get().sseLevel, 32) << "every 64-bit processor of this kind has SSE2";
    EXPECT_EQ(Cpu::get().sseLevel >= sse41, __builtin_cpu_supports("sse4.1") != 0);
#else
    EXPECT_FALSE(Cpu::get().hasSSE);
#endif
}

} // namespace

} // namespace mox::devices
