#include "apps/moxel/PngCalls.h"

#include <cerrno>
#include <cstring>

namespace moxel::png {

File open(std::filesystem::path const& path, char const* mode)
{
    File file(std::fopen(path.c_str(), mode));
    if (file == nullptr) {
        throw FileError(std::strerror(errno));
    }
    return file;
}

void fail(png_structp png, png_const_charp message)
{
    *static_cast<std::string*>(png_get_error_ptr(png)) = message;
    png_longjmp(png, 1);
}

void ignore(png_structp, png_const_charp) {}

} // namespace moxel::png
