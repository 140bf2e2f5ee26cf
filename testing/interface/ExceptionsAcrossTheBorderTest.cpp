#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "../lineless.h"

// The library throws, the application catches: by class, by base, and with the type information that both share.

namespace mox::testing {

namespace {

using segmentation::Threshold;

void findUnknownClass()
{
    AlgoInfo::fromName("NoSuchClass");
}

void setCountOfUnknownDirection()
{
    AlgoBorderInfluence influence(0, 0, 0, 0, 0);
    influence.setNumOfVoxels(static_cast<DirectionTypes>(11), 1);
}

void runWithoutImages()
{
    Threshold::New()->run();
}

void runAtALevelWithoutRunner()
{
    memory::InMemoryImage input;
    memory::InMemoryImage output;
    input.allocate(MOX_UINT8, 1, 1, 1, 1, 1);
    auto const threshold = Threshold::New();
    threshold->input = &input;
    threshold->output = &output;
    threshold->setAutoCpuDispatch(false);
    threshold->setOptimLevel(OptimLevelType::VEC_AVX);
    threshold->run();
}

void findClassBeyondTheLast()
{
    AlgoInfo::at(AlgoInfo::count());
}

void readEnumerationWithoutTable()
{
    PropertyEnumeration property;
    String echo;
    property.read("GPU", echo);
}

/// The text of what a call throws, caught as an E.
template <class E>
std::string textOf(void (*failing)())
{
    try {
        failing();
    } catch (E const& exception) {
        return lineless(exception.what());
    }
    return "nothing was thrown";
}

constexpr char const* unknownClass = "Invalid call :\n"
                                     "#1 Error : The className NoSuchClass does not exist \n"
                                     "    (at \"AlgoInfo\", line N) \n";
constexpr char const* unknownDirection = "Invalid call :\n"
                                         "#1 Error : Invalid direction. \n"
                                         "    (at \"AlgoBorderInfluence\", line N) \n";
constexpr char const* nullImage = "Rule exception :\n"
                                  "#1 Error : Parameter value cannot be null \n"
                                  "    (at \"RuleAssertNotNull\", line N) \n"
                                  "#2 From Rule error in property input \n"
                                  "#3 From Threshold of Moxelcore library \n";
constexpr char const* noRunner = "Unexpected error :\n"
                                 "#1 Error : no runner found for algorithm \n"
                                 "    (at \"BaseAlgorithm\", line N) \n"
                                 "#2 From Threshold of Moxelcore library \n";
constexpr char const* noTable = "Runtime error :\n"
                                "#1 Error : no enumeration info associated with the EnumProperty \n"
                                "    (at \"PropertyEnumeration\", line N) \n";

TEST(ExceptionsAcrossTheBorder, areCaughtByTheirClass)
{
    EXPECT_EQ(textOf<InvalidCall>(&findUnknownClass), unknownClass);
    EXPECT_EQ(textOf<InvalidCall>(&setCountOfUnknownDirection), unknownDirection);
    EXPECT_EQ(textOf<RuleException>(&runWithoutImages), nullImage);
    EXPECT_EQ(textOf<UnexpectedError>(&runAtALevelWithoutRunner), noRunner);
    EXPECT_EQ(textOf<RuntimeError>(&readEnumerationWithoutTable), noTable);
    EXPECT_TRUE(textOf<BadIndex>(&findClassBeyondTheLast).starts_with("Bad index :\n#1 Error : There is no class at"));
}

TEST(ExceptionsAcrossTheBorder, showFixedLinesAsTheyAre)
{
    try {
        setCountOfUnknownDirection();
        FAIL() << "nothing was thrown";
    } catch (InvalidCall const& error) {
        EXPECT_STREQ(error.what().c_str(), "Invalid call :\n"
                                           "#1 Error : Invalid direction. \n"
                                           "    (at \"AlgoBorderInfluence\", line 74) \n");
    }
}

TEST(ExceptionsAcrossTheBorder, areCaughtByTheirBases)
{
    EXPECT_EQ(textOf<ProcessingException>(&findUnknownClass), unknownClass);
    EXPECT_EQ(textOf<ProcessingException>(&runAtALevelWithoutRunner), noRunner);
    EXPECT_EQ(textOf<ProcessingException>(&readEnumerationWithoutTable), noTable);
    EXPECT_EQ(textOf<Exception>(&findUnknownClass), unknownClass);
    EXPECT_EQ(textOf<Exception>(&runWithoutImages), nullImage);
}

TEST(ExceptionsAcrossTheBorder, areNotCaughtByOtherClasses)
{
    EXPECT_THROW(textOf<ProcessingException>(&runWithoutImages), RuleException);
    EXPECT_THROW(textOf<RuleException>(&findUnknownClass), InvalidCall);
    auto const catchesStandardOnes = [] {
        try {
            findUnknownClass();
        } catch (std::exception const&) {
        }
    };
    EXPECT_THROW(catchesStandardOnes(), InvalidCall);
}

TEST(ExceptionsAcrossTheBorder, areThrownByTheApplicationToo)
{
    auto const failing = [] {
        Exception::exceptionInfo info;
        info.message = "of the application";
        throw FileSystemError(info);
    };
    EXPECT_EQ(textOf<Exception>(failing), "File system error :\n#1 Error : of the application \n");
    EXPECT_EQ(textOf<ProcessingException>(failing), "File system error :\n#1 Error : of the application \n");
}

/// An application's image whose size cannot be asked for.
class ThrowingImage final : public memory::InMemoryImage {
public:
    unsigned int getSize(ImageDimension const&) const override { throw std::range_error("lost"); }
};

TEST(ExceptionsAcrossTheBorder, turnStandardOnesIntoUnexpectedErrors)
{
    ThrowingImage image;
    memory::InMemoryImage output;
    auto const threshold = Threshold::New();
    threshold->input = &image;
    threshold->output = &output;
    try {
        threshold->run();
        FAIL() << "nothing was thrown";
    } catch (UnexpectedError const& error) {
        EXPECT_STREQ(error.what().c_str(), "Unexpected error :\n#1 Error : lost Threshold of Moxelcore library \n");
    }
}

TEST(ExceptionsAcrossTheBorder, letEnumerationsThrowTheStandardOne)
{
    EnumInfo const& info = getEnumInfo<OptimLevelType>();
    try {
        info.getName(99);
        FAIL() << "nothing was thrown";
    } catch (std::out_of_range const& error) {
        EXPECT_STREQ(error.what(), "invalid map<K, T> key");
    }
}

TEST(TypesAcrossTheBorder, areFoundBehindTheirBases)
{
    auto const algorithm = AlgoInfo::fromName("Threshold").createInstance();
    EXPECT_NE(dynamic_cast<Threshold*>(algorithm.get()), nullptr);
    BaseProperty* const input = algorithm->getPropertyfromName("input");
    BaseProperty* const lowLevel = algorithm->getPropertyfromName("lowLevel");
    BaseProperty* const output = algorithm->getPropertyfromName("output");
    EXPECT_NE(dynamic_cast<Property<ImageModel const*>*>(input), nullptr);
    EXPECT_EQ(dynamic_cast<Property<ImageModel*>*>(input), nullptr);
    EXPECT_NE(dynamic_cast<Property<double>*>(lowLevel), nullptr);
    EXPECT_EQ(dynamic_cast<Property<int>*>(lowLevel), nullptr);
    EXPECT_NE(dynamic_cast<Property<ImageModel*>*>(output), nullptr);
    EXPECT_EQ(dynamic_cast<PropertyEnumeration*>(output), nullptr);
}

TEST(TypesAcrossTheBorder, carryValuesToTheObject)
{
    auto const base = AlgoInfo::fromName("Threshold").createInstance();
    auto* const lowLevel = dynamic_cast<Property<double>*>(base->getPropertyfromName("lowLevel"));
    ASSERT_NE(lowLevel, nullptr);
    *lowLevel = 110.0;
    auto* const threshold = dynamic_cast<Threshold*>(base.get());
    ASSERT_NE(threshold, nullptr);
    EXPECT_EQ(threshold->lowLevel.get(), 110.0);
}

} // namespace

} // namespace mox::testing
