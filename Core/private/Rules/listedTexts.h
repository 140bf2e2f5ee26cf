#pragma once

#include <Moxelcore/Core/Enum/ImageInterpretation.h>
#include <Moxelcore/Core/Enum/VoxelTypes.h>

#include <string>
#include <vector>

namespace mox::rules {

/// The texts of enumerators, separated by ", ".
template <class Enumeration>
std::string listedTexts(std::vector<Enumeration> const& values)
{
    std::string list;
    for (Enumeration const& value : values) {
        list += (list.empty() ? "" : ", ");
        list += helper::getText(value).c_str();
    }
    return list;
}

} // namespace mox::rules
