#include "apps/moxel/TemporaryFile.h"

#include <gmock/gmock.h>

#include "apps/moxel/Errors.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(TemporaryFile, IsGoneUnlessPublished)
{
    Folder const folder;
    {
        TemporaryFile const file(folder / "a.tif");
        EXPECT_EQ(folder.names().size(), 1U);
        EXPECT_NE(file.path(), folder / "a.tif");
    }
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(TemporaryFile, ReplacesWhatWasThere)
{
    Folder const folder;
    writeBytes(folder / "a.tif", {1, 2, 3});
    fs::permissions(folder / "a.tif", fs::perms::owner_read | fs::perms::owner_write);
    {
        TemporaryFile file(folder / "a.tif");
        writeBytes(file.path(), {4});
        EXPECT_EQ(readBytes(folder / "a.tif"), (Bytes{1, 2, 3}));
        file.publish();
    }
    EXPECT_THAT(folder.names(), ElementsAre("a.tif"));
    EXPECT_EQ(readBytes(folder / "a.tif"), (Bytes{4}));
    EXPECT_EQ(fs::status(folder / "a.tif").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(TemporaryFile, TakesABareNameInTheCurrentFolder)
{
    Folder const folder;
    fs::path const before = fs::current_path();
    fs::current_path(folder / "");
    EXPECT_NO_THROW(requireWritable("a.tif"));
    TemporaryFile("a.tif").publish();
    fs::current_path(before);
    EXPECT_THAT(folder.names(), ElementsAre("a.tif"));
}

TEST(TemporaryFile, HasOneNameForAFileAndItsLink)
{
    Folder const folder;
    fs::create_symlink("new.tif", folder / "link.tif");
    EXPECT_EQ(resolved(folder / "link.tif"), resolved(folder / "new.tif"));
    EXPECT_EQ(resolved(folder / "./new.tif"), resolved(folder / "new.tif"));
    fs::create_symlink("loop.tif", folder / "loop.tif");
    EXPECT_NO_THROW(resolved(folder / "loop.tif"));
}

TEST(TemporaryFile, GoesWhereALinkLeads)
{
    for (bool const isThere : {true, false}) {
        Folder const folder;
        fs::create_directory(folder / "data");
        if (isThere) {
            writeBytes(folder / "data/real.tif", {1});
        }
        fs::create_symlink(isThere ? folder / "data/real.tif" : fs::path("data/real.tif"), folder / "link.tif");
        TemporaryFile file(folder / "link.tif");
        writeBytes(file.path(), {2});
        file.publish();
        EXPECT_TRUE(fs::is_symlink(folder / "link.tif"));
        EXPECT_EQ(readBytes(folder / "data/real.tif"), (Bytes{2}));
    }
}

TEST(TemporaryFile, SeveralOfOneNameDoNotMeet)
{
    Folder const folder;
    TemporaryFile const first(folder / "a.tif");
    TemporaryFile const second(folder / "a.tif");
    EXPECT_NE(first.path(), second.path());
}

TEST(TemporaryFile, NeedsAFolder)
{
    Folder const folder;
    EXPECT_NO_THROW(requireWritable(folder / "new.tif"));
    EXPECT_THROW(requireWritable(folder / "missing/new.tif"), FileError);
    EXPECT_THROW(TemporaryFile(folder / "missing/new.tif"), FileError);
    fs::create_directory(folder / "taken.tif");
    EXPECT_THROW(requireWritable(folder / "taken.tif"), FileError);
    EXPECT_THROW(requireWritable("/dev/null"), FileError);
}

} // namespace
} // namespace moxel::testing
