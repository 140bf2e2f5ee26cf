#include <Moxelcore/Core/EnumInfo.h>

#include <boost/tokenizer.hpp>

#include <algorithm>
#include <cassert>
#include <cctype>
#include <limits>
#include <locale>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

struct EnumInfo::Table {
    std::map<std::string, int> values;
    std::map<int, std::string> names;
    std::vector<std::pair<int, std::string>> entries;
    std::string enumName;
};

namespace {

std::string trimmed(std::string const& text)
{
    auto const isSpace = [](unsigned char c) { return std::isspace(c) != 0; };
    auto const first = std::find_if_not(text.begin(), text.end(), isSpace);
    auto const last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), isSpace).base();
    return {first, last};
}

/// Leaves the number as it was when the text holds none.
bool readNumber(std::string const& text, int& number)
{
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    int read = 0;
    if (!(in >> read)) {
        return false;
    }
    number = read;
    return true;
}

int nextAfter(int number)
{
    return number < std::numeric_limits<int>::max() ? number + 1 : std::numeric_limits<int>::min();
}

template <class Map, class Key>
auto const& lookUp(Map const& map, Key const& key)
{
    auto const found = map.find(key);
    if (found == map.end()) {
        throw std::out_of_range("invalid map<K, T> key");
    }
    return found->second;
}

} // namespace

EnumInfo::EnumInfo(char const* definition, char const* enumName)
    : table_(new Table)
{
    table_->enumName = enumName;
    std::string const text = definition;
    int counter = 0;
    for (std::string const& token : boost::tokenizer(text, boost::char_separator<char>(","))) {
        auto const equals = token.find('=');
        if (equals == std::string::npos) {
            counter = nextAfter(counter);
        } else {
            readNumber(token.substr(equals + 1), counter);
        }
        std::string const name = trimmed(token.substr(0, equals));
        table_->values[name] = counter;
        table_->names[counter] = name;
        table_->entries.emplace_back(counter, name);
    }
}

EnumInfo::EnumInfo(EnumInfo const& other)
    : table_(new Table(*other.table_))
{
}

EnumInfo& EnumInfo::operator=(EnumInfo const& other)
{
    *table_ = *other.table_;
    return *this;
}

EnumInfo::~EnumInfo()
{
    delete table_;
}

int EnumInfo::size() const
{
    return static_cast<int>(table_->entries.size());
}

bool EnumInfo::exists(mox::String const& name) const
{
    return table_->values.contains(name.c_str());
}

bool EnumInfo::exists(int value) const
{
    return table_->names.contains(value);
}

int EnumInfo::getEnum(mox::String const& name) const
{
    return lookUp(table_->values, name.c_str());
}

mox::String EnumInfo::getName(int value) const
{
    return lookUp(table_->names, value).c_str();
}

int EnumInfo::getEnumByIndex(int index) const
{
    assert(index >= 0 && index < size());
    return table_->entries[static_cast<std::size_t>(index)].first;
}

mox::String EnumInfo::getNameByIndex(int index) const
{
    assert(index >= 0 && index < size());
    return table_->entries[static_cast<std::size_t>(index)].second.c_str();
}

mox::String EnumInfo::getEnumName() const
{
    return table_->enumName.c_str();
}
