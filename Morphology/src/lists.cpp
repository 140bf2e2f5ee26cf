#include "Morphology/private/lists.h"

#include "Morphology/private/chords.h"
#include "Morphology/private/pairs.h"

namespace mox::morphology {

namespace {

/// Of larger lists, more rows would have to be kept than a leaf may take; they are not worth the time to plan them.
constexpr std::size_t mostOffsets = 1U << 22U;

std::optional<RowProgram> cheapestProgram(std::span<kernel::Offset3D const> list, bool mayHoldNan)
{
    if (list.size() > mostOffsets) {
        return std::nullopt;
    }
    RowProgram chords = chordProgram(list, mayHoldNan);
    bool const doChordsSaveMuch = 3 * costOf(chords) <= 2 * list.size(); // as of disks, with which no pairs compete
    auto pairs = mayHoldNan || doChordsSaveMuch ? std::nullopt : pairProgram(list);
    if (pairs && costOf(*pairs) < costOf(chords)) {
        return pairs;
    }
    return chords;
}

} // namespace

std::optional<RowProgram> listProgram(Element const& element, bool mayHoldNan)
{
    if (auto const* const inSpace = std::get_if<Shared<OffsetList3D>>(&element)) {
        return cheapestProgram(**inSpace, mayHoldNan);
    }
    auto const* const inPlane = std::get_if<Shared<OffsetList2D>>(&element);
    if (inPlane == nullptr || (**inPlane).size() > mostOffsets) {
        return std::nullopt;
    }
    OffsetList3D list;
    list.reserve((**inPlane).size());
    for (kernel::Offset2D const& offset : **inPlane) {
        list.push_back(kernel::inSpace(offset));
    }
    return cheapestProgram(list, mayHoldNan);
}

} // namespace mox::morphology
