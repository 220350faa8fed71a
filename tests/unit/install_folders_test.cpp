#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "file_io.h"
#include "folders.h"
#include "system.h"
#include "test_files.h"

namespace {

const std::string folderFailedText = "Nem sikerült a könyvtár létrehozása!\nKilépek!\n";

TEST(CreateFolders, CreatesAndListsOnlyTheMissingFoldersOutermostFirst)
{
    TempFolder root;
    const std::string content = root.Path() + "/cstrike/";
    MakeFolders(content + "cfg");

    std::vector<std::string> created{"from an earlier record"};
    CreateFolders(content + "cfg/ludax/binds.cfg", &created);
    EXPECT_EQ(created, (std::vector<std::string>{"from an earlier record", content + "cfg/ludax"}));
    EXPECT_EQ(Snapshot(content), (std::map<std::string, std::string>{
                                     {"cfg", "<folder>"}, {"cfg/ludax", "<folder>"}}));

    // Everything there already: nothing made, nothing listed.
    CreateFolders(content + "cfg/ludax/other.cfg", &created);
    EXPECT_EQ(created.size(), 2u);

    CreateFolders(content + "resource/background/deep/x.tga", &created);
    EXPECT_EQ(created, (std::vector<std::string>{"from an earlier record", content + "cfg/ludax",
                                                 content + "resource", content + "resource/background",
                                                 content + "resource/background/deep"}));

    // Without a list the folders are made all the same.
    CreateFolders(content + "maps/sub/de_x.bsp", nullptr);
    EXPECT_EQ(sys::FindEntry(content + "maps/sub"), sys::EntryKind::folder);
    EXPECT_FALSE(Exists(content + "maps/sub/de_x.bsp"));
}

TEST(CreateFolders, AFolderFoundOrMadeInTheSameRunIsNotTestedAgain)
{
    TempFolder root;
    const std::string content = root.Path() + "/cstrike/";
    MakeFolders(content + "cfg");
    KnownFolders known;
    std::vector<std::string> created;
    CreateFolders(content + "cfg/ludax/binds.cfg", &created, &known);
    CreateFolders(content + "resource/background/x.tga", &created, &known);
    EXPECT_EQ(created, (std::vector<std::string>{content + "cfg/ludax", content + "resource",
                                                 content + "resource/background"}));

    // Taken away behind the run's back, a found and a made folder are still taken as there...
    RemovePath(content + "cfg/ludax");
    RemovePath(content + "resource/background");
    CreateFolders(content + "cfg/ludax/other.cfg", &created, &known);
    CreateFolders(content + "resource/background/y.tga", &created, &known);
    EXPECT_EQ(created.size(), 3u);
    EXPECT_FALSE(Exists(content + "cfg/ludax"));
    // ...while a new run tests them afresh and makes them again, in the same order.
    KnownFolders fresh;
    created.clear();
    CreateFolders(content + "resource/background/y.tga", &created, &fresh);
    CreateFolders(content + "cfg/ludax/other.cfg", &created, &fresh);
    EXPECT_EQ(created, (std::vector<std::string>{content + "resource/background", content + "cfg/ludax"}));
    EXPECT_TRUE(Exists(content + "cfg/ludax"));
}

TEST(CreateFolders, TheUninstallsFormGoesOnWhereAFolderCannotBeMade)
{
    TempFolder root;
    WriteFile(root.Path() + "/cfg", "a file where the folder belongs");
    EXPECT_TRUE(TryCreateFolders(root.Path() + "/new/deep/x.cfg", nullptr));
    EXPECT_TRUE(Exists(root.Path() + "/new/deep"));
    // The file counts as there, as in CreateFolders; below it nothing can be made.
    EXPECT_TRUE(TryCreateFolders(root.Path() + "/cfg/x.cfg", nullptr));
    EXPECT_FALSE(TryCreateFolders(root.Path() + "/cfg/sub/x.cfg", nullptr));
    EXPECT_FALSE(TryCreateFolders(root.Path() + "/" + std::string(300, 'x') + "/x.cfg", nullptr));
}

TEST(CreateFolders, PassesOverTheRootOrDrivePrefix)
{
    // A temporary folder starts with "/" natively (empty prefix) and with "C:" under Windows:
    // both stand before the first '/' and must be neither tested nor made.
    TempFolder root;
#ifdef _WIN32
    ASSERT_EQ(root.Path().substr(1, 2), ":/");
#else
    ASSERT_EQ(root.Path().substr(0, 1), "/");
#endif
    std::vector<std::string> created;
    CreateFolders(root.Path() + "/new/file.txt", &created);
    EXPECT_EQ(created, std::vector<std::string>{root.Path() + "/new"});
    EXPECT_EQ(sys::FindEntry(root.Path() + "/new"), sys::EntryKind::folder);
}

TEST(CreateFolders, AFileWhereTheLastFolderBelongsIsTakenAsThere)
{
    TempFolder root;
    WriteFile(root.Path() + "/cfg/ludax", "a player's file");
    std::vector<std::string> created;
    CreateFolders(root.Path() + "/cfg/ludax/binds.cfg", &created);
    EXPECT_TRUE(created.empty());
    // The target's write then fails without a word, and the file stays as it was.
    EXPECT_FALSE(WriteWholeFile(root.Path() + "/cfg/ludax/binds.cfg", "bind", 4));
    EXPECT_EQ(ReadFile(root.Path() + "/cfg/ludax"), "a player's file");
}

TEST(RemovePath, DeletesOneFileOrOneEmptyFolderAndIgnoresTheRest)
{
    TempFolder root;
    const std::string base = root.Path() + "/";
    WriteFile(base + "file.cfg", "x");
    MakeFolders(base + "empty");
    WriteFile(base + "full/kept.cfg", "kept");

    RemovePath(base + "missing");
    RemovePath(base + "file.cfg");
    RemovePath(base + "empty");
    RemovePath(base + "full");  // not recursive

    EXPECT_EQ(Snapshot(root.Path()), (std::map<std::string, std::string>{
                                         {"full", "<folder>"}, {"full/kept.cfg", "kept"}}));
}

#ifndef _WIN32
// Under Windows the fatal path shows a message box; the end-to-end tests read that one.
TEST(CreateFoldersDeathTest, AFolderThatCannotBeMadeEndsTheProcessNamingIt)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    // Neither path needs anything made first: a name longer than the file system allows, and
    // a folder below a device file.
    const std::string tooLong = "/" + std::string(300, 'x');
    EXPECT_EXIT(CreateFolders(tooLong + "/cfg/binds.cfg", nullptr), testing::ExitedWithCode(255),
                testing::HasSubstr("[Hiba:] (style 0x00)\n" + folderFailedText + tooLong + "\n"));
    EXPECT_EXIT(CreateFolders("/dev/null/cfg/binds.cfg", nullptr), testing::ExitedWithCode(255),
                testing::HasSubstr("[Hiba:] (style 0x00)\n" + folderFailedText + "/dev/null/cfg\n"));
}
#endif

}  // namespace
