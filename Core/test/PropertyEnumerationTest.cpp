#include <Moxelcore/Core/Enum/OptimLevelType.h>
#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "Core/private/PropertyValue.h"
#include "testing/lineless.h"

namespace mox {

namespace {

constexpr char const* noTable = "Runtime error :\n"
                                "#1 Error : no enumeration info associated with the EnumProperty \n"
                                "    (at \"PropertyEnumeration\", line N) \n";

/// A property of the levels, at 1 unless set otherwise.
class PropertyEnumerationOfLevels : public ::testing::Test {
protected:
    PropertyEnumerationOfLevels()
    {
        PropertyAccess::setEnumInfo(level, getEnumInfo<OptimLevelType>());
        level = 1;
    }

    /// The value after a successful read, none when the text is refused and the value was kept.
    std::optional<int> read(char const* text)
    {
        int const before = level.get();
        String echo = "before";
        bool const understood = level.read(text, echo);
        EXPECT_STREQ(echo.c_str(), text);
        if (!understood) {
            EXPECT_EQ(level.get(), before);
            return std::nullopt;
        }
        return level.get();
    }

    PropertyEnumeration level;
};

TEST(PropertyEnumeration, isZeroUnlockedAndWithoutTableByDefault)
{
    PropertyEnumeration const property;
    EXPECT_EQ(property.get(), 0);
    EXPECT_FALSE(property.isLocked());
    EXPECT_THROW(property.getEnumInfo(), RuntimeError);
}

TEST_F(PropertyEnumerationOfLevels, readsNames)
{
    EXPECT_EQ(read("GPU"), 3);
    EXPECT_EQ(read("SCALAR"), 0);
}

TEST_F(PropertyEnumerationOfLevels, readsNumbersOfTheTable)
{
    EXPECT_EQ(read("3"), 3);
    EXPECT_EQ(read(" 2"), 2);
    EXPECT_EQ(read("3abc"), 3);
    EXPECT_EQ(read("0 GPU"), 0);
}

TEST_F(PropertyEnumerationOfLevels, refusesWhatIsNotInTheTable)
{
    for (char const* text : {"7", "4", "-1", "gpu", "GPU ", " GPU", "", "x3", "99999999999"}) {
        EXPECT_EQ(read(text), std::nullopt) << text;
    }
}

TEST_F(PropertyEnumerationOfLevels, echoesButKeepsItsValueWhileLocked)
{
    level.lock(true);
    for (char const* text : {"GPU", "3", "unknown"}) {
        EXPECT_EQ(read(text), std::nullopt) << text;
    }
}

TEST_F(PropertyEnumerationOfLevels, isAssignedNumbersUnlessLocked)
{
    EXPECT_EQ(level = 2, 2);
    level.lock(true);
    EXPECT_EQ(level = 3, 2);
    level.set(3);
    EXPECT_EQ(level.get(), 2);
}

TEST_F(PropertyEnumerationOfLevels, takesNumbersOutOfTheTableWithoutARule)
{
    level = 99;
    EXPECT_EQ(level.get(), 99);
    EXPECT_NO_THROW(level.applyRules());
}

TEST_F(PropertyEnumerationOfLevels, givesItsTable)
{
    EXPECT_STREQ(level.getEnumInfo().getEnumName().c_str(), "OptimLevelType");
    EXPECT_EQ(level.getEnumInfo().size(), 4);
}

TEST_F(PropertyEnumerationOfLevels, sharesValueAndTableWithItsCopies)
{
    auto copy = std::make_unique<PropertyEnumeration>(level);
    PropertyEnumeration assigned;
    assigned = *copy;
    String echo;
    EXPECT_TRUE(assigned.read("GPU", echo));
    EXPECT_EQ(level.get(), 3);
    EXPECT_EQ(copy->get(), 3);
    copy.reset();
    EXPECT_EQ(&assigned.getEnumInfo(), &level.getEnumInfo());
}

TEST_F(PropertyEnumerationOfLevels, readsNamesWhenItIsSeenAsANumber)
{
    BaseProperty& base = level;
    String echo;
    EXPECT_TRUE(base.read("VEC_AVX", echo));
    auto* const number = dynamic_cast<Property<int>*>(&base);
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->get(), 2);
}

TEST(PropertyEnumeration, cannotReadWithoutATable)
{
    PropertyEnumeration property;
    for (char const* text : {"GPU", "0", ""}) {
        String echo = "before";
        try {
            property.read(text, echo);
            ADD_FAILURE() << "nothing was thrown for " << text;
        } catch (RuntimeError const& error) {
            EXPECT_EQ(testing::lineless(error.what()), noTable);
        }
        EXPECT_STREQ(echo.c_str(), text);
    }
}

TEST(PropertyEnumeration, hasNoTableToGive)
{
    PropertyEnumeration const property;
    try {
        property.getEnumInfo();
        FAIL() << "nothing was thrown";
    } catch (RuntimeError const& error) {
        EXPECT_EQ(testing::lineless(error.what()), noTable);
    }
}

TEST(PropertyEnumeration, refusesToReadWithoutATableWhileLocked)
{
    PropertyEnumeration property;
    property.lock(true);
    String echo = "before";
    EXPECT_FALSE(property.read("GPU", echo));
    EXPECT_STREQ(echo.c_str(), "GPU");
}

} // namespace

} // namespace mox
