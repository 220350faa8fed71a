#include <gtest/gtest.h>

#include "install_scene.h"
#include "steam_layouts.h"

namespace {

TEST(Uninstall, ArchiveMissingTooShortOrWithAnyHeader)
{
    {
        // Deleted by hand: the created files still go, and so does the overwritten one, which no
        // archive puts back and which holds what the install wrote.
        InstallScene scene;
        WriteFile(scene.content + "a.txt", "the player's a.txt");
        scene.Install();
        RemovePath(scene.archivePath);
        const UninstallOutcome outcome = scene.Uninstall();
        EXPECT_FALSE(outcome.backupKept);
        EXPECT_FALSE(outcome.installed);
        EXPECT_EQ(Snapshot(scene.accountFolder), (Tree{{"counter-strike", "<folder>"}, {"counter-strike/cstrike", "<folder>"}}));
    }
    // At most four bytes restore nothing; any four bytes head the records.
    const std::string records = Record("cfg/new/deep.cfg", "deep") + Record("empty.cfg", "");
    const Tree restored{{"cfg", "<folder>"}, {"cfg/new", "<folder>"}, {"cfg/new/deep.cfg", "deep"}, {"empty.cfg", ""}};
    for (const auto& [archive, expected] :
         {std::pair{std::string(), Tree()}, {archiveHeader.substr(0, 3), Tree()}, {archiveHeader, Tree()},
          {std::string(4, '\0') + records, restored}, {"\xFF\xFF\xFF\xFF" + records, restored},
          {"LDX!" + records, restored}}) {
        InstallScene scene;
        WriteFile(scene.archivePath, archive);
        scene.Uninstall();
        EXPECT_EQ(Snapshot(scene.content), expected) << archive.size() << " bytes";
        EXPECT_FALSE(Exists(scene.archivePath));
    }
}

TEST(Uninstall, TakesTheLinesInAnyOrderFilesFirstThenFoldersInnermostFirst)
{
    InstallScene scene;
    const std::string& c = scene.content;
    const Tree before = Snapshot(scene.accountFolder);
    ASSERT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    // Folders first, outermost first, files last: as an install stopped part-way may leave them.
    WriteFile(scene.removalListPath, c + "cfg\r\n" + c + "resource\r\n" + c + "cfg/ludax\r\n" + c +
                                         "resource/background\r\n" + c + "cfg/config.cfg\r\n" + c + "a.txt\r\n" +
                                         c + "resource/background/x.tga\r\n" + c + "cfg/ludax/binds.cfg\r\n");
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.accountFolder), before);
}

}  // namespace
