// Sets properties of the library's classes as the host does, from any word of a command line: it is refused, or the
// value's text is taken again and tells the same value.

#include "apps/moxel/Errors.h"
#include "apps/moxel/PropertyKind.h"
#include "testing/fuzz/DrawnProperty.h"
#include "testing/fuzz/require.h"

namespace {

/// Look-up tables show their size, not a text that they read.
bool tellsItsText(moxel::PropertyKind const& kind, mox::BaseProperty const& property)
{
    return kind.typeName(property) != "look-up table";
}

void bindAndTell(mox::BaseProperty& property, std::string const& word)
{
    moxel::PropertyKind const& kind = moxel::kindOf(property);
    if (kind.bind == nullptr || kind.isFile) {
        return;
    }
    try {
        auto const held = kind.bind(property, word, {});
        std::string const text = kind.text(property);
        moxel::textOf(kind.json(property));
        if (tellsItsText(kind, property)) {
            auto const again = kind.bind(property, text, {});
            mox::fuzz::require(kind.text(property) == text);
        }
    } catch (moxel::UsageError const&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size < mox::fuzz::DrawnProperty::leastSize) {
        return 0;
    }
    mox::fuzz::DrawnProperty const drawn(data, size);
    for (std::string const& text : drawn.texts()) {
        bindAndTell(drawn.property(), text);
    }
    return 0;
}
