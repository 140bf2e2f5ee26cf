#pragma once

#include <tiffio.h>

#include <filesystem>
#include <string>

namespace moxel {

/// An open TIFF file. libtiff's messages are kept, not printed.
class TiffHandle {
public:
    /// `mode` is libtiff's. Throws `FileError`.
    TiffHandle(std::filesystem::path const& path, char const* mode);
    TiffHandle(TiffHandle const&) = delete;
    TiffHandle& operator=(TiffHandle const&) = delete;
    ~TiffHandle();

    TIFF* get() const { return tiff_; }

    void forgetWarnings() { warning_.clear(); }
    /// Throws `FileError` with the first error, or else the first warning, when there was one.
    void requireSilence() const;
    /// Throws `FileError` with the first error when there was one or the call did not succeed.
    void require(bool success) const;

    /// A tag of the present page; its default, or else `missing`, when the page has none.
    template <class T>
    T tag(ttag_t tag, T missing = T()) const
    {
        T value = missing;
        return TIFFGetFieldDefaulted(tiff_, tag, &value) == 1 ? value : missing;
    }

private:
    static int keep(TIFF* tiff, void* message, char const* module, char const* format, va_list arguments);

    std::string error_;
    std::string warning_;
    TIFF* tiff_ = nullptr;
};

} // namespace moxel
