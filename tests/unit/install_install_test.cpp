#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install.h"
#include "folders.h"
#include "install_scene.h"
#include "system.h"

namespace {

const std::string header("\x01\0\0\0", 4);
const std::string installedBox =
    Box("Message", 0x40, "Counter Strike LUDAX config installed successfully!");
const std::string reinstallBox = Box(
    "Question", 0x24, "Counter Strike LUDAX config already installed, do you want to reinstall?");

TEST(Install, FirstInstallIntoAFolderWithoutThePayloadListsEverythingItCreates)
{
    InstallScene scene;
    WriteFile(scene.content + "autoexec.cfg", "player's own");
    scene.Install();

    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.content + "autoexec.cfg"), "player's own");
    EXPECT_EQ(ReadFile(scene.archivePath), header);
    // Files in container order, then the folders deepest first.
    const std::string& c = scene.content;
    EXPECT_EQ(ReadFile(scene.removalListPath),
              c + "cfg/ludax/binds.cfg\r\n" + c + "resource/background/x.tga\r\n" + c + "a.txt\r\n" +
                  c + "cfg/config.cfg\r\n" + c + "resource/background\r\n" + c + "resource\r\n" + c +
                  "cfg/ludax\r\n" + c + "cfg\r\n");
    EXPECT_EQ(scene.window.events,
              (std::vector<std::string>{"uninstall /cs16ludax.bak on", installedBox}));
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
    scene.window.events.clear();
    scene.window.answers = {sys::idYes};
    scene.Install();

    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(ReadFile(scene.archivePath), archive);
    EXPECT_EQ(ReadFile(scene.removalListPath), list);
    EXPECT_EQ(scene.window.events,
              (std::vector<std::string>{reinstallBox, "uninstall /cs16ludax.bak on", installedBox}));
    EXPECT_TRUE(scene.account.hasCs16Backup);
}

TEST(Install, AnyAnswerButYesLeavesEverythingAsItWas)
{
    for (int answer : {7 /* No */, 1 /* OK */, 2 /* Cancel */}) {
        InstallScene scene;
        scene.Install();
        WriteFile(scene.content + "a.txt", "edited after the install");
        const auto before = Snapshot(scene.steam.Path());
        scene.window.events.clear();
        scene.window.answers = {answer};
        scene.Install();
        EXPECT_EQ(Snapshot(scene.steam.Path()), before) << answer;
        EXPECT_EQ(scene.window.events, std::vector<std::string>{reinstallBox}) << answer;
        EXPECT_TRUE(scene.account.hasCs16Backup);
    }
}

TEST(Install, FlagButtonAndMessageComeAfterTheLastTargetAndTheClosedBackups)
{
    for (bool firstInstall : {true, false}) {
        InstallScene scene;
        scene.account.hasCs16Backup = !firstInstall;
        scene.window.answers = {sys::idYes};
        std::vector<std::string> seen;
        std::vector<std::string> backups;
        scene.window.atEvent = [&] {
            seen.push_back(std::string(scene.Installed() ? "flag set" : "flag clear") +
                           (scene.PayloadWritten() ? ", payload written" : ", payload missing"));
            backups.push_back(InstallScene::BytesOf(scene.archivePath) + "|" +
                              InstallScene::BytesOf(scene.removalListPath));
        };
        scene.Install();
        std::vector<std::string> expected{"flag set, payload written", "flag set, payload written"};
        if (!firstInstall) {
            expected.insert(expected.begin(), "flag set, payload missing");
            EXPECT_FALSE(Exists(scene.archivePath));  // a reinstall never starts the backups
            EXPECT_FALSE(Exists(scene.removalListPath));
        }
        EXPECT_EQ(seen, expected) << (firstInstall ? "first install" : "reinstall");
        // Whatever the window sees, the backup files are already complete on disk.
        const std::string final = InstallScene::BytesOf(scene.archivePath) + "|" +
                                  InstallScene::BytesOf(scene.removalListPath);
        EXPECT_EQ(backups, std::vector<std::string>(backups.size(), final));
    }
}

TEST(Install, TheSourceProfileUsesItsOwnFoldersFilesAndTexts)
{
    InstallScene scene(testPayload, cssProfile);
    scene.Install();
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_EQ(scene.content, scene.accountFolder + "/counter-strike source/cstrike/");
    EXPECT_EQ(ReadFile(scene.accountFolder + "/cssludax.bak"), header);
    EXPECT_TRUE(Exists(scene.accountFolder + "/cssludax_1.bak"));
    EXPECT_FALSE(Exists(scene.accountFolder + "/cs16ludax.bak"));
    EXPECT_TRUE(scene.account.hasCssBackup);
    EXPECT_FALSE(scene.account.hasCs16Backup);
    scene.window.answers = {7};
    scene.Install();
    EXPECT_EQ(scene.window.events,
              (std::vector<std::string>{
                  "uninstall /cssludax.bak on",
                  Box("Message", 0x40, "Counter Strike Source LUDAX config installed successfully!"),
                  Box("Question", 0x24,
                      "Counter Strike Source LUDAX config already installed, do you want to reinstall?")}));
}

}  // namespace

#ifndef _WIN32
// Under Windows the fatal path shows a message box; the end-to-end tests read that one.
TEST(InstallDeathTest, AFolderThatCannotBeMadeLeavesBackupFilesThatUndoWhatWasDone)
{
    // Forked, so that the ended install worked in this test's own folder.
    testing::FLAGS_gtest_death_test_style = "fast";
    InstallScene scene;
    const std::string& c = scene.content;
    // A file where the second record needs the folder resource/background.
    WriteFile(c + "resource", "the player's file");
    const auto before = Snapshot(c);
    EXPECT_EXIT(scene.Install(), testing::ExitedWithCode(255),
                testing::HasSubstr("[Hiba:] (style 0x00)\nNem sikerült a könyvtár létrehozása!\nKilépek!\n" + c +
                                   "resource/background\n"));

    // The first record was written, and the removal list names it and the folders made for it.
    EXPECT_EQ(ReadFile(c + "cfg/ludax/binds.cfg"), scene.files[0].data);
    EXPECT_EQ(ReadFile(scene.archivePath), header);
    EXPECT_EQ(ReadFile(scene.removalListPath), c + "cfg/ludax/binds.cfg\r\n" + c + "resource/background/x.tga\r\n" +
                                                   c + "resource/background\r\n" + c + "cfg/ludax\r\n" + c + "cfg\r\n");

    // The next start finds the archive and offers the uninstall, which puts the folder back.
    scene.account.hasCs16Backup = true;
    scene.Uninstall();
    EXPECT_EQ(Snapshot(c), before);
    EXPECT_FALSE(Exists(scene.archivePath));
    EXPECT_FALSE(Exists(scene.removalListPath));
}
#endif
