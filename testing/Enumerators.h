#pragma once

#include <Moxelcore/Core/EnumInfo.h>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace mox::testing {

/// The names of an enumeration in order, each beside the enumerator of the code.
using Enumerators = std::vector<std::pair<char const*, int>>;

/// The table holds these enumerators and no others, in this order, counted from 0.
inline void expectTable(EnumInfo const& info, char const* enumName, Enumerators const& enumerators)
{
    EXPECT_STREQ(info.getEnumName().c_str(), enumName);
    ASSERT_EQ(info.size(), static_cast<int>(enumerators.size()));
    int index = 0;
    for (auto const& [name, value] : enumerators) {
        EXPECT_EQ(value, index) << name;
        EXPECT_STREQ(info.getNameByIndex(index).c_str(), name);
        EXPECT_EQ(info.getEnumByIndex(index), value) << name;
        EXPECT_EQ(info.getEnum(name), value) << name;
        EXPECT_STREQ(info.getName(value).c_str(), name);
        ++index;
    }
}

} // namespace mox::testing
