#include <gtest/gtest.h>

#include "folders.h"
#include "install_scene.h"

namespace {

const std::string header("\x01\0\0\0", 4);
using Result = InstallOutcome::Result;

TEST(Install, FirstInstallIntoAFolderWithoutThePayloadListsEverythingItCreates)
{
    InstallScene scene;
    WriteFile(scene.content + "autoexec.cfg", "player's own");
    EXPECT_EQ(scene.Install().result, Result::installed);

    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.content + "autoexec.cfg"), "player's own");
    EXPECT_EQ(ReadFile(scene.archivePath), header);
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
              header + Record("cfg/ludax/binds.cfg", "bind \"F1\" \"kill\"\r\n") + Record("a.txt", ""));
    const std::string& c = scene.content;
    EXPECT_EQ(ReadFile(scene.removalListPath), c + "resource/background/x.tga\r\n" + c +
                                                   "cfg/config.cfg\r\n" + c + "resource/background\r\n" +
                                                   c + "resource\r\n");

    // Every target there already: the list stays empty.
    InstallScene full;
    std::string expectedArchive = header;
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

TEST(Install, AReinstallNeverStartsTheBackupFiles)
{
    InstallScene scene;
    scene.account.hasCs16Backup = true;
    EXPECT_EQ(scene.Install().result, Result::installed);
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_FALSE(Exists(scene.archivePath));
    EXPECT_FALSE(Exists(scene.removalListPath));
    EXPECT_TRUE(scene.account.hasCs16Backup);
}

TEST(Install, TheSourceProfileUsesItsOwnFoldersAndFiles)
{
    InstallScene scene(testPayload, cssProfile);
    EXPECT_EQ(scene.Install().result, Result::installed);
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(scene.content, scene.accountFolder + "/counter-strike source/cstrike/");
    EXPECT_EQ(ReadFile(scene.accountFolder + "/cssludax.bak"), header);
    EXPECT_TRUE(Exists(scene.accountFolder + "/cssludax_1.bak"));
    EXPECT_FALSE(Exists(scene.accountFolder + "/cs16ludax.bak"));
    EXPECT_TRUE(scene.account.hasCssBackup);
    EXPECT_FALSE(scene.account.hasCs16Backup);
}

TEST(Install, AFolderThatCannotBeMadeStopsWithBackupFilesThatUndoWhatWasDone)
{
    InstallScene scene;
    const std::string& c = scene.content;
    // A file where the second record needs the folder resource/background.
    WriteFile(c + "resource", "the player's file");
    const auto before = Snapshot(c);
    const InstallOutcome outcome = scene.Install();
    EXPECT_EQ(outcome.result, Result::folderFailed);
    EXPECT_EQ(outcome.path, c + "resource/background");
    EXPECT_FALSE(scene.account.hasCs16Backup);

    // The first record was written, and the removal list names it and the folders made for it.
    EXPECT_EQ(ReadFile(c + "cfg/ludax/binds.cfg"), scene.files[0].data);
    EXPECT_EQ(ReadFile(scene.archivePath), header);
    EXPECT_EQ(ReadFile(scene.removalListPath), c + "cfg/ludax/binds.cfg\r\n" + c + "resource/background/x.tga\r\n" +
                                                   c + "resource/background\r\n" + c + "cfg/ludax\r\n" + c + "cfg\r\n");

    // The next start finds the archive and offers the uninstall, which puts the folder back.
    scene.account.hasCs16Backup = true;
    EXPECT_FALSE(scene.Uninstall().archiveKept);
    EXPECT_EQ(Snapshot(c), before);
    EXPECT_FALSE(Exists(scene.archivePath));
    EXPECT_FALSE(Exists(scene.removalListPath));
}

}  // namespace
