#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

#include <gmock/gmock.h>

#include <Moxelcore/Core/Exception.h>

#include <sys/mman.h>

#include <random>
#include <string>
#include <vector>

namespace mox::testing {

namespace {

using morphology::MorphologicalLut2D;
using morphology::MorphologicalLut3D;
using morphology::PropertyMorphologicalLut2D;
using morphology::PropertyMorphologicalLut3D;
using ::testing::HasSubstr;

Vector<unsigned char> kernelOf(std::vector<unsigned char> const& values)
{
    Vector<unsigned char> kernel;
    for (unsigned char const value : values) {
        kernel.push_back(value);
    }
    return kernel;
}

/// From the definition.
bool fits(std::vector<unsigned char> const& kernel, unsigned int pattern)
{
    for (std::size_t k = 0; k < kernel.size(); ++k) {
        if (kernel[k] <= 1 && (pattern >> k & 1U) != kernel[k]) {
            return false;
        }
    }
    return true;
}

template <class Work>
std::string messageOf(Work const& work)
{
    try {
        work();
    } catch (InvalidCall const& error) {
        return error.what().c_str();
    }
    return "nothing thrown";
}

template <class Lut>
class Luts : public ::testing::Test {
protected:
    static constexpr std::size_t numOfVoxels = std::is_same_v<Lut, MorphologicalLut2D> ? 9 : 27;
    std::vector<unsigned char> const foreground = std::vector<unsigned char>(numOfVoxels, 1);
    std::vector<unsigned char> const background = std::vector<unsigned char>(numOfVoxels, 0);
};

using BothLuts = ::testing::Types<MorphologicalLut2D, MorphologicalLut3D>;
TYPED_TEST_SUITE(Luts, BothLuts);

TYPED_TEST(Luts, areEmptyAtFirst)
{
    TypeParam const lut;
    EXPECT_EQ(lut.size(), 0U);
    for (unsigned int const index : {0U, 511U, TypeParam::fullSize - 1, TypeParam::fullSize, ~0U}) {
        EXPECT_EQ(lut[index], 0);
    }
    EXPECT_EQ(TypeParam::fullSize, 1U << this->numOfVoxels);
}

TYPED_TEST(Luts, gatherTheHitsOfTheirKernels)
{
    TypeParam lut;
    lut.addKernel(kernelOf(this->foreground));
    EXPECT_EQ(lut.size(), TypeParam::fullSize);
    EXPECT_NE(lut[TypeParam::fullSize - 1], 0);
    EXPECT_EQ(lut[0], 0);
    lut.addKernel(kernelOf(this->background));
    EXPECT_NE(lut[TypeParam::fullSize - 1], 0);
    EXPECT_NE(lut[0], 0);
    EXPECT_EQ(lut[1], 0);
    EXPECT_EQ(lut[TypeParam::fullSize], 0);
    EXPECT_EQ(lut[~0U], 0);
}

TYPED_TEST(Luts, takeEveryPatternThatFitsAKernel)
{
    std::mt19937 random(3);
    for (int round = 0; round < 20; ++round) {
        std::vector<unsigned char> kernel(this->numOfVoxels);
        for (auto& value : kernel) {
            unsigned char const values[] = {0, 1, 2, 7, 255};
            value = values[random() % 5];
        }
        TypeParam lut;
        lut.addKernel(kernelOf(kernel));
        unsigned int const step = this->numOfVoxels == 9 ? 1 : 4099;
        for (unsigned int pattern = 0; pattern < TypeParam::fullSize; pattern += step) {
            ASSERT_EQ(lut[pattern] != 0, fits(kernel, pattern)) << pattern;
        }
        unsigned int fitting = 0; // a pattern that fits for sure, and its neighbours
        for (std::size_t k = 0; k < kernel.size(); ++k) {
            fitting |= kernel[k] == 1 ? 1U << k : 0U;
        }
        for (std::size_t k = 0; k < kernel.size(); ++k) {
            ASSERT_NE(lut[fitting], 0);
            ASSERT_EQ(lut[fitting ^ 1U << k] != 0, kernel[k] > 1);
        }
    }
}

TYPED_TEST(Luts, refuseKernelsOfAnotherLength)
{
    TypeParam lut;
    std::string const wanted = "The kernel must have a size of " + std::to_string(this->numOfVoxels) + ". ";
    for (std::size_t const size : {std::size_t{0}, this->numOfVoxels - 1, this->numOfVoxels + 1}) {
        Vector<unsigned char> const kernel(size);
        EXPECT_THAT(messageOf([&] { lut.addKernel(kernel); }),
                    HasSubstr(wanted + "This current size is " + std::to_string(size)));
    }
    EXPECT_EQ(lut.size(), 0U);
}

TYPED_TEST(Luts, areCopiedDeeplyAndCompared)
{
    TypeParam lut;
    TypeParam const empty;
    EXPECT_TRUE(lut == empty);
    lut.addKernel(kernelOf(this->foreground));
    EXPECT_TRUE(lut != empty);
    TypeParam copy(lut);
    EXPECT_TRUE(copy == lut);
    copy.addKernel(kernelOf(this->background));
    EXPECT_TRUE(copy != lut);
    EXPECT_EQ(lut[0], 0);
    lut = copy;
    EXPECT_TRUE(copy == lut);
    auto const& self = lut;
    lut = self;
    EXPECT_TRUE(copy == lut);
    lut.reset();
    EXPECT_TRUE(lut == empty);
    EXPECT_EQ(lut.size(), 0U);
    EXPECT_EQ(copy.size(), TypeParam::fullSize);
}

TYPED_TEST(Luts, refuseArraysThatAreNoWholeTable)
{
    TypeParam lut;
    std::string const wanted =
        "LUT array cannot be NULL and must have a size of " + std::to_string(TypeParam::fullSize) + " elements.";
    int const entries[] = {1, 2};
    int const* const none = nullptr;
    EXPECT_THAT(messageOf([&] { lut.buildFromLut(none, TypeParam::fullSize); }), HasSubstr(wanted));
    EXPECT_THAT(messageOf([&] { lut.buildFromLut(entries, 2); }), HasSubstr(wanted));
    EXPECT_THAT(messageOf([&] { lut.buildFromLut(entries, TypeParam::fullSize + 1); }), HasSubstr(wanted));
    EXPECT_EQ(lut.size(), 0U);
}

TEST(MorphologicalLut2D, isBuiltFromArrays)
{
    std::vector<int> integers(512);
    std::vector<unsigned char> bytes(512);
    for (unsigned int i = 0; i < 512; ++i) {
        integers[i] = static_cast<int>(i) - 3;
        bytes[i] = static_cast<unsigned char>(integers[i]);
    }
    MorphologicalLut2D fromIntegers;
    MorphologicalLut2D fromBytes;
    fromIntegers.buildFromLut(integers.data(), 512);
    fromBytes.buildFromLut(bytes.data(), 512);
    EXPECT_TRUE(fromIntegers == fromBytes);
    EXPECT_EQ(fromIntegers[2], 255);
    EXPECT_EQ(fromIntegers[259], 0); // 256, of which the low byte counts
    EXPECT_THROW(fromBytes.buildFromLut(static_cast<unsigned char const*>(nullptr), 512), InvalidCall);
    EXPECT_THROW(fromBytes.buildFromLut(bytes.data(), 511), InvalidCall);
    EXPECT_TRUE(fromIntegers == fromBytes);
}

TEST(MorphologicalLut3D, isBuiltFromAnArray)
{
    std::size_t const bytes = std::size_t{MorphologicalLut3D::fullSize} * sizeof(int);
    // Pages that are only read take no memory.
    void* const memory =
        ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    int* const entries = static_cast<int*>(memory);
    entries[77] = 1;
    entries[MorphologicalLut3D::fullSize - 1] = -1;
    entries[78] = 256; // of which the low byte counts
    MorphologicalLut3D lut;
    lut.buildFromLut(entries, MorphologicalLut3D::fullSize);
    ::munmap(memory, bytes);
    EXPECT_TRUE(lut[77]);
    EXPECT_FALSE(lut[78]);
    EXPECT_TRUE(lut[MorphologicalLut3D::fullSize - 1]);
    PropertyMorphologicalLut3D property;
    String echo;
    ASSERT_TRUE(property.read("134217727 77", echo));
    EXPECT_TRUE(*property.get() == lut);
}

// ---- the property

TEST(PropertyMorphologicalLut2D, hasATableOfItsOwn)
{
    PropertyMorphologicalLut2D property;
    ASSERT_NE(property.get(), nullptr);
    EXPECT_EQ(property.get()->size(), 0U);
    MorphologicalLut2D other;
    property = &other;
    EXPECT_EQ(property.get(), &other);
}

TEST(PropertyMorphologicalLut2D, readsAnEntryPerCharacter)
{
    PropertyMorphologicalLut2D property;
    String echo;
    std::string text(512, '0');
    text[16] = '1';
    text.insert(100, "\n \t");
    MorphologicalLut2D other;
    property = &other;
    EXPECT_TRUE(property.read(text.c_str(), echo));
    EXPECT_EQ(echo, String(text.c_str()));
    EXPECT_NE(property.get(), &other);
    EXPECT_EQ(other.size(), 0U);
    ASSERT_EQ(property.get()->size(), 512U);
    for (unsigned int i = 0; i < 512; ++i) {
        EXPECT_EQ((*property.get())[i], i == 16 ? 1 : 0);
    }
}

TEST(PropertyMorphologicalLut2D, refusesOtherTexts)
{
    PropertyMorphologicalLut2D property;
    String echo;
    EXPECT_TRUE(property.read(std::string(512, '1').c_str(), echo));
    for (std::string const& text : {std::string(), std::string("1"), std::string(511, '0'), std::string(513, '0'),
                                    std::string(511, '0') + '2', std::string(511, '0') + 'x'}) {
        EXPECT_FALSE(property.read(text.c_str(), echo));
        EXPECT_EQ(echo, String(text.c_str()));
        EXPECT_EQ((*property.get())[0], 1);
    }
    property.lock(true);
    EXPECT_FALSE(property.read(std::string(512, '0').c_str(), echo));
    EXPECT_EQ((*property.get())[0], 1);
}

TEST(PropertyMorphologicalLut2D, sharesItsTableWithCopies)
{
    PropertyMorphologicalLut2D property;
    PropertyMorphologicalLut2D const copy(property);
    PropertyMorphologicalLut2D assigned;
    assigned = property;
    String echo;
    EXPECT_TRUE(property.read(std::string(512, '1').c_str(), echo));
    EXPECT_EQ(copy.get()->size(), 512U);
    EXPECT_EQ(assigned.get()->size(), 512U);
}

TEST(PropertyMorphologicalLut3D, readsIndicesOfHits)
{
    PropertyMorphologicalLut3D property;
    String echo;
    EXPECT_TRUE(property.read("  8192 0\n134217727\t8192 ", echo));
    EXPECT_EQ(property.get()->size(), MorphologicalLut3D::fullSize);
    for (unsigned int const index : {0U, 8192U, 134217727U}) {
        EXPECT_TRUE((*property.get())[index]);
    }
    for (unsigned int const index : {1U, 8191U, 8193U, 134217726U, 134217728U}) {
        EXPECT_FALSE((*property.get())[index]);
    }
    EXPECT_TRUE(property.read("", echo));
    EXPECT_EQ(property.get()->size(), MorphologicalLut3D::fullSize);
    EXPECT_FALSE((*property.get())[0]);
}

TEST(PropertyMorphologicalLut3D, refusesOtherTexts)
{
    PropertyMorphologicalLut3D property;
    String echo;
    for (char const* const text : {"134217728", "-1", "1.5", "1,2", "x", "99999999999999999999", "+1", "0x1"}) {
        EXPECT_FALSE(property.read(text, echo)) << text;
        EXPECT_EQ(property.get()->size(), 0U);
    }
}

} // namespace

} // namespace mox::testing
