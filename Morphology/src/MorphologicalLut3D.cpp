#include <Moxelcore/Morphology/MorphologicalLut3D.h>

#include <vector>

#include "Morphology/private/LutPattern.h"
#include "Morphology/private/MorphologicalLutAccess.h"

namespace mox::morphology {

namespace {

constexpr char const* source = "Morphology/src/MorphologicalLut3D";
constexpr unsigned int numOfVoxels = 27;
constexpr unsigned int bitsPerWord = 64;
constexpr unsigned int numOfWords = MorphologicalLut3D::fullSize / bitsPerWord;

} // namespace

struct MorphologicalLut3D::Entries {
    std::vector<uint64> words;
};

MorphologicalLut3D::MorphologicalLut3D()
    : entries_(new Entries)
{
}

MorphologicalLut3D::MorphologicalLut3D(MorphologicalLut3D const& other)
    : entries_(new Entries(*other.entries_))
{
}

MorphologicalLut3D& MorphologicalLut3D::operator=(MorphologicalLut3D const& other)
{
    *entries_ = *other.entries_;
    return *this;
}

MorphologicalLut3D::~MorphologicalLut3D()
{
    delete entries_;
}

bool MorphologicalLut3D::operator==(MorphologicalLut3D const& other) const
{
    return entries_->words == other.entries_->words;
}

bool MorphologicalLut3D::operator!=(MorphologicalLut3D const& other) const
{
    return !(*this == other);
}

bool MorphologicalLut3D::operator[](unsigned int const& index) const
{
    return index < size() && (entries_->words[index / bitsPerWord] >> (index % bitsPerWord) & 1U) != 0;
}

unsigned int MorphologicalLut3D::size() const
{
    return static_cast<unsigned int>(entries_->words.size()) * bitsPerWord;
}

/// The patterns of one word differ in their lowest bits only, for which all words have the same hits.
void MorphologicalLut3D::addKernel(Vector<unsigned char> const& kernel)
{
    LutPattern const pattern(kernel, numOfVoxels, source);
    LutPattern low = pattern;
    low.care %= bitsPerWord;
    LutPattern high = pattern;
    high.care -= low.care;
    uint64 hits = 0;
    for (unsigned int index = 0; index < bitsPerWord; ++index) {
        hits |= uint64{low.fits(index)} << index;
    }
    entries_->words.resize(numOfWords);
    for (unsigned int word = 0; word < numOfWords; ++word) {
        if (high.fits(word * bitsPerWord)) {
            entries_->words[word] |= hits;
        }
    }
}

void MorphologicalLut3D::buildFromLut(int const* entries, unsigned int size)
{
    requireWholeTable(entries, size, fullSize, source);
    entries_->words.assign(numOfWords, 0);
    for (unsigned int index = 0; index < size; ++index) {
        bool const isHit = static_cast<unsigned char>(entries[index]) != 0;
        entries_->words[index / bitsPerWord] |= uint64{isHit} << (index % bitsPerWord);
    }
}

void MorphologicalLut3D::reset()
{
    entries_->words = {};
}

uint64 const* MorphologicalLutAccess::words(MorphologicalLut3D const& lut)
{
    return lut.entries_->words.data();
}

void MorphologicalLutAccess::setHits(MorphologicalLut3D& lut, std::vector<unsigned int> const& indices)
{
    lut.entries_->words.assign(numOfWords, 0);
    for (unsigned int const index : indices) {
        lut.entries_->words[index / bitsPerWord] |= uint64{1} << (index % bitsPerWord);
    }
}

} // namespace mox::morphology
