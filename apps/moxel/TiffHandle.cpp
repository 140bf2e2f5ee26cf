#include "apps/moxel/TiffHandle.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <system_error>

#include "apps/moxel/Errors.h"

namespace moxel {

namespace {

/// What libtiff may take at once to read: its tables and undecoded strips are never larger than the file, its decoders'
/// work space is small.
tmsize_t mostMemory(std::filesystem::path const& path)
{
    constexpr std::uintmax_t workSpace = 256U << 20U;
    std::error_code error;
    std::uintmax_t const fileBytes = std::filesystem::file_size(path, error);
    return static_cast<tmsize_t>(workSpace + (error ? 0 : 4 * fileBytes));
}

} // namespace

TiffHandle::TiffHandle(std::filesystem::path const& path, char const* mode)
{
    std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> const options(TIFFOpenOptionsAlloc(),
                                                                                   &TIFFOpenOptionsFree);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keep, &error_);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), keep, &warning_);
    if (*mode == 'r') {
        TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), mostMemory(path));
    }
    tiff_ = TIFFOpenExt(path.c_str(), mode, options.get());
    if (tiff_ == nullptr) {
        require(false);
    }
}

TiffHandle::~TiffHandle()
{
    TIFFClose(tiff_);
}

int TiffHandle::keep(TIFF*, void* message, char const*, char const* format, va_list arguments)
{
    auto& first = *static_cast<std::string*>(message);
    if (first.empty()) {
        char text[512];
        std::vsnprintf(text, sizeof text, format, arguments);
        first = text;
    }
    return 1;
}

void TiffHandle::requireSilence() const
{
    require(error_.empty());
    if (!warning_.empty()) {
        throw FileError(warning_);
    }
}

void TiffHandle::require(bool success) const
{
    if (!success || !error_.empty()) {
        throw FileError(error_.empty() ? "libtiff gives no reason" : error_);
    }
}

} // namespace moxel
