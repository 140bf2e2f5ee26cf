#include "Core/private/Helper/safe_cast.h"

#include <gtest/gtest.h>

#include "testing/TestAlgorithm.h"

// Out of an unnamed namespace, which would show in the names.
namespace mox::shapes {

struct Shape {
    virtual ~Shape() = default;
};
struct Disk : Shape {};
struct Line : Shape {};

} // namespace mox::shapes

namespace mox::helper {

namespace {

using namespace shapes;

TEST(SafeCast, givesTheObjectItself)
{
    Disk disk;
    Shape& shape = disk;
    EXPECT_EQ(&safe_cast<Disk>(shape), &disk);
    EXPECT_EQ(&safe_cast<Shape>(shape), &shape);
}

TEST(SafeCast, castsAnAlgorithmToItsClass)
{
    auto const algorithm = testing::TestAlgorithm::NewBase();
    EXPECT_EQ(&safe_cast<testing::TestAlgorithm>(*algorithm), algorithm.get());
}

TEST(SafeCast, namesBothClassesWhenItFails)
{
    Disk disk;
    Shape& shape = disk;
    try {
        safe_cast<Line>(shape);
        FAIL() << "nothing was thrown";
    } catch (UnexpectedError const& error) {
        EXPECT_STREQ(error.what().c_str(), "Unexpected error :\n"
                                           "#1 Error : bad cast when casting mox::shapes::Shape into "
                                           "mox::shapes::Line \n"
                                           "    (at \"safe_cast\", line 18) \n");
    }
}

} // namespace

} // namespace mox::helper
