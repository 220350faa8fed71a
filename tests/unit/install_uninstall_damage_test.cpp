// The uninstall over backup files it cannot fully trust: removal lines it passes over, an
// archive of gigabytes, paths far past Windows' old limit. (What it keeps when a call fails:
// install_faults_test.cpp.)
#include <gtest/gtest.h>

#include "install_scene.h"
#include "system.h"

namespace {

TEST(UninstallPassesOver, RemovalLinesNamingBackupFilesDevicesOrOverlongPaths)
{
    InstallScene scene;
    const std::string& a = scene.accountFolder;
    const std::string& c = scene.content;
    WriteFile(scene.archivePath, archiveHeader + Record("cfg/config.cfg", "player's config"));
    WriteFile(a + "/cssludax.bak", archiveHeader);
    WriteFile(a + "/cssludax_1.bak", "");
    WriteFile(c + "one.cfg", "1");
    WriteFile(c + "two.cfg", "2");
#ifndef _WIN32
    // Windows cannot even hold these two: the one is a device, the other loses its dot.
    WriteFile(c + "aux", "not a device here, but it would be under Windows");
    WriteFile(c + "cfg.", "trailing dot");
#endif
    const std::string longName(300, 'l');
    std::string list = c + "one.cfg\r\n";
    for (const std::string& line :
         {a + "/cs16ludax.bak", a + "/CSSLUDAX.BAK", a + "/cssludax_1.bak", c + "aux", c + "cfg.",
          std::string(c + "two.cfg").insert(c.size(), 1, '\0'), c + longName})
        list += line + "\r\n";
    list += c + "two.cfg\r\n";
    WriteFile(scene.removalListPath, list);

    EXPECT_FALSE(scene.Uninstall().backupKept);
    Tree expected{{"cfg", "<folder>"}, {"cfg/config.cfg", "player's config"}};
#ifndef _WIN32
    expected["aux"] = "not a device here, but it would be under Windows";
    expected["cfg."] = "trailing dot";
#endif
    EXPECT_EQ(Snapshot(c), expected);
    EXPECT_TRUE(Exists(a + "/cssludax.bak"));
    EXPECT_TRUE(Exists(a + "/cssludax_1.bak"));
    EXPECT_FALSE(Exists(scene.archivePath));  // restored, then deleted as usual
    EXPECT_FALSE(Exists(scene.removalListPath));
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
