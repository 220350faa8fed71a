// The folders the uninstall makes on the way to a file it puts back.
#include <gtest/gtest.h>

#include "folders.h"
#include "system.h"
#include "test_files.h"

namespace {

TEST(CreateFolders, MakesWhatIsMissingBelowTheRootOrDriveAndNamesWhatCannotBeMade)
{
    // A temporary folder starts with "/" natively and with "C:" under Windows: neither may be
    // tested or made.
    TempFolder root;
#ifdef _WIN32
    ASSERT_EQ(root.Path().substr(1, 2), ":/");
#else
    ASSERT_EQ(root.Path().substr(0, 1), "/");
#endif
    const std::string content = root.Path() + "/cstrike/";
    MakeFolders(content + "cfg");
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/binds.cfg").path, "");
    EXPECT_EQ(CreateFolders(content + "resource/background/deep/x.tga").path, "");
    EXPECT_EQ(Snapshot(content), (Tree{{"cfg", "<folder>"}, {"cfg/ludax", "<folder>"}, {"resource", "<folder>"},
                                       {"resource/background", "<folder>"}, {"resource/background/deep", "<folder>"}}));

    // A file where the last folder belongs counts as there; below it nothing can be made.
    WriteFile(content + "maps", "a file of the player's");
    EXPECT_EQ(CreateFolders(content + "maps/x.bsp").path, "");
    const sys::Failure belowAFile = CreateFolders(content + "maps/sub/x.bsp");
    EXPECT_EQ(belowAFile.path, content + "maps/sub");
    EXPECT_NE(belowAFile.reason.code, 0u) << "the system's reason is kept";
    const std::string tooLong = root.Path() + "/" + std::string(300, 'x');
    EXPECT_EQ(CreateFolders(tooLong + "/x.cfg").path, tooLong);
    EXPECT_EQ(ReadFile(content + "maps"), "a file of the player's");

    // A folder found or made in the same run is not tested again.
    RemovePath(content + "resource/background/deep");
    RemovePath(content + "resource/background");
    RemovePath(content + "cfg/ludax");
    KnownFolders known;
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/binds.cfg", &known).path, "");
    EXPECT_EQ(CreateFolders(content + "resource/background/x.tga", &known).path, "");

    // Taken away behind the run's back, a found and a made folder are still taken as there...
    RemovePath(content + "cfg/ludax");
    RemovePath(content + "resource/background");
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/other.cfg", &known).path, "");
    EXPECT_EQ(CreateFolders(content + "resource/background/y.tga", &known).path, "");
    EXPECT_FALSE(Exists(content + "cfg/ludax"));
    EXPECT_FALSE(Exists(content + "resource/background"));
    // ...while a new run tests them afresh and makes them again.
    KnownFolders fresh;
    EXPECT_EQ(CreateFolders(content + "cfg/ludax/other.cfg", &fresh).path, "");
    EXPECT_EQ(sys::LookUp(content + "cfg/ludax").kind, sys::EntryKind::folder);
}

}  // namespace
