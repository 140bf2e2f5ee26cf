#include "Core/private/Rules/RuleAssertInterpretation.h"

#include <gtest/gtest.h>

#include <vector>

#include "testing/RuleImages.h"
#include "testing/Verdict.h"

namespace mox::testing {

namespace {

Verdict refusal(char const* message)
{
    return {message, "RuleAssertInterpretation"};
}

template <class T>
class RuleAssertInterpretationOf : public ::testing::Test {
protected:
    Verdict verdictOn(std::vector<ImageInterpretation> const& allowed, ImageInterpretation interpretation)
    {
        TestImage image;
        image.setInterpretation(interpretation);
        RuleAssertInterpretation<T> rule(allowed);
        return verdict(rule, &image);
    }
};

TYPED_TEST_SUITE(RuleAssertInterpretationOf, ImagePointers);

TYPED_TEST(RuleAssertInterpretationOf, passesWhatIsInTheList)
{
    EXPECT_EQ(this->verdictOn({INTERPRETATION_BINARY, INTERPRETATION_LABEL}, INTERPRETATION_BINARY), passes);
    EXPECT_EQ(this->verdictOn({INTERPRETATION_BINARY, INTERPRETATION_LABEL}, INTERPRETATION_LABEL), passes);
    EXPECT_EQ(this->verdictOn({INTERPRETATION_VALUE}, INTERPRETATION_VALUE), passes);
}

TYPED_TEST(RuleAssertInterpretationOf, namesTheListAndTheRefusedInterpretation)
{
    EXPECT_EQ(this->verdictOn({INTERPRETATION_LABEL, INTERPRETATION_BINARY}, INTERPRETATION_VALUE),
              refusal("Interpretation must be one of the following items : label, binary. Current interpretation is "
                      "value"));
    EXPECT_EQ(this->verdictOn({INTERPRETATION_VALUE}, INTERPRETATION_BINARY),
              refusal("Interpretation must be one of the following items : value. Current interpretation is binary"));
}

TYPED_TEST(RuleAssertInterpretationOf, refusesEverythingWithAnEmptyList)
{
    EXPECT_EQ(this->verdictOn({}, INTERPRETATION_LABEL),
              refusal("Interpretation must be one of the following items : . Current interpretation is label"));
}

TYPED_TEST(RuleAssertInterpretationOf, refusesNull)
{
    RuleAssertInterpretation<TypeParam> rule({INTERPRETATION_VALUE});
    EXPECT_EQ(verdict(rule, nullptr), refusal("Parameter value cannot be null"));
}

} // namespace

} // namespace mox::testing
