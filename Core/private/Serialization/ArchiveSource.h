#pragma once

#include <Moxelcore/Core/Integers.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace mox::serialization {

/// An archive taken apart into numbers and texts, whatever its form. Trusts no byte: what is not as the form has it
/// throws `boost::archive::archive_exception`.
class ArchiveSource {
public:
    virtual ~ArchiveSource() = default;

    virtual void enter(char const* tag) = 0;
    virtual void leave(char const* tag) = 0;
    virtual int64 integer(std::size_t bytes, bool isSigned) = 0;
    virtual double real() = 0;
    virtual std::string text() = 0;

    /// A number about an object, not of it: class and object identifiers, tracking, versions.
    virtual int64 frame(char const* name, std::size_t bytes) = 0;
    /// Whether an object of a class not met before tells the class's number.
    virtual bool tellsClassIds() const = 0;
    /// Whether a sequence of numbers is stored without a version and without a tag for each.
    virtual bool packsNumbers() const = 0;

    /// No number takes less than a byte: a bound for every count.
    virtual std::size_t bytesLeft() const = 0;
    /// Nothing may follow.
    virtual void finish() = 0;
};

/// The bytes must outlive the source.
std::unique_ptr<ArchiveSource> openBinaryArchive(std::string_view bytes);
std::unique_ptr<ArchiveSource> openTextArchive(std::string_view bytes);
std::unique_ptr<ArchiveSource> openXmlArchive(std::string_view bytes);

[[noreturn]] void raiseDamagedArchive();

} // namespace mox::serialization
