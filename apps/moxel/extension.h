#pragma once

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

namespace moxel {

/// Of the name of a file, with its point and in small letters.
inline std::string extensionOf(std::filesystem::path const& path)
{
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

} // namespace moxel
