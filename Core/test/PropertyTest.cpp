#include <Moxelcore/Core/InMemoryImage.h>
#include <Moxelcore/Core/Property.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "Core/private/PropertyValue.h"

namespace mox {

namespace {

/// Two values that differ from each other and from the default.
template <class T>
struct Samples {
    T first = static_cast<T>(3);
    T second = static_cast<T>(4);
};

template <>
struct Samples<bool> {
    bool first = true;
    bool second = false;
};

template <>
struct Samples<String> {
    String first = "first";
    String second = "second";
};

template <class T>
    requires std::is_pointer_v<T>
struct Samples<T> {
    memory::InMemoryImage images[2];
    T first = &images[0];
    T second = &images[1];
};

template <class T>
struct Samples<Vector<T>> {
    Vector<T> first = Vector<T>(3);
    Vector<T> second = Vector<T>(4);
};

template <class T>
class PropertyOf : public ::testing::Test, protected Samples<T> {
};

using Values = ::testing::Types<bool, int, unsigned int, int64, uint64, double, String, ImageModel*, ImageModel const*,
                                Vector<unsigned char>, Vector<int>, Vector<unsigned int>, Vector<int64>, Vector<uint64>,
                                Vector<double>>;
TYPED_TEST_SUITE(PropertyOf, Values);

TYPED_TEST(PropertyOf, isUnlockedUnnamedAndValueInitialisedByDefault)
{
    Property<TypeParam> const property;
    EXPECT_FALSE(property.isLocked());
    EXPECT_STREQ(property.getName().c_str(), "");
    EXPECT_TRUE(property.get() == TypeParam());
}

TYPED_TEST(PropertyOf, keepsWhatIsSet)
{
    Property<TypeParam> property;
    property.set(this->first);
    EXPECT_TRUE(property.get() == this->first);
    TypeParam const converted = property;
    EXPECT_TRUE(converted == this->first);
    property.set(this->second);
    EXPECT_TRUE(property.get() == this->second);
}

TYPED_TEST(PropertyOf, returnsTheHeldValueFromAssignment)
{
    Property<TypeParam> property;
    TypeParam const held = property = this->first;
    EXPECT_TRUE(held == this->first);
    property.lock(true);
    TypeParam const heldWhileLocked = property = this->second;
    EXPECT_TRUE(heldWhileLocked == this->first);
    EXPECT_TRUE(property.get() == this->first);
}

TYPED_TEST(PropertyOf, ignoresSetWhileLocked)
{
    Property<TypeParam> property;
    property.set(this->first);
    property.lock(true);
    EXPECT_TRUE(property.isLocked());
    property.set(this->second);
    EXPECT_TRUE(property.get() == this->first);
    property.lock(false);
    EXPECT_FALSE(property.isLocked());
    property.set(this->second);
    EXPECT_TRUE(property.get() == this->second);
}

TYPED_TEST(PropertyOf, refusesToReadWhileLockedAndLeavesTheEcho)
{
    Property<TypeParam> property;
    property.set(this->first);
    property.lock(true);
    String echo = "before";
    EXPECT_FALSE(property.read("1", echo));
    EXPECT_STREQ(echo.c_str(), "before");
    EXPECT_TRUE(property.get() == this->first);
}

TYPED_TEST(PropertyOf, takesResultsWhileLocked)
{
    Property<TypeParam> property;
    property.lock(true);
    PropertyAccess::write(property, this->first);
    EXPECT_TRUE(property.get() == this->first);
    EXPECT_TRUE(property.isLocked());
}

TYPED_TEST(PropertyOf, sharesValueAndNameWithItsCopies)
{
    Property<TypeParam> source;
    PropertyAccess::setName(source, "name");
    Property<TypeParam> copy(source);
    EXPECT_STREQ(copy.getName().c_str(), "name");
    copy.set(this->first);
    EXPECT_TRUE(source.get() == this->first);
    source.set(this->second);
    EXPECT_TRUE(copy.get() == this->second);
}

TYPED_TEST(PropertyOf, sharesValueAndNameByAssignment)
{
    Property<TypeParam> source;
    PropertyAccess::setName(source, "name");
    Property<TypeParam> target;
    target.set(this->second);
    target = source;
    EXPECT_STREQ(target.getName().c_str(), "name");
    EXPECT_TRUE(target.get() == TypeParam());
    target.set(this->first);
    EXPECT_TRUE(source.get() == this->first);
    Property<TypeParam> const& same = target;
    target = same;
    EXPECT_TRUE(target.get() == this->first);
}

TYPED_TEST(PropertyOf, copiesTheLockButDoesNotShareIt)
{
    Property<TypeParam> source;
    source.lock(true);
    Property<TypeParam> copy(source);
    Property<TypeParam> assigned;
    assigned = source;
    EXPECT_TRUE(copy.isLocked());
    EXPECT_TRUE(assigned.isLocked());
    source.lock(false);
    EXPECT_TRUE(copy.isLocked());
    EXPECT_TRUE(assigned.isLocked());
    source.set(this->first);
    EXPECT_TRUE(copy.get() == this->first);
}

TYPED_TEST(PropertyOf, outlivesWhatItWasCopiedFromAndTo)
{
    auto source = std::make_unique<Property<TypeParam>>();
    source->set(this->first);
    auto copy = std::make_unique<Property<TypeParam>>(*source);
    {
        Property<TypeParam> const another(*source);
    }
    source.reset();
    EXPECT_TRUE(copy->get() == this->first);
    Property<TypeParam> const third(*copy);
    copy.reset();
    EXPECT_TRUE(third.get() == this->first);
}

TYPED_TEST(PropertyOf, isSeenWithoutItsType)
{
    Property<TypeParam> property;
    BaseProperty& base = property;
    EXPECT_EQ(dynamic_cast<Property<TypeParam>*>(&base), &property);
    base.lock(true);
    EXPECT_TRUE(property.isLocked());
    EXPECT_NO_THROW(base.applyRules());
}

TEST(Property, returnsCopiesOfSequences)
{
    Property<Vector<int>> property;
    property.set(Vector<int>(2));
    Vector<int> copy = property.get();
    copy[0] = 7;
    EXPECT_EQ(property.get()[0], 0);
}

TEST(Property, returnsACopyOfTheName)
{
    Property<int> property;
    PropertyAccess::setName(property, "name");
    String name = property.getName();
    name = "other";
    EXPECT_STREQ(property.getName().c_str(), "name");
}

} // namespace

} // namespace mox
