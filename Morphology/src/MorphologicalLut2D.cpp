#include <Moxelcore/Morphology/MorphologicalLut2D.h>

#include <algorithm>
#include <vector>

#include "Morphology/private/LutPattern.h"

namespace mox::morphology {

namespace {

constexpr char const* source = "Morphology/src/MorphologicalLut2D";
constexpr unsigned int numOfVoxels = 9;

} // namespace

struct MorphologicalLut2D::Entries {
    std::vector<unsigned char> values;
};

MorphologicalLut2D::MorphologicalLut2D()
    : entries_(new Entries)
{
}

MorphologicalLut2D::MorphologicalLut2D(MorphologicalLut2D const& other)
    : entries_(new Entries(*other.entries_))
{
}

MorphologicalLut2D& MorphologicalLut2D::operator=(MorphologicalLut2D const& other)
{
    *entries_ = *other.entries_;
    return *this;
}

MorphologicalLut2D::~MorphologicalLut2D()
{
    delete entries_;
}

bool MorphologicalLut2D::operator==(MorphologicalLut2D const& other) const
{
    return entries_->values == other.entries_->values;
}

bool MorphologicalLut2D::operator!=(MorphologicalLut2D const& other) const
{
    return !(*this == other);
}

unsigned char const& MorphologicalLut2D::operator[](unsigned int index) const
{
    static unsigned char const none = 0;
    return index < size() ? entries_->values[index] : none;
}

unsigned int MorphologicalLut2D::size() const
{
    return static_cast<unsigned int>(entries_->values.size());
}

void MorphologicalLut2D::addKernel(Vector<unsigned char> const& kernel)
{
    LutPattern const pattern(kernel, numOfVoxels, source);
    entries_->values.resize(fullSize);
    for (unsigned int index = 0; index < fullSize; ++index) {
        if (pattern.fits(index)) {
            entries_->values[index] = 1;
        }
    }
}

void MorphologicalLut2D::buildFromLut(unsigned char const* entries, unsigned int size)
{
    requireWholeTable(entries, size, fullSize, source);
    entries_->values.assign(entries, entries + size);
}

void MorphologicalLut2D::buildFromLut(int const* entries, unsigned int size)
{
    requireWholeTable(entries, size, fullSize, source);
    entries_->values.resize(size);
    std::transform(entries, entries + size, entries_->values.begin(),
                   [](int entry) { return static_cast<unsigned char>(entry); });
}

void MorphologicalLut2D::reset()
{
    entries_->values.clear();
}

} // namespace mox::morphology
