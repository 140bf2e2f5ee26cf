#pragma once

#include <Moxelcore/Core/Api.h>

#include <cstddef>

namespace mox {

/// Text at the library's border: one pointer to a private standard string, so that no standard-library type
/// stands in the binary interface. Copies are deep.
class MOXELCORE_API String {
public:
    String();
    /// A null pointer gives the empty text.
    String(char const* text);
    String(String const& other);
    ~String();

    String& operator=(char const* text);
    String& operator=(String const& other);

    bool operator==(String const& other) const;
    bool operator!=(String const& other) const;

    char const* c_str() const;
    std::size_t length() const;

private:
    struct Text;
    Text* text_;
};

} // namespace mox
