#include <gtest/gtest.h>

#include "folders.h"
#include "output_file.h"
#include "system.h"
#include "test_files.h"

namespace {

TEST(CreateFolders, CreatesAndListsOnlyTheMissingFoldersOutermostFirst)
{
    TempFolder root;
    const std::string content = root.Path() + "/cstrike/";
    MakeFolders(content + "cfg");

    std::vector<std::string> created{"from an earlier record"};
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/binds.cfg", &created), "");
    EXPECT_EQ(created, (std::vector<std::string>{"from an earlier record", content + "cfg/ludax"}));
    EXPECT_EQ(Snapshot(content), (std::map<std::string, std::string>{
                                     {"cfg", "<folder>"}, {"cfg/ludax", "<folder>"}}));

    // Everything there already: nothing made, nothing listed.
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/other.cfg", &created), "");
    EXPECT_EQ(created.size(), 2u);

    EXPECT_EQ(CreateFolders(content + "resource/background/deep/x.tga", &created), "");
    EXPECT_EQ(created, (std::vector<std::string>{"from an earlier record", content + "cfg/ludax",
                                                 content + "resource", content + "resource/background",
                                                 content + "resource/background/deep"}));

    // Without a list the folders are made all the same.
    EXPECT_EQ(CreateFolders(content + "maps/sub/de_x.bsp", nullptr), "");
    EXPECT_EQ(sys::LookUp(content + "maps/sub").kind, sys::EntryKind::folder);
    EXPECT_FALSE(Exists(content + "maps/sub/de_x.bsp"));
}

TEST(CreateFolders, AFolderFoundOrMadeInTheSameRunIsNotTestedAgain)
{
    TempFolder root;
    const std::string content = root.Path() + "/cstrike/";
    MakeFolders(content + "cfg");
    KnownFolders known;
    std::vector<std::string> created;
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/binds.cfg", &created, &known), "");
    EXPECT_EQ(CreateFolders(content + "resource/background/x.tga", &created, &known), "");
    EXPECT_EQ(created, (std::vector<std::string>{content + "cfg/ludax", content + "resource",
                                                 content + "resource/background"}));

    // Taken away behind the run's back, a found and a made folder are still taken as there...
    RemovePath(content + "cfg/ludax");
    RemovePath(content + "resource/background");
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/other.cfg", &created, &known), "");
    EXPECT_EQ(CreateFolders(content + "resource/background/y.tga", &created, &known), "");
    EXPECT_EQ(created.size(), 3u);
    EXPECT_FALSE(Exists(content + "cfg/ludax"));
    // ...while a new run tests them afresh and makes them again, in the same order.
    KnownFolders fresh;
    created.clear();
    EXPECT_EQ(CreateFolders(content + "resource/background/y.tga", &created, &fresh), "");
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/other.cfg", &created, &fresh), "");
    EXPECT_EQ(created, (std::vector<std::string>{content + "resource/background", content + "cfg/ludax"}));
    EXPECT_TRUE(Exists(content + "cfg/ludax"));
}

TEST(CreateFolders, ReturnsTheFirstFolderItCannotMake)
{
    TempFolder root;
    WriteFile(root.Path() + "/cfg", "a file where the folder belongs");
    EXPECT_EQ(CreateFolders(root.Path() + "/new/deep/x.cfg", nullptr), "");
    EXPECT_TRUE(Exists(root.Path() + "/new/deep"));
    // The file counts as there; below it nothing can be made.
    EXPECT_EQ(CreateFolders(root.Path() + "/cfg/x.cfg", nullptr), "");
    std::vector<std::string> created;
    EXPECT_EQ(CreateFolders(root.Path() + "/cfg/sub/x.cfg", &created), root.Path() + "/cfg/sub");
    EXPECT_EQ(created, std::vector<std::string>{root.Path() + "/cfg/sub"});  // listed before the attempt
    const std::string tooLong = root.Path() + "/" + std::string(300, 'x');
    EXPECT_EQ(CreateFolders(tooLong + "/x.cfg", nullptr), tooLong);
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
    EXPECT_EQ(CreateFolders(root.Path() + "/new/file.txt", &created), "");
    EXPECT_EQ(created, std::vector<std::string>{root.Path() + "/new"});
    EXPECT_EQ(sys::LookUp(root.Path() + "/new").kind, sys::EntryKind::folder);
}

TEST(CreateFolders, AFileWhereTheLastFolderBelongsIsTakenAsThere)
{
    TempFolder root;
    WriteFile(root.Path() + "/cfg/ludax", "a player's file");
    std::vector<std::string> created;
    EXPECT_EQ(CreateFolders(root.Path() + "/cfg/ludax/binds.cfg", &created), "");
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

}  // namespace
