#include "Core/private/Serialization/ArchiveSource.h"

#include <boost/archive/archive_exception.hpp>
#include <boost/archive/basic_archive.hpp>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <utility>
#include <vector>

namespace mox::serialization {

namespace {

using boost::archive::archive_exception;

constexpr std::string_view whiteSpace = " \t\r\n";
/// The oldest version of Boost's archives whose numbers have the present widths.
constexpr int64 oldestVersion = 8;

void requireVersion(int64 version)
{
    boost::archive::library_version_type const newest = boost::archive::BOOST_ARCHIVE_VERSION();
    if (version < oldestVersion || version > int64{newest}) {
        throw archive_exception(archive_exception::unsupported_version);
    }
}

void requireSignature(std::string_view signature)
{
    if (signature != boost::archive::BOOST_ARCHIVE_SIGNATURE()) {
        throw archive_exception(archive_exception::invalid_signature);
    }
}

/// The whole text must be one number.
template <class T>
T parse(std::string_view text)
{
    T value = T();
    char const* const end = text.data() + text.size();
    auto const result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) {
        raiseDamagedArchive();
    }
    return value;
}

int64 parseInteger(std::string_view text, std::size_t bytes, bool isSigned)
{
    auto const value = parse<int64>(text);
    auto const bits = static_cast<unsigned int>(8 * bytes - (isSigned ? 1 : 0));
    int64 const beyond = bits < 63 ? value >> bits : 0;
    if (beyond != 0 && !(isSigned && beyond == -1)) {
        raiseDamagedArchive();
    }
    if (!isSigned && value < 0) {
        raiseDamagedArchive();
    }
    return value;
}

class Bytes {
public:
    explicit Bytes(std::string_view bytes)
        : rest_(bytes)
    {
    }

    std::string_view take(std::size_t count)
    {
        if (count > rest_.size()) {
            raiseDamagedArchive();
        }
        std::string_view const taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }

    void expect(std::string_view wanted)
    {
        if (take(wanted.size()) != wanted) {
            raiseDamagedArchive();
        }
    }

    void skipSpace() { rest_.remove_prefix(std::min(rest_.find_first_not_of(whiteSpace), rest_.size())); }

    /// Up to the first of some characters, which must come.
    std::string_view takeUntil(std::string_view ends)
    {
        auto const end = rest_.find_first_of(ends);
        if (end == std::string_view::npos) {
            raiseDamagedArchive();
        }
        return take(end);
    }

    std::string_view takeToken()
    {
        skipSpace();
        return take(std::min(rest_.find_first_of(whiteSpace), rest_.size()));
    }

    std::size_t size() const { return rest_.size(); }
    char front() const { return rest_.empty() ? '\0' : rest_.front(); }

private:
    std::string_view rest_;
};

/// What the forms without tags share.
class UntaggedSource : public ArchiveSource {
public:
    explicit UntaggedSource(std::string_view bytes)
        : bytes_(bytes)
    {
    }

    void enter(char const*) final {}
    void leave(char const*) final {}
    int64 frame(char const* name, std::size_t bytes) final
    {
        return integer(bytes, std::string_view(name) == "class_id");
    }
    bool tellsClassIds() const final { return false; }
    std::size_t bytesLeft() const final { return bytes_.size(); }

protected:
    Bytes bytes_;
};

class BinarySource final : public UntaggedSource {
public:
    explicit BinarySource(std::string_view bytes)
        : UntaggedSource(bytes)
    {
        requireSignature(text());
        requireVersion(integer(sizeof(short), false));
        for (std::size_t const width : {sizeof(int), sizeof(long), sizeof(float), sizeof(double)}) {
            requireNative(integer(1, false), static_cast<int64>(width));
        }
        requireNative(integer(sizeof(int), true), 1);
    }

    int64 integer(std::size_t bytes, bool isSigned) override
    {
        std::array<unsigned char, sizeof(int64)> raw = {};
        std::memcpy(raw.data(), bytes_.take(bytes).data(), bytes);
        auto value = std::bit_cast<int64>(raw);
        if (value < 0 && !isSigned) {
            raiseDamagedArchive();
        }
        auto const unused = static_cast<unsigned int>(8 * (sizeof(int64) - bytes));
        return isSigned ? static_cast<int64>(static_cast<uint64>(value) << unused) >> unused : value;
    }

    double real() override
    {
        double value = 0;
        std::memcpy(&value, bytes_.take(sizeof(value)).data(), sizeof(value));
        return value;
    }

    std::string text() override
    {
        auto const length = static_cast<std::size_t>(integer(sizeof(std::size_t), false));
        return std::string(bytes_.take(length));
    }

    bool packsNumbers() const override { return true; }

    void finish() override
    {
        if (bytes_.size() != 0) {
            raiseDamagedArchive();
        }
    }

private:
    static void requireNative(int64 value, int64 wanted)
    {
        if (value != wanted) {
            throw archive_exception(archive_exception::incompatible_native_format);
        }
    }
};

class TextSource final : public UntaggedSource {
public:
    explicit TextSource(std::string_view bytes)
        : UntaggedSource(bytes)
    {
        requireSignature(text());
        requireVersion(integer(sizeof(int), true));
    }

    int64 integer(std::size_t bytes, bool isSigned) override
    {
        return parseInteger(bytes_.takeToken(), bytes, isSigned);
    }

    double real() override { return parse<double>(bytes_.takeToken()); }

    std::string text() override
    {
        auto const length = static_cast<std::size_t>(integer(sizeof(std::size_t), false));
        bytes_.expect(" ");
        return std::string(bytes_.take(length));
    }

    bool packsNumbers() const override { return false; }

    void finish() override
    {
        if (!bytes_.takeToken().empty()) {
            raiseDamagedArchive();
        }
    }
};

class XmlSource final : public ArchiveSource {
public:
    explicit XmlSource(std::string_view bytes)
        : bytes_(bytes)
    {
        bytes_.expect("<?xml ");
        bytes_.takeUntil(">");
        bytes_.expect(">");
        bytes_.skipSpace();
        bytes_.expect("<!DOCTYPE boost_serialization>");
        enter("boost_serialization");
        requireSignature(takeAttribute("signature"));
        requireVersion(parseInteger(takeAttribute("version"), sizeof(int), true));
    }

    void enter(char const* tag) override
    {
        requireNoAttributes();
        bytes_.skipSpace();
        bytes_.expect("<");
        bytes_.expect(tag);
        next_ = 0;
        attributes_.clear();
        while (bytes_.front() == ' ') {
            bytes_.skipSpace();
            std::string_view const name = bytes_.takeUntil("= >\n");
            bytes_.expect("=\"");
            attributes_.emplace_back(name, bytes_.takeUntil("\"<>"));
            bytes_.expect("\"");
        }
        bytes_.expect(">");
    }

    void leave(char const* tag) override
    {
        requireNoAttributes();
        bytes_.skipSpace();
        bytes_.expect("</");
        bytes_.expect(tag);
        bytes_.expect(">");
    }

    int64 integer(std::size_t bytes, bool isSigned) override { return parseInteger(content(), bytes, isSigned); }
    double real() override { return parse<double>(content()); }

    std::string text() override
    {
        static constexpr std::pair<std::string_view, char> entities[] = {
            {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}, {"&amp;", '&'}};
        std::string text(content());
        for (auto const& [name, character] : entities) {
            for (auto at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
                text.replace(at, name.size(), 1, character);
            }
        }
        return text;
    }

    int64 frame(char const* name, std::size_t bytes) override
    {
        std::string_view value = takeAttribute(name);
        if (value.starts_with('_')) { // of object identifiers
            value.remove_prefix(1);
        }
        return parseInteger(value, bytes, std::string_view(name) == "class_id");
    }

    bool tellsClassIds() const override { return true; }
    bool packsNumbers() const override { return false; }
    std::size_t bytesLeft() const override { return bytes_.size(); }

    void finish() override
    {
        leave("boost_serialization");
        if (!bytes_.takeToken().empty()) {
            raiseDamagedArchive();
        }
    }

private:
    std::string_view content()
    {
        requireNoAttributes();
        return bytes_.takeUntil("<");
    }

    /// The next attribute, which must have that name. A class met before is told as a reference.
    std::string_view takeAttribute(std::string_view name)
    {
        if (next_ == attributes_.size()) {
            raiseDamagedArchive();
        }
        auto const& [found, value] = attributes_[next_++];
        if (found != name && !(name == "class_id" && found == "class_id_reference")) {
            raiseDamagedArchive();
        }
        return value;
    }

    void requireNoAttributes() const
    {
        if (next_ != attributes_.size()) {
            raiseDamagedArchive();
        }
    }

    Bytes bytes_;
    std::vector<std::pair<std::string_view, std::string_view>> attributes_;
    std::size_t next_ = 0;
};

} // namespace

std::unique_ptr<ArchiveSource> openBinaryArchive(std::string_view bytes)
{
    return std::make_unique<BinarySource>(bytes);
}

std::unique_ptr<ArchiveSource> openTextArchive(std::string_view bytes)
{
    return std::make_unique<TextSource>(bytes);
}

std::unique_ptr<ArchiveSource> openXmlArchive(std::string_view bytes)
{
    return std::make_unique<XmlSource>(bytes);
}

void raiseDamagedArchive()
{
    throw archive_exception(archive_exception::input_stream_error);
}

} // namespace mox::serialization
