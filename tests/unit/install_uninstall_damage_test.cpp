// The uninstall over backup files it cannot fully trust: removal lines it passes over, an
// archive of gigabytes, paths far past Windows' old limit. (What it keeps when a call fails:
// install_faults_test.cpp.)
#include <gtest/gtest.h>

#include "install_scene.h"
#include "system.h"

namespace {

TEST(UninstallPassesOver, LinesAndRecordsNoInstallCouldHaveWritten)
{
    InstallScene scene;
    const std::string& a = scene.accountFolder;
    const std::string& c = scene.content;
    const std::string steam = scene.steam.Path();
    for (const std::string& file : {a + "/cssludax.bak", a + "/cssludax_1.bak", a + "/half-life/valve/config.cfg",
                                    steam + "/config/loginusers.vdf", c + "cfg/own.cfg"})
        WriteFile(file, "not to be removed");
#ifndef _WIN32
    // Windows cannot even hold these two: the one is a device, the other loses its dot.
    WriteFile(c + "aux", "not a device here, but it would be under Windows");
    WriteFile(c + "cfg.", "trailing dot");
#endif
    WriteFile(c + "cfg/config.cfg", "the player's config");
    Tree expected = Snapshot(steam);
    // Records: a segment longer than a Windows name holds, a name that is not UTF-8 (as written in
    // a Western code page), names leaving the folder or that Windows reads as something else, a
    // record running past the end; one true one.
    std::string archive = archiveHeader;
    for (const std::string& name :
         {"cfg/" + std::string(300, 'n') + ".cfg", Western("cfg/café.cfg"), std::string("../a.cfg"), std::string("/abs"),
          std::string("a\\b"), std::string("c:x"), std::string(), std::string("a\0b.cfg", 7), std::string("COM1"),
          std::string("cfg/x."), std::string("cfg/a/../../../escape.cfg")})
        archive += Record(name, "x");
    WriteFile(scene.archivePath,
              archive + Record("cfg/config.cfg", "the player's config") + Le32(5) + "a.txt" + Le32(1000) + "cut short");
    WriteFile(c + "cfg/config.cfg", "the tournament's");
    // Lines: the game's and the account's folders, the backup files in any case, devices, a zero
    // byte, an overlong name, other games' and Steam's files, some through ".."; and two of ours.
    WriteFile(c + "one.cfg", "ours");
    WriteFile(c + "two.cfg", "ours");
    std::string list = c + "one.cfg\r\n";
    for (const std::string& line :
         {scene.account.cs16Game, a, a + "/cs16ludax.bak", a + "/CSSLUDAX.BAK", a + "/cssludax_1.bak", c + "aux",
          c + "cfg.", std::string(c + "two.cfg").insert(c.size(), 1, '\0'), c + std::string(300, 'l'),
          a + "/half-life/valve/config.cfg", c + "../../half-life/valve/config.cfg", steam + "/config/loginusers.vdf",
          c + "../../../../../config/loginusers.vdf"})
        list += line + "\r\n";
    WriteFile(scene.removalListPath, list + c + "two.cfg\r\n");

    const UninstallOutcome outcome = scene.Uninstall();
    EXPECT_FALSE(outcome.backupKept) << outcome.firstFailure.path;
    EXPECT_EQ(Snapshot(steam), expected);
}

TEST(UninstallReadsRecordByRecord, ASparseArchiveOfGigabytes)
{
#ifdef _WIN32
    // Wine refuses to make a file larger than the disk's free space, sparse or not.
    const std::uint64_t archiveSize = std::uint64_t{5} << 30;
#else
    const std::uint64_t archiveSize = std::uint64_t{100} << 30;
#endif
    InstallScene scene;
    // A record of 2 GiB - 1 whose name is passed over, then nothing but a hole to the end:
    // neither the record nor the hole is ever held in memory.
    std::string archive = archiveHeader + Record("a.cfg", "A");
    std::string big = Record("aux.cfg", "");
    big.replace(big.size() - 4, 4, std::string("\xFF\xFF\xFF\x7F", 4));
    WriteFile(scene.archivePath, archive + big);
    ResizeFile(scene.archivePath, archiveSize);

    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.content), (Tree{{"a.cfg", "A"}}));
    EXPECT_FALSE(Exists(scene.archivePath));
}

TEST(LongPaths, FilesAndFoldersFarPast259CharactersAreBackedUpMadeAndPutBack)
{
    // One folder of a player's own and one the install makes, each deep past Windows' old limit.
    const std::string deep = std::string(120, 'd') + "/" + std::string(120, 'e');
    InstallScene scene({{"a.txt", "LUDAX"}, {deep + "/player.cfg", "payload"}, {deep + "/new/made.cfg", "made"}});
    WriteFile(scene.content + deep + "/player.cfg", "the player's file");
    ASSERT_GT((scene.content + deep + "/new/made.cfg").size(), 259u);
    const Tree before = Snapshot(scene.accountFolder);

    EXPECT_EQ(scene.Install().result, InstallOutcome::Result::installed);
    EXPECT_TRUE(scene.PayloadWritten());
    EXPECT_FALSE(scene.Uninstall().backupKept);
    EXPECT_EQ(Snapshot(scene.accountFolder), before);
}

}  // namespace
