#include <gtest/gtest.h>

#include "install_scene.h"

namespace {

using Result = InstallOutcome::Result;

TEST(Install, FirstInstallIntoAFolderWithoutThePayloadListsEverythingItCreates)
{
    InstallScene scene;
    WriteFile(scene.content + "autoexec.cfg", "player's own");
    EXPECT_EQ(scene.Install().result, Result::installed);

    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.content + "autoexec.cfg"), "player's own");
    EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader);
    // Files in container order, then the folders deepest first.
    const std::string& c = scene.content;
    EXPECT_EQ(ReadFile(scene.removalListPath),
              c + "cfg/ludax/binds.cfg\r\n" + c + "resource/background/x.tga\r\n" + c + "a.txt\r\n" +
                  c + "cfg/config.cfg\r\n" + c + "resource/background\r\n" + c + "resource\r\n" + c +
                  "cfg/ludax\r\n" + c + "cfg\r\n");
    EXPECT_TRUE(scene.account.hasCs16Backup);
    EXPECT_FALSE(scene.account.hasCssBackup);
}

TEST(Install, FirstInstallKeepsTheFilesItOverwritesInContainerOrder)
{
    InstallScene scene;
    WriteFile(scene.content + "a.txt", "");  // an empty file is kept as an empty record
    WriteFile(scene.content + "cfg/ludax/binds.cfg", "bind \"F1\" \"kill\"\r\n");
    scene.Install();

    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.archivePath),
              archiveHeader + Record("cfg/ludax/binds.cfg", "bind \"F1\" \"kill\"\r\n") + Record("a.txt", ""));
    const std::string& c = scene.content;
    EXPECT_EQ(ReadFile(scene.removalListPath), c + "resource/background/x.tga\r\n" + c +
                                                   "cfg/config.cfg\r\n" + c + "resource/background\r\n" +
                                                   c + "resource\r\n");

    // Every target there already: the list stays empty.
    InstallScene full;
    std::string expectedArchive = archiveHeader;
    for (const PayloadFile& file : full.files) {
        WriteFile(full.content + file.name, "old " + file.name);
        expectedArchive += Record(file.name, "old " + file.name);
    }
    full.Install();
    EXPECT_TRUE(full.PayloadWritten());
    EXPECT_EQ(ReadFile(full.archivePath), expectedArchive);
    EXPECT_EQ(ReadFile(full.removalListPath), "");
}

TEST(Install, AMissingContentFolderIsCreatedAndListedLast)
{
    InstallScene scene;
    const std::string cstrike = scene.accountFolder + "/counter-strike/cstrike";
    RemovePath(cstrike);
    ASSERT_FALSE(Exists(cstrike));
    scene.Install();
    EXPECT_TRUE(scene.PayloadWritten());
    const std::string list = ReadFile(scene.removalListPath);
    const std::string tail = "/cstrike/cfg\r\n" + cstrike + "\r\n";
    ASSERT_GE(list.size(), tail.size());
    EXPECT_EQ(list.substr(list.size() - tail.size()), tail);
}

TEST(Install, ReinstallAfterYesRewritesTargetsAndLeavesTheBackupFilesAlone)
{
    InstallScene scene;
    WriteFile(scene.content + "a.txt", "the player's a.txt");
    scene.Install();
    const std::string archive = ReadFile(scene.archivePath);
    const std::string list = ReadFile(scene.removalListPath);

    WriteFile(scene.content + "cfg/ludax/binds.cfg", "edited after the install");
    WriteFile(scene.content + "resource/background/x.tga", "");
    EXPECT_EQ(scene.Install().result, Result::installed);

    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.archivePath), archive);
    EXPECT_EQ(ReadFile(scene.removalListPath), list);
    EXPECT_TRUE(scene.account.hasCs16Backup);
}

TEST(Install, ALaterInstallCoversWhatANewerSetOrThePlayerAddedAndUndoesNothingEarlier)
{
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    WriteFile(c + "maps/own.bsp", "player's map");
    WriteFile(c + "maps/de_new.bsp", "player's de_new");
    const Tree before = Snapshot(scene.steam.Path());
    ASSERT_EQ(scene.Install().result, Result::installed);
    const std::string archive = ReadFile(scene.archivePath);
    const std::string list = ReadFile(scene.removalListPath);

    // A newer program carries two more files, and the player has since removed a folder of his
    // own that one of them needs.
    std::vector<PayloadFile> newer = testPayload;
    newer.push_back({"maps/de_new.bsp", "the new map"});
    newer.push_back({"sound/ludax/go.wav", "go"});
    scene.Repack(newer);
    ASSERT_EQ(scene.Install().result, Result::installed);
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.archivePath), archive + Record("maps/de_new.bsp", "player's de_new"));
    EXPECT_EQ(ReadFile(scene.removalListPath),
              list + c + "sound/ludax/go.wav\r\n" + c + "sound/ludax\r\n" + c + "sound\r\n");
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.steam.Path()), before);
}

TEST(Install, ContinuesBackupFilesCutShortWhereTheirReadersStop)
{
    // An archive whose last record was cut off, and removal lists ending without their last LF
    // or at an empty line: what an install adds must follow what the uninstall will read.
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "a.txt", "player's a");
    WriteFile(c + "cfg/old.cfg", "an earlier install's file");
    const std::string cut = Record("cfg/config.cfg", "0123456789").substr(0, 17);
    for (const std::string& earlierList :
         {c + "cfg/old.cfg", c + "cfg/old.cfg\r\n\r\n" + c + "a.txt\r\n", c + "cfg/old.cfg\r\n"}) {
        WriteFile(scene.archivePath, archiveHeader + cut);
        WriteFile(scene.removalListPath, earlierList);
        RemovePath(c + "cfg/ludax/binds.cfg");
        ASSERT_EQ(scene.Install().result, Result::installed) << earlierList;
        EXPECT_EQ(ReadFile(scene.archivePath), archiveHeader + Record("a.txt", "player's a"));
        EXPECT_EQ(ReadFile(scene.removalListPath),
                  c + "cfg/old.cfg\r\n" + c + "cfg/ludax/binds.cfg\r\n" + c + "resource/background/x.tga\r\n" + c +
                      "cfg/config.cfg\r\n" + c + "resource/background\r\n" + c + "resource\r\n" + c + "cfg/ludax\r\n")
            << earlierList;
        EXPECT_FALSE(scene.Uninstall().backupKept);
        EXPECT_EQ(Snapshot(c), (Tree{{"a.txt", "player's a"}, {"cfg", "<folder>"}})) << earlierList;
        WriteFile(c + "cfg/old.cfg", "an earlier install's file");
    }
}

TEST(Install, AFileStandingWhereAFilesFolderBelongsIsLeftAloneAndTheInstallGoesOn)
{
    InstallScene scene;
    const std::string& c = scene.content;
    WriteFile(c + "cfg/ludax", "the player's file named like a folder");
    const Tree before = Snapshot(scene.accountFolder);
    EXPECT_EQ(scene.Install().result, Result::installed);
    EXPECT_EQ(ReadFile(c + "cfg/ludax"), "the player's file named like a folder");
    EXPECT_EQ(ReadFile(c + "a.txt"), "LUDAX\r\n");  // a record after it
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.accountFolder), before);
}

}  // namespace
