#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Core/Property.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Core/private/Helper/raise.h"
#include "Core/private/PropertyValue.h"
#include "testing/lineless.h"

namespace mox {

namespace {

using ::testing::ElementsAre;

/// A rule that does what a test wants.
class RuleOfTest final : public Rules<int> {
public:
    using Action = std::function<void(PropertyValue<int>&)>;

    explicit RuleOfTest(Action action)
        : action_(std::move(action))
    {
    }

    void apply(PropertyValue<int>& property) override { action_(property); }

private:
    Action action_;
};

void attach(Property<int>& property, RuleOfTest::Action action)
{
    PropertyAccess::addRule<int>(property, boost::make_shared<RuleOfTest>(std::move(action)));
}

class PropertyRules : public ::testing::Test {
protected:
    PropertyRules() { PropertyAccess::setName(property, "size"); }

    Property<int> property;
    std::vector<std::string> calls;

    RuleOfTest::Action noting(char const* call)
    {
        return [this, call](PropertyValue<int>&) { calls.emplace_back(call); };
    }
};

TEST_F(PropertyRules, passWhereThereAreNone)
{
    EXPECT_NO_THROW(property.applyRules());
}

TEST_F(PropertyRules, areAppliedInTheOrderOfAttachment)
{
    attach(property, noting("first"));
    attach(property, noting("second"));
    attach(property, noting("third"));
    property.applyRules();
    EXPECT_THAT(calls, ElementsAre("first", "second", "third"));
}

TEST_F(PropertyRules, endAtTheFirstThatFails)
{
    attach(property, noting("first"));
    attach(property, [](PropertyValue<int>&) { helper::raise<RuleException>("Core/test/Rule", "refused"); });
    attach(property, noting("third"));
    EXPECT_THROW(property.applyRules(), RuleException);
    EXPECT_THAT(calls, ElementsAre("first"));
}

TEST_F(PropertyRules, addALevelThatNamesTheProperty)
{
    attach(property, [](PropertyValue<int>&) { helper::raise<RuleException>("Core/test/Rule", "refused"); });
    try {
        property.applyRules();
        FAIL() << "nothing was thrown";
    } catch (RuleException const& exception) {
        EXPECT_EQ(testing::lineless(exception.what()), "Rule exception :\n"
                                                       "#1 Error : refused \n"
                                                       "    (at \"Rule\", line N) \n"
                                                       "#2 From Rule error in property size \n");
    }
}

TEST_F(PropertyRules, letOtherExceptionsOfTheFamilyPassAsTheyAre)
{
    attach(property, [](PropertyValue<int>&) { helper::raise<InvalidCall>({"Core/test/Rule", 3}, "misused"); });
    try {
        property.applyRules();
        FAIL() << "nothing was thrown";
    } catch (InvalidCall const& exception) {
        EXPECT_STREQ(exception.getInfo().c_str(), "#1 Error : misused \n    (at \"Rule\", line 3) \n");
    }
}

TEST_F(PropertyRules, letForeignExceptionsPass)
{
    attach(property, [](PropertyValue<int>&) { throw std::range_error("foreign"); });
    EXPECT_THROW(property.applyRules(), std::range_error);
}

TEST_F(PropertyRules, receiveTheValueAndMayChangeItWhileThePropertyIsLocked)
{
    property.set(20);
    property.lock(true);
    attach(property, [](PropertyValue<int>& held) { ++held.value; });
    property.applyRules();
    EXPECT_EQ(property.get(), 21);
}

TEST_F(PropertyRules, receiveTheWholeRecordOfTheProperty)
{
    attach(property, [](PropertyValue<int>& held) {
        EXPECT_STREQ(held.name.c_str(), "size");
        EXPECT_EQ(held.rules.size(), 1U);
    });
    property.applyRules();
}

TEST_F(PropertyRules, stayAliveWhileTheyDetachThemselves)
{
    attach(property, [this](PropertyValue<int>&) {
        PropertyAccess::removeLastRule(property);
        calls.emplace_back("still alive");
    });
    property.applyRules();
    property.applyRules();
    EXPECT_THAT(calls, ElementsAre("still alive"));
}

TEST_F(PropertyRules, areSharedWithCopiesOfTheProperty)
{
    Property<int> const copy(property);
    attach(property, noting("rule"));
    Property<int>(copy).applyRules();
    EXPECT_THAT(calls, ElementsAre("rule"));
}

TEST_F(PropertyRules, areRemovedFromTheEnd)
{
    attach(property, noting("first"));
    attach(property, noting("second"));
    PropertyAccess::removeLastRule(property);
    property.applyRules();
    EXPECT_THAT(calls, ElementsAre("first"));
}

} // namespace

} // namespace mox
