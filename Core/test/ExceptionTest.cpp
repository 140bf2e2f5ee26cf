#include <Moxelcore/Core/Exception.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace mox {

namespace {

using Info = Exception::exceptionInfo;

Info level(char const* message, char const* file = "", int line = 0, char const* className = "",
           char const* libName = "")
{
    return {message, file, line, className, libName};
}

std::string textOf(Info const& record)
{
    return RuntimeError(record).getInfo().c_str();
}

TEST(ExceptionInfo, isEmptyByDefault)
{
    Info const record;
    EXPECT_STREQ(record.message.c_str(), "");
    EXPECT_STREQ(record.file.c_str(), "");
    EXPECT_EQ(record.line, 0);
    EXPECT_STREQ(record.className.c_str(), "");
    EXPECT_STREQ(record.libName.c_str(), "");
}

struct TextOfALevel {
    Info record;
    char const* text;
};

class ExceptionText : public ::testing::TestWithParam<TextOfALevel> {};

TEST_P(ExceptionText, leavesEmptyFieldsOut)
{
    EXPECT_EQ(textOf(GetParam().record), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    OfAllFields, ExceptionText,
    ::testing::Values(
        TextOfALevel{level(""), "#1 Error : \n"}, TextOfALevel{level("message"), "#1 Error : message \n"},
        TextOfALevel{level("", "", 0, "Class"), "#1 Error : Class \n"},
        TextOfALevel{level("message", "", 0, "Class"), "#1 Error : message Class \n"},
        TextOfALevel{level("", "", 0, "", "Library"), "#1 Error : of Library library \n"},
        TextOfALevel{level("message", "", 0, "", "Library"), "#1 Error : message of Library library \n"},
        TextOfALevel{level("", "", 0, "Class", "Library"), "#1 Error : Class of Library library \n"},
        TextOfALevel{level("message", "", 0, "Class", "Library"), "#1 Error : message Class of Library library \n"},
        TextOfALevel{level("", "a/File", 7), "#1 Error : \n    (at \"File\", line 7) \n"},
        TextOfALevel{level("message", "a/File", 7), "#1 Error : message \n    (at \"File\", line 7) \n"},
        TextOfALevel{level("", "a/File", 7, "Class"), "#1 Error : Class \n    (at \"File\", line 7) \n"},
        TextOfALevel{level("message", "a/File", 7, "Class"), "#1 Error : message Class \n    (at \"File\", line 7) \n"},
        TextOfALevel{level("", "a/File", 7, "", "Library"),
                     "#1 Error : of Library library \n    (at \"File\", line 7) \n"},
        TextOfALevel{level("message", "a/File", 7, "", "Library"),
                     "#1 Error : message of Library library \n    (at \"File\", line 7) \n"},
        TextOfALevel{level("", "a/File", 7, "Class", "Library"),
                     "#1 Error : Class of Library library \n    (at \"File\", line 7) \n"},
        TextOfALevel{level("message", "a/File", 7, "Class", "Library"),
                     "#1 Error : message Class of Library library \n    (at \"File\", line 7) \n"}));

TEST(Exception, ignoresTheLineOfALevelWithoutFile)
{
    EXPECT_EQ(textOf(level("message", "", 12)), "#1 Error : message \n");
}

TEST(Exception, showsTheFileWithoutItsDirectories)
{
    EXPECT_EQ(textOf(level("", "Core/src/String", 1)), "#1 Error : \n    (at \"String\", line 1) \n");
    EXPECT_EQ(textOf(level("", "String", 1)), "#1 Error : \n    (at \"String\", line 1) \n");
    EXPECT_EQ(textOf(level("", "/a b/c.impl", 1)), "#1 Error : \n    (at \"c.impl\", line 1) \n");
}

TEST(Exception, escapesQuotesInTheFileWithAnAmpersand)
{
    EXPECT_EQ(textOf(level("", "a/say \"b\"", 1)), "#1 Error : \n    (at \"say &\"b&\"\", line 1) \n");
    EXPECT_EQ(textOf(level("", "a/b&c", 1)), "#1 Error : \n    (at \"b&&c\", line 1) \n");
    EXPECT_EQ(textOf(level("", "a/b\\c", 1)), "#1 Error : \n    (at \"b\\c\", line 1) \n");
}

TEST(Exception, numbersItsLevelsInTheOrderOfAdding)
{
    RuleException exception(level("Parameter value cannot be null", "Core/private/Rules/RuleAssertNotNull", 21));
    exception.addInfoLevel(level("Rule error in property input"));
    exception.addInfoLevel(level("", "", 0, "Threshold", "Moxelcore"));
    char const* const levels = "#1 Error : Parameter value cannot be null \n"
                               "    (at \"RuleAssertNotNull\", line 21) \n"
                               "#2 From Rule error in property input \n"
                               "#3 From Threshold of Moxelcore library \n";
    EXPECT_STREQ(exception.getInfo().c_str(), levels);
    EXPECT_EQ(std::string(exception.what().c_str()), std::string("Rule exception :\n") + levels);
}

TEST(Exception, countsBeyondNineLevels)
{
    RuntimeError exception(level("first"));
    for (int i = 2; i <= 12; ++i) {
        exception.addInfoLevel(level("next"));
    }
    std::string const text = exception.getInfo().c_str();
    EXPECT_NE(text.find("\n#12 From next \n"), std::string::npos);
}

template <class E>
class ExceptionClass : public ::testing::Test {
};

template <class E>
constexpr char const* prefix = nullptr;
template <>
constexpr char const* prefix<RuleException> = "Rule exception :";
template <>
constexpr char const* prefix<SerializationException> = "Serialization exception :";
template <>
constexpr char const* prefix<MemoryError> = "Memory error :";
template <>
constexpr char const* prefix<FileSystemError> = "File system error :";
template <>
constexpr char const* prefix<UnexpectedError> = "Unexpected error :";
template <>
constexpr char const* prefix<InvalidCall> = "Invalid call :";
template <>
constexpr char const* prefix<BadIndex> = "Bad index :";
template <>
constexpr char const* prefix<RuntimeError> = "Runtime error :";

using ConcreteClasses = ::testing::Types<RuleException, SerializationException, MemoryError, FileSystemError,
                                         UnexpectedError, InvalidCall, BadIndex, RuntimeError>;
TYPED_TEST_SUITE(ExceptionClass, ConcreteClasses);

TYPED_TEST(ExceptionClass, beginsItsTextWithItsPrefix)
{
    TypeParam const exception(level("message"));
    EXPECT_EQ(std::string(exception.what().c_str()), std::string(prefix<TypeParam>) + "\n#1 Error : message \n");
    EXPECT_STREQ(exception.getInfo().c_str(), "#1 Error : message \n");
}

TYPED_TEST(ExceptionClass, isCaughtByItsBaseAndKeepsItsText)
{
    try {
        throw TypeParam(level("message"));
    } catch (Exception const& exception) {
        EXPECT_NE(dynamic_cast<TypeParam const*>(&exception), nullptr);
        EXPECT_EQ(std::string(exception.what().c_str()), std::string(prefix<TypeParam>) + "\n#1 Error : message \n");
    }
}

TYPED_TEST(ExceptionClass, belongsToTheFailuresOfProcessingButForRulesAndFiles)
{
    constexpr bool isOther =
        std::is_same_v<TypeParam, RuleException> || std::is_same_v<TypeParam, SerializationException>;
    EXPECT_EQ((std::is_base_of_v<ProcessingException, TypeParam>), !isOther);
    EXPECT_FALSE((std::is_base_of_v<std::exception, TypeParam>));
}

TYPED_TEST(ExceptionClass, sharesItsLevelsWithItsCopies)
{
    TypeParam source(level("message"));
    TypeParam const copy(source);
    source.addInfoLevel(level("later"));
    EXPECT_STREQ(copy.getInfo().c_str(), "#1 Error : message \n#2 From later \n");
}

TYPED_TEST(ExceptionClass, sharesLevelsByAssignment)
{
    TypeParam target(level("older"));
    {
        TypeParam source(level("message"));
        target = source;
        source.addInfoLevel(level("later"));
    }
    TypeParam const& same = target;
    target = same;
    EXPECT_STREQ(target.getInfo().c_str(), "#1 Error : message \n#2 From later \n");
}

TYPED_TEST(ExceptionClass, keepsItsLevelsWhenItIsThrownByValueAndRethrown)
{
    auto const throwThrough = [] {
        try {
            throw TypeParam(level("message"));
        } catch (Exception& exception) {
            exception.addInfoLevel(level("later"));
            throw;
        }
    };
    try {
        throwThrough();
        FAIL() << "nothing was thrown";
    } catch (TypeParam const& exception) {
        EXPECT_STREQ(exception.getInfo().c_str(), "#1 Error : message \n#2 From later \n");
    }
}

TEST(Exception, isAbstractWithAVirtualTextAndADestructorThatIsNot)
{
    EXPECT_TRUE(std::is_abstract_v<Exception>);
    EXPECT_TRUE(std::is_abstract_v<ProcessingException>);
    EXPECT_FALSE(std::has_virtual_destructor_v<Exception>);
    EXPECT_EQ(sizeof(Exception), 2 * sizeof(void*));
}

TEST(Exception, mayBeCopiedAndDroppedByManyThreads)
{
    RuntimeError const exception(level("message"));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&exception] {
            for (int round = 0; round < 10000; ++round) {
                RuntimeError const copy(exception);
                RuntimeError assigned(level("older"));
                assigned = copy;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_STREQ(exception.getInfo().c_str(), "#1 Error : message \n");
}

} // namespace

} // namespace mox
