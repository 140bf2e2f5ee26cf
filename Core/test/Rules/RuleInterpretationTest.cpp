#include <gtest/gtest.h>

#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleSetInterpretation.h"
#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

constexpr ImageInterpretation interpretations[] = {INTERPRETATION_BINARY, INTERPRETATION_LABEL, INTERPRETATION_VALUE};

TEST(RuleSetInterpretation, givesItsInterpretation)
{
    for (ImageInterpretation const before : interpretations) {
        for (ImageInterpretation const wanted : interpretations) {
            TestImage image;
            image.setInterpretation(before);
            RuleSetInterpretation rule(wanted);
            EXPECT_EQ(verdict(rule, &image), passes);
            EXPECT_EQ(image.getInterpretation(), wanted);
        }
    }
}

/// An image that nobody has a reason to change.
class UntouchedImage final : public memory::InMemoryImage {
public:
    bool setInterpretation(ImageInterpretation const&) override
    {
        ADD_FAILURE() << "changed without need";
        return false;
    }
};

TEST(RuleSetInterpretation, passesAnImageThatNeedsNoChange)
{
    UntouchedImage image;
    RuleSetInterpretation rule(INTERPRETATION_VALUE);
    EXPECT_EQ(verdict(rule, &image), passes);
}

TEST(RuleSetInterpretation, namesOldAndNewWhenTheImageRefuses)
{
    TestImage image;
    image.interprets = false;
    RuleSetInterpretation rule(INTERPRETATION_BINARY);
    EXPECT_EQ(verdict(rule, &image),
              (Verdict{"Image cannot be re-interpreted from value to binary", "RuleSetInterpretation"}));
    EXPECT_EQ(image.getInterpretation(), INTERPRETATION_VALUE);
}

TEST(RuleSetInterpretation, looksAtTheImageNotAtItsAnswer)
{
    RuleSetInterpretation rule(INTERPRETATION_LABEL);
    UnderstatingImage understating;
    EXPECT_EQ(verdict(rule, &understating), passes);
    OverstatingImage overstating;
    EXPECT_EQ(verdict(rule, &overstating),
              (Verdict{"Image cannot be re-interpreted from value to label", "RuleSetInterpretation"}));
}

TEST(RuleSetInterpretation, refusesNull)
{
    RuleSetInterpretation rule(INTERPRETATION_BINARY);
    EXPECT_EQ(verdict(rule, nullptr), (Verdict{"Parameter value cannot be null", "RuleSetInterpretation"}));
}

TEST(RuleEnforceSameInterpretation, givesTheInputsInterpretation)
{
    Property<ImageModel const*> input;
    RuleEnforceSameInterpretation rule(input);
    for (ImageInterpretation const wanted : interpretations) {
        TestImage inputImage;
        inputImage.setInterpretation(wanted);
        input = &inputImage;
        TestImage image;
        EXPECT_EQ(verdict(rule, &image), passes);
        EXPECT_EQ(image.getInterpretation(), wanted);
        EXPECT_EQ(inputImage.getInterpretation(), wanted);
    }
}

TEST(RuleEnforceSameInterpretation, namesOldAndNewWhenTheImageRefuses)
{
    TestImage inputImage;
    inputImage.setInterpretation(INTERPRETATION_LABEL);
    Property<ImageModel const*> input;
    input = &inputImage;
    TestImage image;
    image.interprets = false;
    RuleEnforceSameInterpretation rule(input);
    EXPECT_EQ(verdict(rule, &image),
              (Verdict{"Image cannot be re-interpreted from value to label", "RuleEnforceSameInterpretation"}));
}

TEST(RuleEnforceSameInterpretation, passesTheInputItself)
{
    UntouchedImage image;
    Property<ImageModel const*> input;
    input = &image;
    RuleEnforceSameInterpretation rule(input);
    EXPECT_EQ(verdict(rule, &image), passes);
}

TEST(RuleEnforceSameInterpretation, refusesNullOnEitherSide)
{
    Verdict const null = {"Parameter value cannot be null", "RuleEnforceSameInterpretation"};
    TestImage image;
    Property<ImageModel const*> input;
    RuleEnforceSameInterpretation rule(input);
    EXPECT_EQ(verdict(rule, &image), null);
    EXPECT_EQ(verdict(rule, nullptr), null);
    input = &image;
    EXPECT_EQ(verdict(rule, nullptr), null);
}

} // namespace

} // namespace mox::testing
