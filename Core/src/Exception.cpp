#include <Moxelcore/Core/Exception.h>

#include <boost/io/quoted.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include "Core/private/Helper/text.h"

namespace mox {

struct Exception::Levels : boost::intrusive_ref_counter<Exception::Levels> {
    std::vector<exceptionInfo> items;
};

namespace {

std::string fileName(String const& path)
{
    std::string const text = path.c_str();
    return text.substr(text.find_last_of('/') + 1); // npos + 1 is 0
}

void writeLevel(std::ostream& out, Exception::exceptionInfo const& level)
{
    if (level.message.length() > 0) {
        out << level.message << ' ';
    }
    if (level.className.length() > 0) {
        out << level.className << ' ';
    }
    if (level.libName.length() > 0) {
        out << "of " << level.libName << " library ";
    }
    if (level.file.length() > 0) {
        out << "\n    (at " << boost::io::quoted(fileName(level.file), '&', '"') << ", line " << level.line << ") ";
    }
    out << '\n';
}

} // namespace

Exception::Exception(exceptionInfo const& info)
    : levels_(new Levels)
{
    intrusive_ptr_add_ref(levels_);
    levels_->items.push_back(info);
}

Exception::Exception(Exception const& other) noexcept
    : levels_(other.levels_)
{
    intrusive_ptr_add_ref(levels_);
}

Exception& Exception::operator=(Exception const& other) noexcept
{
    intrusive_ptr_add_ref(other.levels_);
    intrusive_ptr_release(levels_);
    levels_ = other.levels_;
    return *this;
}

Exception::~Exception()
{
    intrusive_ptr_release(levels_);
}

void Exception::addInfoLevel(exceptionInfo const& info)
{
    levels_->items.push_back(info);
}

String Exception::getInfo() const
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    std::size_t number = 0;
    for (auto const& level : levels_->items) {
        ++number;
        out << '#' << number << ' ' << (number == 1 ? "Error : " : "From ");
        writeLevel(out, level);
    }
    return out.str().c_str();
}

String Exception::withPrefix(char const* prefix) const
{
    return helper::composeText(prefix, '\n', getInfo()).c_str();
}

ProcessingException::ProcessingException(exceptionInfo const& info)
    : Exception(info)
{
}

RuleException::RuleException(exceptionInfo const& info)
    : Exception(info)
{
}

String RuleException::what() const
{
    return withPrefix("Rule exception :");
}

SerializationException::SerializationException(exceptionInfo const& info)
    : Exception(info)
{
}

String SerializationException::what() const
{
    return withPrefix("Serialization exception :");
}

MemoryError::MemoryError(exceptionInfo const& info)
    : ProcessingException(info)
{
}

String MemoryError::what() const
{
    return withPrefix("Memory error :");
}

FileSystemError::FileSystemError(exceptionInfo const& info)
    : ProcessingException(info)
{
}

String FileSystemError::what() const
{
    return withPrefix("File system error :");
}

UnexpectedError::UnexpectedError(exceptionInfo const& info)
    : ProcessingException(info)
{
}

String UnexpectedError::what() const
{
    return withPrefix("Unexpected error :");
}

InvalidCall::InvalidCall(exceptionInfo const& info)
    : ProcessingException(info)
{
}

String InvalidCall::what() const
{
    return withPrefix("Invalid call :");
}

BadIndex::BadIndex(exceptionInfo const& info)
    : ProcessingException(info)
{
}

String BadIndex::what() const
{
    return withPrefix("Bad index :");
}

RuntimeError::RuntimeError(exceptionInfo const& info)
    : ProcessingException(info)
{
}

String RuntimeError::what() const
{
    return withPrefix("Runtime error :");
}

} // namespace mox
