#pragma once

#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "apps/moxel/Errors.h"

// What reading and writing PNG share. libpng leaves a failed call by `longjmp`.

namespace moxel::png {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Throws `FileError`.
File open(std::filesystem::path const& path, char const* mode);

/// libpng's handlers; the error pointer is the `std::string` that takes the message.
[[noreturn]] void fail(png_structp png, png_const_charp message);
void ignore(png_structp png, png_const_charp message);

/// Runs calls into libpng; a failure becomes a `FileError`. `calls` may hold nothing that needs a destructor.
template <class Calls>
void guarded(png_structp png, Calls const& calls)
{
    if (setjmp(png_jmpbuf(png)) != 0) { // NOLINT(cert-err52-cpp): the library's only way out
        throw FileError(*static_cast<std::string const*>(png_get_error_ptr(png)));
    }
    calls();
}

/// PNG stores 16-bit samples with the high byte first.
constexpr bool swapsBytes = std::endian::native == std::endian::little;

} // namespace moxel::png
