#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <vector>

#include "Core/private/PropertyDefinitions.h"
#include "Morphology/private/MorphologicalLutAccess.h"

namespace mox {

template class Property<morphology::MorphologicalLut2D*>;
template class Property<morphology::MorphologicalLut3D*>;

namespace morphology {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

std::string_view withoutLeadingSpace(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    return text;
}

bool parse(std::string_view text, MorphologicalLut2D& lut)
{
    std::vector<unsigned char> entries;
    for (char const c : text) {
        if (whiteSpace.find(c) != std::string_view::npos) {
            continue;
        }
        if ((c != '0' && c != '1') || entries.size() == MorphologicalLut2D::fullSize) {
            return false;
        }
        entries.push_back(c == '1' ? 1 : 0);
    }
    if (entries.size() != MorphologicalLut2D::fullSize) {
        return false;
    }
    lut.buildFromLut(entries.data(), MorphologicalLut2D::fullSize);
    return true;
}

bool parse(std::string_view text, MorphologicalLut3D& lut)
{
    std::vector<unsigned int> hits;
    for (text = withoutLeadingSpace(text); !text.empty(); text = withoutLeadingSpace(text)) {
        std::string_view const word = text.substr(0, text.find_first_of(whiteSpace));
        unsigned int index = 0;
        auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), index);
        if (error != std::errc() || end != word.data() + word.size() || index >= MorphologicalLut3D::fullSize) {
            return false;
        }
        hits.push_back(index);
        text.remove_prefix(word.size());
    }
    MorphologicalLutAccess::setHits(lut, hits);
    return true;
}

} // namespace

template <class Lut>
PropertyLut<Lut>::PropertyLut()
    : own_(boost::make_shared<Lut>())
{
    this->set(own_.get());
}

template <class Lut>
PropertyLut<Lut>::PropertyLut(PropertyLut const& other) = default;
template <class Lut>
PropertyLut<Lut>& PropertyLut<Lut>::operator=(PropertyLut const& other) = default;
template <class Lut>
PropertyLut<Lut>::~PropertyLut() = default;

template <class Lut>
bool PropertyLut<Lut>::read(String const& text, String& echo)
{
    if (this->isLocked()) {
        return false;
    }
    echo = text;
    if (!parse(text.c_str(), *own_)) {
        return false;
    }
    this->set(own_.get());
    return true;
}

template class PropertyLut<MorphologicalLut2D>;
template class PropertyLut<MorphologicalLut3D>;

} // namespace morphology
} // namespace mox
