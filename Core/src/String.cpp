#include <Moxelcore/Core/String.h>

#include <string>

namespace mox {

struct String::Text {
    std::string characters;
};

String::String()
    : text_(new Text)
{
}

String::String(char const* text)
    : text_(new Text{text != nullptr ? text : ""})
{
}

String::String(String const& other)
    : text_(new Text(*other.text_))
{
}

String::~String()
{
    delete text_;
}

String& String::operator=(char const* text)
{
    text_->characters = text != nullptr ? text : "";
    return *this;
}

String& String::operator=(String const& other)
{
    *text_ = *other.text_;
    return *this;
}

bool String::operator==(String const& other) const
{
    return text_->characters == other.text_->characters;
}

bool String::operator!=(String const& other) const
{
    return !(*this == other);
}

char const* String::c_str() const
{
    return text_->characters.c_str();
}

std::size_t String::length() const
{
    return text_->characters.length();
}

} // namespace mox
